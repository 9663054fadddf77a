#include "platform/modCodePage.h"

#include "platform/modCodePageSystem.h"

#include <array>

namespace {

constexpr quint8 FirstTrail = 0x40;
constexpr quint8 LastTrail = 0xFC;
constexpr char16_t Undecodable = QChar::ReplacementCharacter;

bool IsLead(quint8 byte)
{
    return (byte >= 0x81 && byte <= 0x9F) || (byte >= 0xE0 && byte <= 0xFC);
}

bool IsTrail(quint8 byte)
{
    return byte >= FirstTrail && byte <= LastTrail && byte != 0x7F;
}

// The bytes that Windows gives a private meaning and other converters refuse: undecodable on every system.
bool IsUnassignedSingle(quint8 byte)
{
    return byte == 0x80 || byte == 0xA0 || byte >= 0xFD;
}

/// The whole code page as two tables, so that a conversion is one look-up a character.
struct Tables
{
    std::array<char16_t, 0x10000> toUnicode{};  // by code, a pair as lead * 256 + trail; 0 = undecodable
    std::array<quint16, 0x10000> fromUnicode{}; // by UTF-16 unit; 0 = not in the code page (U+0000 itself excepted)

    Tables()
    {
        const SystemCodePage932 system;
        for (int byte = 0; byte <= 0xFF; ++byte)
            if (!IsLead(quint8(byte)) && !IsUnassignedSingle(quint8(byte)))
                AddCode(system, QByteArray(1, char(byte)));
        for (int lead = 0x81; lead <= 0xFC; ++lead)
            for (int trail = FirstTrail; trail <= LastTrail; ++trail)
                if (IsLead(quint8(lead)) && IsTrail(quint8(trail)))
                    AddCode(system, QByteArray(1, char(lead)) + char(trail));
    }

    // Some characters have several codes. Which of them it prefers is for the system to say.
    void AddCode(const SystemCodePage932 &system, const QByteArray &bytes)
    {
        const char16_t character = system.Decode(bytes);
        if (character == 0)
            return;
        toUnicode[Code(bytes)] = character;
        const bool isFirst = fromUnicode[character] == 0;
        const QByteArray preferred = isFirst ? bytes : system.Encode(character);
        fromUnicode[character] = Code(preferred.isEmpty() ? bytes : preferred);
    }

    static quint16 Code(const QByteArray &bytes)
    {
        quint16 code = 0;
        for (const char byte : bytes)
            code = quint16(code << 8 | quint8(byte));
        return code;
    }
};

const Tables &CodePage()
{
    static const Tables tables;
    return tables;
}

} // namespace

CodePage932Decoder::CodePage932Decoder(QByteArrayView bytes, QByteArrayView stops)
    : m_begin(reinterpret_cast<const quint8 *>(bytes.data())), m_in(m_begin), m_end(m_begin + bytes.size())
{
    for (size_t byte = 0; byte < m_isPlain.size(); ++byte) {
        m_isStop[byte] = stops.contains(char(byte));
        m_isPlain[byte] = byte < 0x80 && !m_isStop[byte];
    }
}

bool CodePage932Decoder::DecodeUntilStop(char16_t **out, char16_t *stop)
{
    const Tables &tables = CodePage();
    const quint8 *in = m_in;
    const quint8 *const end = m_end;
    char16_t *put = *out;
    bool isAtStop = false;
    while (in < end) {
        const quint8 byte = *in++;
        if (m_isPlain[byte]) {
            *put++ = byte;
            continue;
        }
        // A second byte that does not fit makes no pair: the table has nothing for it.
        const char16_t pair = in < end ? tables.toUnicode[size_t(byte << 8 | *in)] : u'\0';
        if (pair != 0) {
            *put++ = pair;
            ++in;
            continue;
        }
        if (m_isStop[byte]) {
            *stop = tables.toUnicode[byte];
            isAtStop = true;
            break;
        }
        const char16_t single = tables.toUnicode[byte];
        *put++ = single ? single : Undecodable;
        if (IsLead(byte) && in < end && IsTrail(*in)) {
            *put++ = Undecodable;
            ++in;
        }
    }
    m_in = in;
    *out = put;
    return isAtStop;
}

QString FromCodePage932(QByteArrayView bytes)
{
    QString text(bytes.size(), Qt::Uninitialized);
    auto *const begin = reinterpret_cast<char16_t *>(text.data());
    char16_t *end = begin;
    char16_t stop;
    CodePage932Decoder(bytes, {}).DecodeUntilStop(&end, &stop);
    text.truncate(end - begin);
    return text;
}

QByteArray ToCodePage932(QStringView text)
{
    const Tables &tables = CodePage();
    QByteArray bytes;
    bytes.reserve(text.size() * 2);
    for (qsizetype i = 0; i < text.size(); ++i) {
        const quint16 code = tables.fromUnicode[text[i].unicode()];
        if (code > 0xFF)
            bytes += char(code >> 8);
        if (code != 0 || text[i].isNull())
            bytes += char(code & 0xFF);
        else
            bytes += '?';
        if (text[i].isHighSurrogate() && i + 1 < text.size() && text[i + 1].isLowSurrogate())
            ++i;
    }
    return bytes;
}

qsizetype GetByteLength(QStringView text)
{
    const Tables &tables = CodePage();
    qsizetype length = 0;
    for (qsizetype i = 0; i < text.size(); ++i) {
        length += tables.fromUnicode[text[i].unicode()] > 0xFF ? 2 : 1;
        if (text[i].isHighSurrogate() && i + 1 < text.size() && text[i + 1].isLowSurrogate())
            ++i;
    }
    return length;
}

bool IsDoubleByte(QChar character)
{
    return CodePage().fromUnicode[character.unicode()] > 0xFF;
}
