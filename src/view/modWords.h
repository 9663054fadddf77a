// Words of a line as one clicks on them.
#pragma once

#include <QString>

#include <vector>

/// A run of letters, digits, ' and -, or of Japanese characters of one script.
struct Word
{
    qsizetype start;  ///< 0-based index of its first character
    qsizetype length; ///< characters
};

/// The words of a line in order.
std::vector<Word> WordsOf(QStringView line);

/// The word that a 0-based character of a line belongs to; empty where there is none.
QString WordAround(QStringView line, qsizetype index);
