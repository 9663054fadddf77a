#include "base/modCodePage.h"

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

struct CodeAndCharacter
{
    quint16 code;
    char16_t character;
};

// Made by the build; see MakeCodePage932.cpp for the order.
constexpr CodeAndCharacter AllCodes[] = {
#include "codePage932.inc"
};

/// The whole code page as two tables, so that a conversion is one look-up a character.
struct Tables
{
    std::array<char16_t, 0x10000> toUnicode{};  // by code, a pair as lead * 256 + trail; 0 = undecodable
    std::array<quint16, 0x10000> fromUnicode{}; // by UTF-16 unit; 0 = not in the code page (U+0000 itself excepted)

    Tables()
    {
        for (const auto &[code, character] : AllCodes) {
            toUnicode[code] = character;
            fromUnicode[character] = code;
        }
    }
};

const Tables &CodePage()
{
    static const Tables tables;
    return tables;
}

} // namespace

DecodedUpTo DecodeAboveAscii(const char *at, const char *end, char16_t *out)
{
    const Tables &tables = CodePage();
    const auto *in = reinterpret_cast<const quint8 *>(at);
    const auto *const stop = reinterpret_cast<const quint8 *>(end);
    while (in < stop && *in >= 0x80) {
        const quint8 byte = *in++;
        // A second byte that does not fit makes no pair: the table has nothing for it.
        const char16_t pair = in < stop ? tables.toUnicode[size_t(byte << 8 | *in)] : u'\0';
        if (pair != 0) {
            *out++ = pair;
            ++in;
            continue;
        }
        const char16_t single = tables.toUnicode[byte];
        *out++ = single ? single : Undecodable;
        if (IsLead(byte) && in < stop && IsTrail(*in)) {
            *out++ = Undecodable;
            ++in;
        }
    }
    return {reinterpret_cast<const char *>(in), out};
}

QString FromCodePage932(QByteArrayView bytes)
{
    QString text(bytes.size(), Qt::Uninitialized);
    auto *const begin = reinterpret_cast<char16_t *>(text.data());
    DecodedUpTo at{bytes.begin(), begin};
    while (at.in < bytes.end()) {
        if (quint8(*at.in) < 0x80)
            *at.out++ = char16_t(*at.in++);
        else
            at = DecodeAboveAscii(at.in, bytes.end(), at.out);
    }
    text.truncate(at.out - begin);
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

QString NumberOfCharacter(char32_t character)
{
    return u"U+" + QString::number(character, 16).toUpper().rightJustified(4, u'0');
}

QString NameOfCharacter(char32_t character)
{
    if (QChar::isPrint(character) && !QChar::isSpace(character))
        return QString::fromUcs4(&character, 1);
    return NumberOfCharacter(character);
}

QStringList CharactersLost(QStringView text)
{
    QStringList lost;
    for (qsizetype i = 0; i < text.size(); ++i) {
        const bool isPair = text[i].isHighSurrogate() && i + 1 < text.size() && text[i + 1].isLowSurrogate();
        const char32_t character = isPair ? QChar::surrogateToUcs4(text[i], text[i + 1]) : text[i].unicode();
        if (!IsInCodePage932(text[i]) && !lost.contains(NameOfCharacter(character)))
            lost += NameOfCharacter(character);
        i += isPair ? 1 : 0;
    }
    return lost;
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

bool IsInCodePage932(QChar character)
{
    return character.isNull() || CodePage().fromUnicode[character.unicode()] != 0;
}

bool IsDoubleByte(QChar character)
{
    return CodePage().fromUnicode[character.unicode()] > 0xFF;
}
