// Text in code page 932 (Shift_JIS with the extensions of NEC and IBM, as Windows uses it), the code page of every text
// file that the program reads or writes. The table is made by the build and lies in the program, so that bytes and
// characters are the same on every system: 0x5C is "\", 0x8160 is U+FF5E.
#pragma once

#include <QByteArray>
#include <QByteArrayView>
#include <QString>
#include <QStringList>
#include <QStringView>

/// Bytes of code page 932 as text. Every byte that the code page cannot decode becomes one U+FFFD; both bytes of an
/// unassigned pair count as such.
QString FromCodePage932(QByteArrayView bytes);

/// Where a piece of decoding has come to.
struct DecodedUpTo
{
    const char *in; ///< the next byte
    char16_t *out;  ///< where the next character goes
};

/// Decodes as above up to the end or the next byte that is a character of ASCII, which stands for itself: for a reader
/// that has an eye on some of those.
/// @param at  where to begin, at most end
/// @param out  has room for one character per byte
DecodedUpTo DecodeAboveAscii(const char *at, const char *end, char16_t *out);

/// Text as bytes of code page 932. A character that the code page lacks becomes "?".
QByteArray ToCodePage932(QStringView text);

/// The number of a character, "U+00A0".
QString NumberOfCharacter(char32_t character);

/// A character as a person can tell which it is: itself, or its number where it cannot be seen.
QString NameOfCharacter(char32_t character);

/// The names of the characters of a text that code page 932 lacks, each once, in the order in which they come; a
/// surrogate pair is one character. Empty when the text comes back from the code page as it is.
QStringList CharactersLost(QStringView text);

/// Length of a text in bytes of code page 932: 1 for a half-width character and for one that the code page lacks, 2 for
/// a full-width one.
qsizetype GetByteLength(QStringView text);

/// Whether code page 932 has a character; neither half of a surrogate pair is one.
bool IsInCodePage932(QChar character);

/// Whether a character takes two bytes in code page 932 and with it two half-width cells on the page.
bool IsDoubleByte(QChar character);
