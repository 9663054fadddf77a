// SPDX-FileCopyrightText: 2026 The Kotoban developers
// SPDX-License-Identifier: MIT

// The page as text for screen readers. Lines and blanks are numbered from 1.
#pragma once

#include "study/modStudyPage.h"

#include <QRect>

/// The lines in view, separated by line feeds. A hidden answer reads "空欄", or "苦手の空欄" if it is marked as hard,
/// after the characters that a hint shows; a shown one is as it is. Both are surrounded by spaces. While no file is
/// open, how to choose one.
QString SpokenPage(const StudyPage &page);

/// The 0-based offset in SpokenPage of a character of a line in view; for a hidden answer, where its "空欄" begins.
/// @param index  0-based character of the line, up to its length
int SpokenOffset(const StudyPage &page, int line, qsizetype index);

/// The offset in SpokenPage of the page's caret; 0 if there is none.
int SpokenCursor(const StudyPage &page);

/// What is at an offset in SpokenPage: one character or, anywhere in "空欄", the whole hidden answer. At a line's end
/// the span is empty; past the last line it is on line 0.
TextSpan SpanSpokenAt(const StudyPage &page, int offset);

/// The area of that span on the page, as far as it is in view, in pixels of the text area; empty if it is nowhere. Of a
/// span that goes on in another row, the first part.
QRect AreaSpokenAt(const StudyPage &page, int offset);

/// The offset in SpokenPage of what is at a pixel of the text area; -1 if there is no text.
int OffsetSpokenAt(const StudyPage &page, int xPx, int yPx);
