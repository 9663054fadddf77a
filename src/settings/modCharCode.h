// Tells in which Japanese or Unicode encoding a text is written, from its bytes alone: byte-order marks first, then one
// scan with several decoders side by side, each at its own position, until only one can be right.
#pragma once

#include <QByteArrayView>
#include <QString>

enum class CharCode
{
    None = 0,
    Ascii = 1,
    Sjis = 2,
    Euc = 3,
    Jis = 4,
    Utf16Le = 5,
    Utf16Be = 6,
    Utf8 = 7,
    Utf8Bom = 8,
    Utf7 = 9,
};

/// The character code of a whole text. A multi-byte sequence that ends with the very last byte counts as broken: a
/// caller that means the whole of a file hands over one spare zero byte behind it.
CharCode DetectCharCode(QByteArrayView bytes);

/// The name of a character code: "NONE", "ASCII", "SJIS", "EUC", "JIS", "UTF16_LE", "UTF16_BE", "UTF8", "UTF8_BOM" or
/// "UTF7".
QString CharCodeName(CharCode code);

/// The name of the character code of a whole text, which counts as above.
QString GetCharCodeName(QByteArrayView bytes);
