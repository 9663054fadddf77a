#include "platform/modCodePageSystem.h"

#include <iconv.h>

namespace {

// Both byte orders of UTF-16 have a name of their own; the unmarked name would start the output with a mark.
constexpr const char *NativeUtf16 = Q_BYTE_ORDER == Q_LITTLE_ENDIAN ? "UTF-16LE" : "UTF-16BE";

const iconv_t NoConverter = reinterpret_cast<iconv_t>(-1);

/// @return bytes written to output, 0 when the converter refuses the input or is missing
size_t Convert(iconv_t converter, const void *input, size_t inputBytes, void *output, size_t outputBytes)
{
    if (converter == NoConverter)
        return 0;
    char *in = static_cast<char *>(const_cast<void *>(input));
    char *out = static_cast<char *>(output);
    size_t left = outputBytes;
    if (iconv(converter, &in, &inputBytes, &out, &left) != 0) {
        iconv(converter, nullptr, nullptr, nullptr, nullptr);
        return 0;
    }
    return outputBytes - left;
}

} // namespace

SystemCodePage932::SystemCodePage932()
    : m_decoder(iconv_open(NativeUtf16, "CP932")), m_encoder(iconv_open("CP932", NativeUtf16))
{
    Q_ASSERT(m_decoder != NoConverter && m_encoder != NoConverter);
}

SystemCodePage932::~SystemCodePage932()
{
    if (m_decoder != NoConverter)
        iconv_close(m_decoder);
    if (m_encoder != NoConverter)
        iconv_close(m_encoder);
}

char16_t SystemCodePage932::Decode(QByteArrayView bytes) const
{
    char16_t character = 0;
    return Convert(m_decoder, bytes.data(), size_t(bytes.size()), &character, sizeof character) == sizeof character
               ? character
               : u'\0';
}

QByteArray SystemCodePage932::Encode(char16_t character) const
{
    char bytes[2];
    const size_t count = Convert(m_encoder, &character, sizeof character, bytes, sizeof bytes);
    return QByteArray(bytes, qsizetype(count));
}
