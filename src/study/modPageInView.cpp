// SPDX-FileCopyrightText: 2026 The Kotoban developers
// SPDX-License-Identifier: MIT

#include "study/modPageInView.h"

namespace {

/// A file that exactly fills the page can scroll too, so that its last line can come to the top as in longer files.
bool CanScroll(const DisplayText &text, const PageLayout &layout)
{
    const int rowsPerPage = layout.RowsPerPage();
    if (text.LineCount() >= rowsPerPage || !IsWrapped(text, layout))
        return text.LineCount() > 0 && text.LineCount() >= rowsPerPage;
    std::vector<PageRow> rows;
    for (int line = 1; line <= text.LineCount(); ++line)
        AddRowsOf(line, text, layout, &rows);
    return int(rows.size()) >= rowsPerPage;
}

/// The index of the row that holds a cell, or of the last one.
int IndexOfRow(const std::vector<PageRow> &rows, int cell)
{
    const auto after = std::ranges::upper_bound(rows, cell, {}, [](const PageRow &row) { return row.cells.start; });
    return std::max(0, int(after - rows.begin()) - 1);
}

} // namespace

PageInView PageAt(int topLine, const DisplayText &text, const PageLayout &layout, int topCell)
{
    PageInView page;
    page.lineCount = text.LineCount();
    page.canScroll = CanScroll(text, layout);
    page.isWrapped = IsWrapped(text, layout);
    page.maximum = page.canScroll ? page.lineCount : 1;
    page.topLine = std::clamp(topLine, 1, page.maximum);
    const int rowsPerPage = layout.RowsPerPage();
    std::vector<PageRow> &rows = page.rows;
    for (int line = page.topLine; line <= page.lineCount && int(rows.size()) < rowsPerPage; ++line) {
        AddRowsOf(line, text, layout, &rows);
        if (line == page.topLine || int(rows.size()) <= rowsPerPage)
            page.lastLine = line;
    }
    if (const int tooMany = int(rows.size()) - rowsPerPage; tooMany > 0) {
        const bool isTopHigher = rows.back().line == page.topLine;
        const int above = isTopHigher ? std::min(IndexOfRow(rows, topCell), tooMany) : 0;
        rows.erase(rows.begin(), rows.begin() + above);
        rows.erase(rows.begin() + rowsPerPage, rows.end());
    }
    page.pageSize = page.isWrapped ? std::max(1, page.lastLine - page.topLine) : layout.LargeChange();
    return page;
}

int TopShowing(int line, const DisplayText &text, const PageLayout &layout)
{
    int top = line;
    std::vector<PageRow> rows = RowsOf(line, text, layout);
    while (top > 1) {
        AddRowsOf(top - 1, text, layout, &rows);
        if (int(rows.size()) > layout.RowsPerPage())
            break;
        --top;
    }
    return top;
}

int TopCellShowing(const CellRange &cells, const PageInView &page, const DisplayText &text, const PageLayout &layout)
{
    const std::vector<PageRow> rows = RowsOf(page.topLine, text, layout);
    const int first = IndexOfRow(rows, cells.start);
    const int last = IndexOfRow(rows, std::max(cells.start, cells.end - 1));
    const int top = IndexOfRow(rows, page.TopCell());
    const int lowest = std::max(top, last + 1 - layout.RowsPerPage());
    return rows[size_t(std::min(lowest, first))].cells.start;
}

int TopCellMoved(int rows, const PageInView &page, const DisplayText &text, const PageLayout &layout)
{
    const std::vector<PageRow> all = RowsOf(page.topLine, text, layout);
    const int top = IndexOfRow(all, page.TopCell());
    const int lowest = std::max(0, int(all.size()) - layout.RowsPerPage());
    return all[size_t(std::clamp(top + rows, 0, lowest))].cells.start;
}

NeededScrollBars ScrollBarsFor(const DisplayText &text, const PageLayout &whole, int barWidthPx)
{
    PageLayout page = whole;
    NeededScrollBars needed;
    // The space taken by one bar may make the other one necessary. A bar once needed stays, or the two might alternate.
    for (NeededScrollBars before{true, true}; needed != before;) {
        before = needed;
        needed.isVertical |= CanScroll(text, page);
        needed.isHorizontal |= !page.isWrapping && text.LongestLineCells() > page.CellsInView();
        page.widthPx = whole.widthPx - (needed.isVertical ? barWidthPx : 0);
        page.heightPx = whole.heightPx - (needed.isHorizontal ? barWidthPx : 0);
    }
    return needed;
}

int LeftCellShowing(const CellRange &cells, const PageLayout &layout)
{
    return std::min(std::max(0, cells.end - layout.CellsInView()), cells.start);
}
