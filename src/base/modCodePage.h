// SPDX-FileCopyrightText: 2026 The Kotoban developers
// SPDX-License-Identifier: MIT

// Conversion to and from code page 932 (Shift_JIS with the NEC and IBM extensions, as on Windows), the encoding of
// study files and, unless stated otherwise, of the program's other text files. The table is generated at build time and
// compiled in, so the mapping is the same on every system: 0x5C is "\", 0x8160 is U+FF5E.
#pragma once

#include <QByteArray>
#include <QByteArrayView>
#include <QString>
#include <QStringList>
#include <QStringView>

/// Decodes code page 932. Every undecodable byte becomes one U+FFFD, so an unassigned two-byte code becomes two.
QString FromCodePage932(QByteArrayView bytes);

/// Positions reached by a partial decode.
struct DecodedUpTo
{
    const char *in; ///< next byte to read
    char16_t *out;  ///< where the next character goes
};

/// Decodes as above, but stops at the next ASCII byte, for callers that handle ASCII themselves.
/// @param at  where to begin, at most end
/// @param out  must have room for one character per byte
DecodedUpTo DecodeAboveAscii(const char *at, const char *end, char16_t *out);

/// Encodes as code page 932. Characters outside the code page become "?".
QByteArray ToCodePage932(QStringView text);

/// The code point of a character in the form "U+00A0".
QString NumberOfCharacter(char32_t character);

/// A character as shown in messages: the character itself, or its code point if it is invisible.
QString NameOfCharacter(char32_t character);

/// Names of the characters in a text that are not in code page 932, each once, in order of first occurrence; a
/// surrogate pair counts as one character. Empty if the text survives a round trip through the code page.
QStringList CharactersLost(QStringView text);

/// Length of a text in bytes of code page 932: 2 for a full-width character, 1 for a half-width one or one that is not
/// in the code page.
qsizetype GetByteLength(QStringView text);

/// Whether a character is in code page 932; false for either half of a surrogate pair.
bool IsInCodePage932(QChar character);

/// Whether a character takes two bytes in code page 932 and thus two half-width cells on the page.
bool IsDoubleByte(QChar character);
