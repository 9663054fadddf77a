// SPDX-FileCopyrightText: 2026 The Kotoban developers
// SPDX-License-Identifier: MIT

// The part of a file that the window shows: which lines and cells are in view, and how far it can scroll. Lines, rows
// and pages are numbered from 1, cells from 0.
#pragma once

#include "study/modPageLayout.h"
#include "text/modDisplayText.h"

#include <algorithm>

struct PageInView
{
    int topLine = 1;        ///< line in the first row: the scroll bar's value
    int lastLine = 0;       ///< last line in view; 0 without a text
    int lineCount = 0;      ///< number of lines in the file
    int pageSize = 1;       ///< number of lines that a page turn advances
    int maximum = 1;        ///< largest top line: the scroll bar's maximum
    bool canScroll = false; ///< whether the scroll bar is shown and enabled

    /// Whether a line is in view; line 0, for none, never is.
    bool Holds(int line) const
    {
        return topLine <= line && line <= lastLine;
    }

    /// Number of pages that Enter turns through from line 1, at least 1.
    int PageCount() const
    {
        return canScroll ? std::max(1, (lineCount - 1 + pageSize - 1) / pageSize) : 1;
    }

    /// The page that a line is on; if it is on two, the later one.
    int PageOf(int line) const
    {
        return std::min((line - 1) / pageSize + 1, PageCount());
    }

    /// The page in view: the last one as soon as the last line is in view.
    int PageNumber() const
    {
        return lastLine == lineCount ? PageCount() : PageOf(topLine);
    }

    /// The top line of a page.
    int TopOfPage(int page) const
    {
        return (page - 1) * pageSize + 1;
    }

    /// Largest top line that leaves no row empty.
    int LastFullTop() const
    {
        return canScroll ? std::max(1, lineCount - pageSize) : 1;
    }
};

/// The page of a file with the given number of lines.
/// @param topLine  line in the first row, clamped to what is possible
PageInView PageAt(int topLine, int lineCount, const PageLayout &layout);

/// Which scroll bars a text needs.
struct NeededScrollBars
{
    bool isVertical = false;
    bool isHorizontal = false;

    bool operator==(const NeededScrollBars &) const = default;
};

/// The scroll bars that a text needs; each of them takes space from the page.
/// @param whole  the page including the area of both bars; @param barWidthPx  thickness of a bar
NeededScrollBars ScrollBarsFor(int lineCount, int longestLineCells, const PageLayout &whole, int barWidthPx);

/// The first cell in view of the leftmost view that holds some cells with the edges of their box, so that the beginning
/// of their line, which asks for them, is in view too whenever it can be; if they do not fit, the first of them are
/// shown.
int LeftCellShowing(const CellRange &cells, const PageLayout &layout);
