// What can be clicked on the page. The mouse points at it, keys go through it in reading order; both end in the same
// value.
#pragma once

#include "view/modStudyRound.h"

#include <vector>

/// What a left click acts on; all of it empty where there is nothing. Hidden text is never part of it.
struct ClickTarget
{
    int numberedLine = 0; ///< line whose number it is, also behind the last line; 0 outside the strip of numbers
    int blank = 0;        ///< then nothing else is set
    QString word{};       ///< the word there
    QString picture{};    ///< name of the picture that is referred to there, by a reference without a hidden answer

    bool operator==(const ClickTarget &) const = default;
};

/// What the mouse points at.
/// @param xPx, yPx  pixels inside picText; @param topLine  line in the first row
ClickTarget TargetAt(const DisplayText &text, const StudyRound &round, int xPx, int yPx, int topLine,
                     const PageLayout &layout);

/// 0-based index of the character of a line that covers a cell, -1 behind the line's end.
qsizetype IndexOfCell(QStringView line, int cell);

/// Whether a line may refer to pictures.
bool HasPictures(QStringView line);

/// The references to pictures on a line that a click opens now, with their brackets. Not those within an answer: a
/// click there shows or hides it.
std::vector<TextSpan> PicturesOnLine(const DisplayText &text, const StudyRound &round, int line);

/// What keys can go to in view, in file order: the blanks with their brackets and the references to
/// pictures with theirs. A blank hides what is in it.
/// @param withWords  whether words count too, which is so while they are read aloud
std::vector<TextSpan> TargetsInView(const DisplayText &text, const PageInView &page, bool withWords);

/// What a click on one of the above acts on now.
ClickTarget TargetOf(const DisplayText &text, const StudyRound &round, const TextSpan &span);

/// The number of a line, or of the one in view that is next to it.
ClickTarget TargetOfLineNumber(int line, const PageInView &page);

/// What a click on a blank goes on to act on once it has shown the answer: the answer as a word and the first picture
/// that it refers to. Nothing while the answer is hidden.
ClickTarget TargetInAnswer(const DisplayText &text, const StudyRound &round, int blank);
