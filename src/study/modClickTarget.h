// SPDX-FileCopyrightText: 2026 The Kotoban developers
// SPDX-License-Identifier: MIT

// What can be clicked on the page. The mouse points at it, keys step through it in reading order; both produce the same
// value.
#pragma once

#include "study/modStudyRound.h"

#include <vector>

/// What a left click acts on; all empty if there is nothing. Hidden text is never part of it.
struct ClickTarget
{
    int numberedLine = 0; ///< line whose number was hit, possibly past the last line; 0 outside the number strip
    int blank = 0;        ///< if set, nothing else is
    QString word{};       ///< word at the position
    QString picture{};    ///< name of the picture referred to at the position, if no hidden answer is in the reference

    bool operator==(const ClickTarget &) const = default;
};

/// What the mouse points at.
/// @param xPx, yPx  pixels inside picText
ClickTarget TargetAt(const DisplayText &text, const StudyRound &round, int xPx, int yPx, const PageInView &page,
                     const PageLayout &layout);

/// The 0-based index of the character of a row's line at a pixel of that row; -1 if there is none.
/// @param xPx  not left of the text
qsizetype IndexInRow(const DisplayText &text, int xPx, const PageRow &row, const PageLayout &layout);

/// Whether a line may refer to pictures.
bool HasPictures(QStringView line);

/// The picture references on a line that a click opens now, including their brackets. References within an answer are
/// left out, because a click there shows or hides the answer.
std::vector<TextSpan> PicturesOnLine(const DisplayText &text, const StudyRound &round, int line);

/// What keys can step to on the lines in view, in file order: blanks and picture references, both including their
/// brackets. Nothing inside a blank is a target of its own.
/// @param withWords  whether words are targets too, as they are while words are read aloud
std::vector<TextSpan> TargetsInView(const DisplayText &text, const PageInView &page, bool withWords);

/// What a click on a span from TargetsInView acts on now.
ClickTarget TargetOf(const DisplayText &text, const StudyRound &round, const TextSpan &span);

/// What a click on a blank also acts on after showing the answer: the answer as a word and the first picture that it
/// refers to. Nothing while the answer is hidden.
ClickTarget TargetInAnswer(const DisplayText &text, const StudyRound &round, int blank);
