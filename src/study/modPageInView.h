// SPDX-FileCopyrightText: 2026 The Kotoban developers
// SPDX-License-Identifier: MIT

// The part of a file that the window shows: which rows, lines and cells are in view, and how far it can scroll. Lines
// and pages are numbered from 1, cells from 0.
#pragma once

#include "study/modPageRows.h"

#include <algorithm>

struct PageInView
{
    std::vector<PageRow> rows{}; ///< in view as a whole, from the first one; the last line may go on below
    int topLine = 1;             ///< line in the first row: the scroll bar's value
    int lastLine = 0;            ///< last line that is whole in view, or else the top line; 0 without a text
    int lineCount = 0;           ///< number of lines in the file
    int pageSize = 1;            ///< number of lines that a page turn advances
    int maximum = 1;             ///< largest top line: the scroll bar's maximum
    bool canScroll = false;      ///< whether the scroll bar is shown and enabled
    bool isWrapped = false;      ///< whether a line of the file, in view or not, takes several rows

    /// Whether a line is in view as a whole, or the top line; line 0, for none, never is.
    bool Holds(int line) const
    {
        return topLine <= line && line <= lastLine;
    }

    /// Whether any row of a line is in view.
    bool Shows(int line) const
    {
        return topLine <= line && line <= LastShownLine();
    }

    /// The last line with a row in view; 0 without a text.
    int LastShownLine() const
    {
        return rows.empty() ? 0 : rows.back().line;
    }

    /// The cell that begins the first row; 0 unless the top line is higher than the page.
    int TopCell() const
    {
        return rows.empty() ? 0 : rows.front().cells.start;
    }

    /// The line whose row is so many rows below the first one; below the last line, its number goes on.
    int LineAt(int rowOffset) const
    {
        const int shown = int(rows.size());
        return rowOffset < shown ? rows[size_t(rowOffset)].line
                                 : (shown == 0 ? topLine : LastShownLine() + 1) + rowOffset - shown;
    }

    /// Whether a page turn would leave the file: the last line is in view or, where no line wraps, the next page would
    /// begin with it.
    bool IsAtEnd() const
    {
        return isWrapped ? lastLine == lineCount : topLine + pageSize >= maximum;
    }

    // Pages are counted only where no line wraps; otherwise the number of lines on a page varies.

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

    /// The top line of the page that a line is on; the line itself where lines wrap.
    int TopOfPageWith(int line) const
    {
        return isWrapped ? line : (PageOf(line) - 1) * pageSize + 1;
    }
};

/// The page of a text. Takes time for the rows in view only.
/// @param topLine  line in the first row, clamped to what is possible
/// @param topCell  if the top line is higher than the page, a cell in its first row in view, as far down as possible
PageInView PageAt(int topLine, const DisplayText &text, const PageLayout &layout, int topCell = 0);

/// The smallest top line of a page that holds a line as a whole, or else that line.
int TopShowing(int line, const DisplayText &text, const PageLayout &layout);

/// The cell that begins the first row in view of the top line, moved up or down as little as brings some cells of that
/// line into view; if they take more rows than the page has, the first of them are shown.
int TopCellShowing(const CellRange &cells, const PageInView &page, const DisplayText &text, const PageLayout &layout);

/// The cell that begins the first row in view after moving by some rows, up if negative, within the top line; the same
/// one where the line ends.
int TopCellMoved(int rows, const PageInView &page, const DisplayText &text, const PageLayout &layout);

/// Which scroll bars a text needs.
struct NeededScrollBars
{
    bool isVertical = false;
    bool isHorizontal = false;

    bool operator==(const NeededScrollBars &) const = default;
};

/// The scroll bars that a text needs; each of them takes space from the page.
/// @param whole  the page including the area of both bars; @param barWidthPx  thickness of a bar
NeededScrollBars ScrollBarsFor(const DisplayText &text, const PageLayout &whole, int barWidthPx);

/// The first cell in view of the leftmost view that holds some cells with the edges of their box, so that the beginning
/// of their line, which asks for them, is in view too whenever it can be; if they do not fit, the first of them are
/// shown.
int LeftCellShowing(const CellRange &cells, const PageLayout &layout);
