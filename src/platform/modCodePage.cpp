#include "platform/modCodePage.h"

#include "platform/modCodePageSystem.h"

#include <array>

namespace {

constexpr quint8 FirstTrail = 0x40;
constexpr quint8 LastTrail = 0xFC;

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

    // The way back is asked of the system too: some characters have several codes, of which it prefers one.
    void AddCode(const SystemCodePage932 &system, const QByteArray &bytes)
    {
        const char16_t character = system.Decode(bytes);
        if (character == 0)
            return;
        toUnicode[Code(bytes)] = character;
        const QByteArray preferred = system.Encode(character);
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

QString FromCodePage932(QByteArrayView bytes)
{
    const Tables &tables = CodePage();
    QString text(bytes.size(), Qt::Uninitialized);
    QChar *out = text.data();
    const auto *in = reinterpret_cast<const quint8 *>(bytes.data());
    const quint8 *const end = in + bytes.size();
    while (in < end) {
        const quint8 byte = *in++;
        if (byte < 0x80) {
            *out++ = QChar(char16_t(byte));
        } else if (IsLead(byte) && in < end && IsTrail(*in)) {
            const char16_t character = tables.toUnicode[size_t(byte << 8 | *in++)];
            *out++ = character ? QChar(character) : QChar(QChar::ReplacementCharacter);
            if (!character)
                *out++ = QChar::ReplacementCharacter;
        } else {
            const char16_t character = tables.toUnicode[byte];
            *out++ = character ? QChar(character) : QChar(QChar::ReplacementCharacter);
        }
    }
    text.truncate(out - text.constData());
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
    qsizetype length = 0;
    for (qsizetype i = 0; i < text.size(); ++i) {
        length += IsDoubleByte(text[i]) ? 2 : 1;
        if (text[i].isHighSurrogate() && i + 1 < text.size() && text[i + 1].isLowSurrogate())
            ++i;
    }
    return length;
}

bool IsDoubleByte(QChar character)
{
    return CodePage().fromUnicode[character.unicode()] > 0xFF;
}
