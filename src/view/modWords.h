// What is under the pointer: the text, for reading it aloud, and the picture that the text refers to.
#pragma once

#include "view/modStudyRound.h"

#include <vector>

/// A run of letters, digits, ' and -, or of Japanese characters of one script.
struct Word
{
    qsizetype start;  ///< 0-based index of its first character
    qsizetype length; ///< characters
};

/// The words of a line in order.
std::vector<Word> WordsOf(QStringView line);

/// On a blank whose answer is shown, the answer. Elsewhere the word at that place. Text that is hidden is never given.
/// @param xPx, yPx  pixels inside picText; @param topLine  line in the first row
/// @return empty where there is no word
QString TextUnderPointer(const DisplayText &text, const StudyRound &round, int xPx, int yPx, int topLine,
                         const PageLayout &layout);

/// The name of the picture whose reference is at that place; empty where there is none, or where it holds a hidden
/// answer or stands in one.
QString PictureUnderPointer(const DisplayText &text, const StudyRound &round, int xPx, int yPx, int topLine,
                            const PageLayout &layout);

/// The name of the first picture that the answer of a blank refers to; empty while the answer is hidden.
QString PictureOfAnswer(const DisplayText &text, const StudyRound &round, int blank);
