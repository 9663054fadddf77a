// SPDX-FileCopyrightText: 2026 The Kotoban developers
// SPDX-License-Identifier: MIT

// The rows of a line. Where lines wrap, one that is wider than the page continues in the next row; otherwise each line
// is one row, and the page moves sideways. Lines are numbered from 1, cells of a line from 0.
#pragma once

#include "study/modPageLayout.h"
#include "text/modDisplayText.h"

/// A part of a line that stands in one row.
struct PageRow
{
    int line;
    CellRange cells; ///< of the line; without wrapping those of the longest line

    bool operator==(const PageRow &) const = default;
};

/// Whether a line of a text is too wide for the page and therefore continues in the next row.
bool IsWrapped(const DisplayText &text, const PageLayout &layout);

/// Appends the rows of a line, at least one. A row ends after a blank space or one of 、。，． in its last third, else
/// where it is full, but not within a word of ASCII letters and digits or before a character that no row begins with,
/// unless there is no other place. A blank moves to the next row whole; only one that is wider than a row is broken.
/// A row has at least one character, even if the page is narrower than that.
void AddRowsOf(int line, const DisplayText &text, const PageLayout &layout, std::vector<PageRow> *rows);

/// The rows of a line.
std::vector<PageRow> RowsOf(int line, const DisplayText &text, const PageLayout &layout);

/// The cells of a line that are in a row; if there are none, the range ends where it starts or before.
CellRange InRow(const CellRange &cells, const PageRow &row);

/// The edges of the part of a blank's box that is in a row, in pixels of the text area; if there is none, the right one
/// is not right of the left one. Where the box goes on in another row, the edge is that of the row.
BoxEdges BoxInRow(const DisplayText &text, int blank, const PageRow &row, const PageLayout &layout);
