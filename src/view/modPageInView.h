// The page of a file as the window shows it: which lines and cells are in view, and how far it can scroll. Lines, rows
// and pages are numbered from 1, cells from 0.
#pragma once

#include "text/modDisplayText.h"
#include "view/modPageLayout.h"

#include <algorithm>

struct PageInView
{
    int topLine = 1;        ///< line in the first row: the scroll bar's value
    int lastLine = 0;       ///< last line that has a row of its own; 0 without a text
    int lineCount = 0;      ///< lines of the file
    int pageSize = 1;       ///< lines that a page turn goes on by
    int maximum = 1;        ///< the greatest top line: the scroll bar's maximum
    bool canScroll = false; ///< whether the scroll bar is shown and enabled

    /// Whether a line is in view; line 0, which is none, never is.
    bool Holds(int line) const
    {
        return topLine <= line && line <= lastLine;
    }

    /// Pages that Enter turns through from line 1 on, at least 1.
    int PageCount() const
    {
        return canScroll ? (lineCount - 1 + pageSize - 1) / pageSize : 1;
    }

    /// The one of them that a line is on; of two, the later one.
    int PageOf(int line) const
    {
        return std::min((line - 1) / pageSize + 1, PageCount());
    }

    /// The page in view; the last one as soon as the last line is.
    int PageNumber() const
    {
        return lastLine == lineCount ? PageCount() : PageOf(topLine);
    }

    /// The top line of a page.
    int TopOfPage(int page) const
    {
        return (page - 1) * pageSize + 1;
    }

    /// Top line at which the last page is full.
    int LastFullTop() const
    {
        return canScroll ? std::max(1, lineCount - pageSize) : 1;
    }
};

/// The page of a file of so many lines with a given one in its first row, or the last one possible.
PageInView PageAt(int topLine, int lineCount, const PageLayout &layout);

/// Which scroll bars a text needs.
struct NeededScrollBars
{
    bool isVertical = false;
    bool isHorizontal = false;

    bool operator==(const NeededScrollBars &) const = default;
};

/// The scroll bars that a text needs, each of which takes room from the page.
/// @param whole  the page with the area of both bars; @param barWidthPx  thickness of a bar
NeededScrollBars ScrollBarsFor(int lineCount, int longestLineCells, const PageLayout &whole, int barWidthPx);

/// The first cell in view when some cells, and what is left and right of their box, are brought into view by moving the
/// page just far enough; of cells that do not fit, the first ones.
int LeftCellShowing(const CellRange &cells, const PageLayout &layout);
