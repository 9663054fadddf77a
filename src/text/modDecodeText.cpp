// SPDX-FileCopyrightText: 2026 The Kotoban developers
// SPDX-License-Identifier: MIT

#include "text/modDecodeText.h"

#include "base/modCodePage.h"

#include <QStringDecoder>

#include <algorithm>

namespace {

constexpr char16_t Unreadable = QChar::ReplacementCharacter;
constexpr char Escape = '\x1B';

QString DecodeUnicode(const QByteArray &bytes, QStringConverter::Encoding encoding)
{
    // Stateless, because otherwise a truncated sequence at the end of the file would be held back for further bytes.
    QStringDecoder decoder(encoding, QStringConverter::Flag::Stateless);
    return decoder(bytes);
}

bool IsBetween(char byte, int least, int most)
{
    return quint8(byte) >= least && quint8(byte) <= most;
}

/// The character at a row and cell of JIS X 0208, both 1..94. In Shift_JIS a lead byte covers two rows.
char16_t CharacterInRow(int row, int cell)
{
    const int block = (row - 1) / 2;
    const int lead = block + (block < 0x1F ? 0x81 : 0xC1);
    const int trail = row % 2 == 0 ? cell + 0x9E : cell + (cell < 0x40 ? 0x3F : 0x40);
    const char pair[] = {char(lead), char(trail)};
    char16_t decoded[2] = {};
    const DecodedUpTo end = DecodeAboveAscii(pair, pair + 2, decoded);
    return end.in == pair + 2 && end.out == decoded + 1 ? decoded[0] : Unreadable;
}

/// The half-width kana for a JIS X 0201 byte without its highest bit, 0x21..0x5F.
char16_t HalfWidthKana(int byte)
{
    return char16_t(0xFF61 + byte - 0x21);
}

/// EUC: text = *( ASCII / 0x8E kana / 0x8F byte byte / row cell ), all bytes except ASCII with the highest bit set.
QString DecodeEuc(const QByteArray &bytes)
{
    QString text;
    text.reserve(bytes.size());
    const auto isHigh = [&bytes](qsizetype at) { return at < bytes.size() && IsBetween(bytes[at], 0xA1, 0xFE); };
    for (qsizetype at = 0; at < bytes.size();) {
        const int byte = quint8(bytes[at]);
        if (byte < 0x80) {
            text += QChar(byte);
            ++at;
        } else if (byte == 0x8E && isHigh(at + 1) && IsBetween(bytes[at + 1], 0xA1, 0xDF)) {
            text += HalfWidthKana(quint8(bytes[at + 1]) & 0x7F);
            at += 2;
        } else if (byte == 0x8F && isHigh(at + 1) && isHigh(at + 2)) {
            text += Unreadable;
            at += 3;
        } else if (isHigh(at) && isHigh(at + 1)) {
            text += CharacterInRow(byte - 0xA0, quint8(bytes[at + 1]) - 0xA0);
            at += 2;
        } else {
            text += Unreadable;
            ++at;
        }
    }
    return text;
}

/// Character set selected by a JIS escape sequence.
enum class JisSet
{
    Ascii, ///< also JIS-Roman, whose two different characters have the same codes in code page 932
    Kana,
    Kanji,
    Supplement, ///< JIS X 0212
};

struct JisEscape
{
    QByteArrayView sequence;
    JisSet set;
};

constexpr JisEscape JisEscapes[] = {
    {"\x1B(B", JisSet::Ascii}, {"\x1B(J", JisSet::Ascii}, {"\x1B(I", JisSet::Kana},
    {"\x1B$@", JisSet::Kanji}, {"\x1B$B", JisSet::Kanji}, {"\x1B$(D", JisSet::Supplement},
};

/// JIS: text = *( escape *( byte / row cell ) ), all bytes with the highest bit clear. Control characters and spaces
/// are the same in every set, and each line begins in ASCII.
QString DecodeJis(const QByteArray &bytes)
{
    QString text;
    text.reserve(bytes.size());
    JisSet set = JisSet::Ascii;
    const auto isGraphic = [&bytes](qsizetype at) { return at < bytes.size() && IsBetween(bytes[at], 0x21, 0x7E); };
    for (qsizetype at = 0; at < bytes.size();) {
        const int byte = quint8(bytes[at]);
        const QByteArrayView rest = QByteArrayView(bytes).sliced(at);
        const auto *const escape =
            std::find_if(std::begin(JisEscapes), std::end(JisEscapes),
                         [rest](const JisEscape &known) { return rest.startsWith(known.sequence); });
        if (escape != std::end(JisEscapes)) {
            set = escape->set;
            at += escape->sequence.size();
            continue;
        }
        const bool isPair = set >= JisSet::Kanji && isGraphic(at) && isGraphic(at + 1);
        if (byte == '\r' || byte == '\n')
            set = JisSet::Ascii;
        if (isPair && set == JisSet::Kanji)
            text += CharacterInRow(byte - 0x20, bytes[at + 1] - 0x20);
        else if (set == JisSet::Kana && IsBetween(bytes[at], 0x21, 0x5F))
            text += HalfWidthKana(byte);
        else if (byte <= ' ' ? byte != Escape : set == JisSet::Ascii && byte < 0x80)
            text += QChar(byte);
        else
            text += Unreadable;
        at += isPair ? 2 : 1;
    }
    return text;
}

} // namespace

QByteArrayView WholeFile(const QByteArray &bytes)
{
    return QByteArrayView(bytes.constData(), bytes.size() + 1);
}

QString DecodeText(const QByteArray &bytes, CharCode code)
{
    switch (code) {
    case CharCode::Utf8:
    case CharCode::Utf8Bom:
        return DecodeUnicode(bytes, QStringConverter::Utf8);
    case CharCode::Utf16Le:
        return DecodeUnicode(bytes, QStringConverter::Utf16LE);
    case CharCode::Utf16Be:
        return DecodeUnicode(bytes, QStringConverter::Utf16BE);
    case CharCode::Euc:
        return DecodeEuc(bytes);
    case CharCode::Jis:
        return DecodeJis(bytes);
    default:
        return FromCodePage932(bytes);
    }
}
