// SPDX-FileCopyrightText: 2026 The Kotoban developers
// SPDX-License-Identifier: MIT

// The geometry of the page: a grid of half-width cells and rows of equal height. All lengths are in pixels of the text
// area; rows are numbered from 1, cells from 0.
#pragma once

struct PageLayout
{
    int cellWidthPx = 1; ///< width of a half-width character; a full-width one takes exactly two cells
    int linePitchPx = 1; ///< height of a line of text and the space below it
    int widthPx = 0;     ///< width of the text area
    int heightPx = 0;    ///< height of the text area
    int leftCell = 0;    ///< first cell in view: the horizontal scroll bar's value
    bool hasLineNumbers = false;
    bool isWrapping = false; ///< whether a line wider than the page continues in the next row

    static constexpr int TopMarginPx = 5;

    /// Whole rows that fit below the top margin, at least 1.
    int RowsPerPage() const
    {
        const int rows = (heightPx - TopMarginPx) / linePitchPx;
        return rows < 1 ? 1 : rows;
    }

    /// Number of lines of a row each that a page turn advances, at least 1. One line stays in view.
    int LargeChange() const
    {
        return RowsPerPage() > 1 ? RowsPerPage() - 1 : 1;
    }

    int RowTopPx(int row) const
    {
        return (row - 1) * linePitchPx + TopMarginPx;
    }

    /// Number of rows between the first row and the one at y; 0 in the first row and above.
    int RowOffsetAt(int yPx) const
    {
        return yPx < TopMarginPx ? 0 : (yPx - TopMarginPx) / linePitchPx;
    }

    /// Width of the strip of line numbers: four and a half half-width characters and the margin.
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

    /// Left edge of a cell of its row, which may be out of view.
    int CellLeftPx(int cell) const
    {
        return TextLeftPx() + (cell - leftCell) * cellWidthPx;
    }

    /// The cell of its row at x, which must not be left of the text.
    int CellAt(int xPx) const
    {
        return (xPx - TextLeftPx()) / cellWidthPx + leftCell;
    }

    /// Number of whole cells in view, at least 1. There is a margin for the edge of a box on the right as on the left.
    int CellsInView() const
    {
        const int cells = (widthPx - TextLeftPx() - TopMarginPx) / cellWidthPx;
        return cells < 1 ? 1 : cells;
    }
};
