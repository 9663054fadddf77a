// SPDX-FileCopyrightText: 2026 The Kotoban developers
// SPDX-License-Identifier: MIT

// Converts any text to characters of code page 932 and CR LF line endings: replaces characters by their equivalents in
// the code page and counts those that have none. A surrogate pair counts as one character, and so does a combining
// mark.
#pragma once

#include <QHash>
#include <QList>
#include <QString>

#include <utility>

class QDeadlineTimer;

/// A character that was replaced by its equivalent, and how often.
struct ReplacedCharacter
{
    char32_t from;
    QString to;
    qsizetype count;
};

/// Whether accents are removed, turning "é" into "e", or accented letters count as characters without an equivalent.
enum class Accents : bool
{
    Keep,
    Remove,
};

/// What becomes of a character that has no equivalent.
enum class WithoutEquivalent
{
    Keep,   ///< it stays, so the text is not in code page 932
    Remove, ///< it is removed
    Geta,   ///< it is replaced by "〓", the sign for a character that a printer lacks
};

struct ConvertedText
{
    QString text;                      ///< with CR LF line endings; see WithoutEquivalent
    QList<ReplacedCharacter> replaced; ///< in order of first occurrence, without removed accents
    qsizetype accentCount = 0;         ///< number of letters whose accents were removed
    qsizetype unwritableCount = 0;     ///< number of characters without an equivalent in code page 932
};

/// Converts line endings and replaces every character that has an equivalent in code page 932, in slices. A kana
/// followed by a combining sound mark becomes the composed kana, and byte-order marks are removed; neither is counted.
/// Where characters without an equivalent are removed or replaced, invisible ones are removed uncounted, and a sequence
/// of emoji, with skin colours and joiners, counts as one.
class TextConversion
{
  public:
    TextConversion(const QString &text, Accents accents, WithoutEquivalent rest = WithoutEquivalent::Keep);

    /// Goes on until the deadline. @return whether there is more to do
    bool GoOn(const QDeadlineTimer &deadline);

    /// How much has been converted, from 0 to 1.
    double Done() const;

    /// The result, once it is complete.
    ConvertedText Take()
    {
        return std::move(m_result);
    }

  private:
    void ConvertUpTo(qsizetype end);
    void Replace(char32_t character);
    bool TakesMark(char32_t character);
    bool TakeAccent();
    bool BelongsToPrevious(char32_t character) const;
    void Count(char32_t from, const QString &to);

    QString m_source;
    Accents m_accents;
    WithoutEquivalent m_rest;
    ConvertedText m_result;
    QHash<char32_t, qsizetype> m_places; // of characters in m_result.replaced
    qsizetype m_at = 0;
};

/// The result of a whole TextConversion.
ConvertedText ConvertText(const QString &text, Accents accents, WithoutEquivalent rest = WithoutEquivalent::Keep);

/// A character and its code point, "é（U+00E9）": the font may lack the character, or draw it like a similar one.
QString NameAndNumber(char32_t character);

/// Whether a text has full-width brackets, which hide nothing, and no half-width ones.
bool HasOnlyFullWidthBrackets(const QString &text);
