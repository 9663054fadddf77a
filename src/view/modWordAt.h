// The text under the pointer, for reading it aloud.
#pragma once

#include "view/modStudyRound.h"

/// On a blank whose answer is shown, the answer. Elsewhere the word at that place: a run of letters, digits, ' and -,
/// or of Japanese characters of one script. Text that is hidden is never given.
/// @param xPx, yPx  pixels inside picText; @param topLine  line in the first row
/// @return empty where there is no word
QString TextUnderPointer(const DisplayText &text, const StudyRound &round, int xPx, int yPx, int topLine,
                         const PageLayout &layout);
