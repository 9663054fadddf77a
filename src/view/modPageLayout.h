// Where things stand on the page: a grid of half-width cells and rows of equal height. All lengths are pixels of the
// text area; lines and rows are numbered from 1, cells from 0.
#pragma once

struct PageLayout
{
    int cellWidthPx = 1; ///< width of a half-width character; a full-width one has exactly two
    int linePitchPx = 1; ///< height of a line of text and the space below it
    int widthPx = 0;     ///< width of the text area
    int heightPx = 0;    ///< height of the text area
    int leftCell = 0;    ///< first cell in view: the horizontal scroll bar's value
    bool hasLineNumbers = false;

    static constexpr int TopMarginPx = 5;

    /// Whole rows that fit below the top margin, at least 1.
    int RowsPerPage() const
    {
        const int rows = (heightPx - TopMarginPx) / linePitchPx;
        return rows < 1 ? 1 : rows;
    }

    /// Lines that a page turn goes on by, at least 1: one line stays in view.
    int LargeChange() const
    {
        return RowsPerPage() > 1 ? RowsPerPage() - 1 : 1;
    }

    int RowTopPx(int row) const
    {
        return (row - 1) * linePitchPx + TopMarginPx;
    }

    /// Lines between the top line and the line under y, both counted from the top margin; 0 in the first row.
    int RowOffsetAt(int yPx) const
    {
        return (yPx - TopMarginPx) / linePitchPx;
    }

    /// The row of a line while another one is in the first row, and back.
    static int RowOf(int line, int topLine)
    {
        return line - topLine + 1;
    }

    static int LineIn(int row, int topLine)
    {
        return row + topLine - 1;
    }

    /// The line whose row is under y; of the top margin, the top line.
    int LineAt(int yPx, int topLine) const
    {
        return RowOffsetAt(yPx) + topLine;
    }

    /// Width of the strip of line numbers: four and a half characters and the margin.
    int NumberStripPx() const
    {
        return cellWidthPx * 9 / 2 + TopMarginPx;
    }

    bool IsInNumberStrip(int xPx) const
    {
        return hasLineNumbers && 2 * xPx <= cellWidthPx * 9 + 2 * TopMarginPx;
    }

    /// Left edge of the first cell in view.
    int TextLeftPx() const
    {
        return hasLineNumbers ? NumberStripPx() + cellWidthPx : TopMarginPx;
    }

    /// Left edge of a cell, which may be out of view.
    int CellLeftPx(int cell) const
    {
        return TextLeftPx() + (cell - leftCell) * cellWidthPx;
    }

    /// The cell under x, not left of the text.
    int CellAt(int xPx) const
    {
        return (xPx - TextLeftPx()) / cellWidthPx + leftCell;
    }

    /// Whole cells in view, at least 1; at the right as at the left there is a margin, which holds the edge of a box.
    int CellsInView() const
    {
        const int cells = (widthPx - TextLeftPx() - TopMarginPx) / cellWidthPx;
        return cells < 1 ? 1 : cells;
    }
};
