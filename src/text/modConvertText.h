// Makes any text one of code page 932 with CR LF: replaces characters by their twins there, and finds those that have
// none. Lines and characters are numbered from 1; a surrogate pair is one character, a combining mark is one too.
#pragma once

#include <QList>
#include <QString>

/// A character and where it stands first.
struct CharacterAt
{
    int line = 0;
    int column = 0;
    char32_t character = 0;
};

/// A character that was replaced by its twin.
struct ReplacedCharacter
{
    char32_t from;
    char16_t to;
    qsizetype count;
};

/// Whether letters with accents lose them, as "é" becomes "e", or are characters without a twin.
enum class Accents : bool
{
    Keep,
    Remove,
};

struct ConvertedText
{
    QString text;                      ///< with CR LF at the ends of its lines; whole only where unwritableCount is 0
    QList<ReplacedCharacter> replaced; ///< in the order in which they come; accents are not among them
    qsizetype accentCount = 0;         ///< letters that have lost their accents
    CharacterAt firstAccent;
    qsizetype unwritableCount = 0; ///< characters that code page 932 has neither itself nor as a twin
    QList<CharacterAt> unwritable; ///< the first of them, MostUnwritableShown at most: there may be millions
};

constexpr int MostUnwritableShown = 5;

/// Replaces the ends of lines and all characters with a twin in code page 932. A kana with a combining sound mark
/// becomes the kana that it is; that and a byte-order mark, which goes, are not counted.
ConvertedText ConvertText(const QString &text, Accents accents);

/// Whether the only brackets of a text are full-width ones, which hide nothing.
bool HasOnlyFullWidthBrackets(const QString &text);

/// The text with "[" and "]" for "［" and "］".
QString WithHalfWidthBrackets(const QString &text);
