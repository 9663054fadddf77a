// The page as it can be read aloud: what a screen reader is told. Lines and blanks are numbered from 1.
#pragma once

#include "view/modStudyRound.h"

/// What stands for a hidden answer.
inline constexpr QStringView HiddenAnswerText = u"空欄";

/// The lines in view, separated by line feeds, with every hidden answer as "空欄" and every shown one as it is, both
/// between blanks.
QString SpokenPage(const DisplayText &text, const StudyRound &round, const PageInView &page);

/// Where a character of a line in view stands in the above, 0 the first character there.
/// @param index  0-based character of the line; of an answer, only its first one
int SpokenOffset(const DisplayText &text, const StudyRound &round, int topLine, int line, qsizetype index);
