// The page as it can be read aloud: what a screen reader is told. Lines and blanks are numbered from 1.
#pragma once

#include "view/modStudyRound.h"

#include <QRect>

/// What stands for the hidden answer of a blank: "空欄", or "苦手の空欄" where it is marked as hard.
QStringView HiddenAnswerText(const StudyRound &round, int blank);

/// The lines in view, separated by line feeds, with every hidden answer as HiddenAnswerText has it and every shown one
/// as it is, both between blanks.
QString SpokenPage(const DisplayText &text, const StudyRound &round, const PageInView &page);

/// Where a character of a line in view stands in the above, 0 the first character there; of a hidden answer, where
/// "空欄" begins. @param index  0-based character of the line, up to its length
int SpokenOffset(const DisplayText &text, const StudyRound &round, int topLine, int line, qsizetype index);

/// What stands at an offset of the above: one character or, for any of "空欄", the hidden answer. At
/// a line's end that is a span without a length; behind the last line it is nowhere.
TextSpan SpanSpokenAt(const DisplayText &text, const StudyRound &round, const PageInView &page, int offset);

/// Where that stands on the page, as far as it is in view, pixels of the text area; empty when it is nowhere.
QRect AreaSpokenAt(const DisplayText &text, const StudyRound &round, const PageInView &page, const PageLayout &layout,
                   int offset);

/// The offset of what stands at a pixel of the text area; -1 when there is no text.
int OffsetSpokenAt(const DisplayText &text, const StudyRound &round, const PageInView &page, const PageLayout &layout,
                   int xPx, int yPx);
