// Where things stand on the page: a grid of half-width cells and rows of equal height. All lengths are pixels of the
// text area; lines and rows are numbered from 1.
#pragma once

struct PageLayout
{
    int cellWidthPx = 1; ///< width of a half-width character; a full-width one has exactly two
    int linePitchPx = 1; ///< height of a line of text and the space below it
    int heightPx = 0;    ///< height of the text area
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

    /// Width of the strip of line numbers: four and a half characters and the margin.
    int NumberStripPx() const
    {
        return cellWidthPx * 9 / 2 + TopMarginPx;
    }

    bool IsInNumberStrip(int xPx) const
    {
        return hasLineNumbers && 2 * xPx <= cellWidthPx * 9 + 2 * TopMarginPx;
    }

    /// Left edge of a line's first character.
    int TextLeftPx() const
    {
        return hasLineNumbers ? NumberStripPx() + cellWidthPx : TopMarginPx;
    }
};
