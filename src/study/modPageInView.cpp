// SPDX-FileCopyrightText: 2026 The Kotoban developers
// SPDX-License-Identifier: MIT

#include "study/modPageInView.h"

namespace {

/// A file that exactly fills the page can scroll too, so that its last line can come to the top as in longer files.
bool CanScroll(int lineCount, const PageLayout &layout)
{
    return lineCount > 0 && lineCount >= layout.RowsPerPage();
}

} // namespace

PageInView PageAt(int topLine, int lineCount, const PageLayout &layout)
{
    PageInView page;
    page.lineCount = lineCount;
    page.pageSize = layout.LargeChange();
    page.canScroll = CanScroll(lineCount, layout);
    page.maximum = page.canScroll ? lineCount : 1;
    page.topLine = std::clamp(topLine, 1, page.maximum);
    page.lastLine = std::min(layout.LineIn(layout.RowsPerPage(), page.topLine), lineCount);
    return page;
}

NeededScrollBars ScrollBarsFor(int lineCount, int longestLineCells, const PageLayout &whole, int barWidthPx)
{
    PageLayout page = whole;
    NeededScrollBars needed;
    // The space taken by one bar may make the other one necessary. A bar once needed stays, or the two might alternate.
    for (NeededScrollBars before{true, true}; needed != before;) {
        before = needed;
        needed.isVertical |= CanScroll(lineCount, page);
        needed.isHorizontal |= longestLineCells > page.CellsInView();
        page.widthPx = whole.widthPx - (needed.isVertical ? barWidthPx : 0);
        page.heightPx = whole.heightPx - (needed.isHorizontal ? barWidthPx : 0);
    }
    return needed;
}

int LeftCellShowing(const CellRange &cells, const PageLayout &layout)
{
    return std::min(std::max(0, cells.end - layout.CellsInView()), cells.start);
}
