// SPDX-FileCopyrightText: 2026 The Kotoban developers
// SPDX-License-Identifier: MIT

#include "study/modPageRows.h"

#include <QVarLengthArray>

namespace {

/// Whether a row may end before a character.
enum class BreakBefore
{
    No, ///< only if there is no other place
    Possible,
    Good
};

using Breaks = QVarLengthArray<BreakBefore, 128>;

bool IsBlankSpace(QChar character)
{
    return character == u' ' || character == QChar(0x3000);
}

bool IsInWord(QChar character)
{
    return character < QChar(0x80) && character.isLetterOrNumber();
}

BreakBefore BreakBetween(QChar before, QChar after)
{
    constexpr QStringView endings = u"、。，．";
    constexpr QStringView neverFirst = u"、。，．）」､｡｣ﾞﾟ,.)";
    if (IsBlankSpace(after) || neverFirst.contains(after) || (IsInWord(before) && IsInWord(after)))
        return BreakBefore::No;
    return IsBlankSpace(before) || endings.contains(before) ? BreakBefore::Good : BreakBefore::Possible;
}

/// Where a line may be broken, by the index of the character that would begin the next row.
Breaks BreaksOf(int line, const DisplayText &text)
{
    const QStringView view = text.Line(line);
    Breaks breaks(view.size() + 1, BreakBefore::Possible);
    for (qsizetype i = 1; i < view.size(); ++i)
        breaks[i] = BreakBetween(view[i - 1], view[i]);
    for (const int blank : text.BlanksOnLine(line)) {
        const TextSpan span = text.Span(blank);
        // The brackets have become spaces.
        if (span.Index() > 0)
            breaks[span.Index()] = BreakBetween(view[span.Index() - 1], u'[');
        for (qsizetype i = span.Index() + 1; i <= span.LastIndex(); ++i)
            breaks[i] = BreakBefore::No;
        if (breaks[span.LastIndex() + 1] == BreakBefore::Good)
            breaks[span.LastIndex() + 1] = BreakBefore::Possible;
    }
    return breaks;
}

} // namespace

bool IsWrapped(const DisplayText &text, const PageLayout &layout)
{
    return layout.isWrapping && text.LongestLineCells() > layout.CellsInView();
}

void AddRowsOf(int line, const DisplayText &text, const PageLayout &layout, std::vector<PageRow> *rows)
{
    if (!IsWrapped(text, layout)) {
        rows->push_back({line, {0, text.LongestLineCells()}});
        return;
    }
    struct Place
    {
        qsizetype index = 0;
        int cell = 0;
    };
    const QStringView view = text.Line(line);
    const int width = layout.CellsInView();
    const Breaks breaks = BreaksOf(line, text);
    Place start;
    Place at;
    Place places[3]; // the last ones in the row, by BreakBefore
    while (at.index < view.size()) {
        const int next = at.cell + CellsOf(view[at.index]);
        if (at.cell > start.cell) {
            BreakBefore kind = breaks[at.index];
            if (kind == BreakBefore::Good && 3 * (at.cell - start.cell) <= 2 * width)
                kind = BreakBefore::Possible; // the row would be short
            places[int(kind)] = at;
        }
        if (at.cell == start.cell || next - start.cell <= width) {
            at = {at.index + 1, next};
            continue;
        }
        Place end;
        for (const Place &place : places)
            if (place.cell > start.cell)
                end = place; // the best one
        rows->push_back({line, {start.cell, end.cell}});
        start = at = end;
    }
    rows->push_back({line, {start.cell, at.cell}});
}

std::vector<PageRow> RowsOf(int line, const DisplayText &text, const PageLayout &layout)
{
    std::vector<PageRow> rows;
    AddRowsOf(line, text, layout, &rows);
    return rows;
}

CellRange InRow(const CellRange &cells, const PageRow &row)
{
    return {std::max(cells.start, row.cells.start), std::min(cells.end, row.cells.end)};
}

BoxEdges BoxInRow(const DisplayText &text, int blank, const PageRow &row, const PageLayout &layout)
{
    const BoxEdges box = GetBqInfoFromLine(text, blank, layout.cellWidthPx, layout.CellLeftPx(-row.cells.start));
    return {std::max(box.leftPx, layout.CellLeftPx(0)),
            std::min(box.rightPx, layout.CellLeftPx(row.cells.end - row.cells.start))};
}
