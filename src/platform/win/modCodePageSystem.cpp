#include "platform/modCodePageSystem.h"

#include <windows.h>

namespace {

constexpr UINT CodePage = 932;

} // namespace

SystemCodePage932::SystemCodePage932() : m_decoder(nullptr), m_encoder(nullptr) {}

SystemCodePage932::~SystemCodePage932() = default;

char16_t SystemCodePage932::Decode(QByteArrayView bytes) const
{
    wchar_t character = 0;
    const int count =
        MultiByteToWideChar(CodePage, MB_ERR_INVALID_CHARS, bytes.data(), int(bytes.size()), &character, 1);
    return count == 1 ? char16_t(character) : u'\0';
}

QByteArray SystemCodePage932::Encode(char16_t character) const
{
    const wchar_t wide = wchar_t(character);
    char bytes[2];
    BOOL replaced = FALSE;
    const int count = WideCharToMultiByte(CodePage, WC_NO_BEST_FIT_CHARS, &wide, 1, bytes, 2, nullptr, &replaced);
    return replaced ? QByteArray() : QByteArray(bytes, count);
}
