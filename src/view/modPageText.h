// The page as it can be read aloud: what a screen reader is told. Lines and blanks are numbered from 1.
#pragma once

#include "view/modStudyRound.h"

/// What stands for a hidden answer.
inline constexpr QStringView HiddenAnswerText = u"空欄";

/// A line with every hidden answer as "空欄" and every shown one as it is, both between blanks.
QString SpokenLine(const DisplayText &text, const StudyRound &round, int line);

/// The lines in view, as above, separated by line feeds.
QString SpokenPage(const DisplayText &text, const StudyRound &round, int topLine, int rows);

/// Where the answer of a blank that is in view stands in the above, 0 the first character.
int SpokenOffset(const DisplayText &text, const StudyRound &round, int topLine, int blank);
