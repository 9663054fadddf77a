// SPDX-FileCopyrightText: 2026 The Kotoban developers
// SPDX-License-Identifier: MIT

// Converts any text to characters of code page 932 and CR LF line endings: replaces characters by their equivalents in
// the code page and reports those that have none. Lines and columns are numbered from 1; a surrogate pair counts as one
// character, and so does a combining mark.
#pragma once

#include <QList>
#include <QString>

/// A character and its position.
struct CharacterAt
{
    int line = 0;
    int column = 0;
    char32_t character = 0;
};

/// A character that was replaced by its equivalent, and how often.
struct ReplacedCharacter
{
    char32_t from;
    char16_t to;
    qsizetype count;
};

/// Whether accents are removed, turning "é" into "e", or accented letters count as characters without an equivalent.
enum class Accents : bool
{
    Keep,
    Remove,
};

struct ConvertedText
{
    QString text;                      ///< with CR LF line endings; complete only if unwritableCount is 0
    QList<ReplacedCharacter> replaced; ///< in order of first occurrence, without removed accents
    qsizetype accentCount = 0;         ///< number of letters whose accents were removed
    CharacterAt firstAccent;           ///< the first of them
    qsizetype unwritableCount = 0;     ///< number of characters without an equivalent in code page 932
    QList<CharacterAt> unwritable;     ///< the first of them, at most MaxUnwritableShown, as there may be millions
};

constexpr int MaxUnwritableShown = 5;

/// Converts line endings and replaces every character that has an equivalent in code page 932. A kana followed by a
/// combining sound mark becomes the composed kana, and byte-order marks are removed; neither is counted.
ConvertedText ConvertText(const QString &text, Accents accents);

/// Whether a text has full-width brackets, which hide nothing, and no half-width ones.
bool HasOnlyFullWidthBrackets(const QString &text);

/// Replaces "［" and "］" by "[" and "]".
QString WithHalfWidthBrackets(const QString &text);
