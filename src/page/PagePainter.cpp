// SPDX-FileCopyrightText: 2026 The Kotoban developers
// SPDX-License-Identifier: MIT

#include "page/PagePainter.h"

#include "study/modClickTarget.h"
#include "widgets/PageFontAtScale.h"

#include <QFontMetricsF>
#include <QGlyphRun>
#include <QPainter>
#include <QRawFont>

#include <cmath>

namespace {

constexpr int RowGapPx = 2; // between the boxes of two rows
constexpr int FocusFramePx = 2;
constexpr int CurrentFramePx = 2;

} // namespace

QRect AreaOfBlank(const DisplayText &text, int blank, int topLine, const PageLayout &layout)
{
    const int line = text.Blanks().LineOf(blank);
    const int rowTopPx = layout.RowTopPx(layout.RowOf(line, topLine));
    if (HasPictures(text.Line(line)))
        return QRect(layout.TextLeftPx() - CurrentFramePx, rowTopPx, layout.widthPx, layout.linePitchPx);
    const BoxEdges box = GetBqInfoFromLine(text, blank, layout.cellWidthPx, layout.CellLeftPx(0));
    const QRect area(box.leftPx, rowTopPx, box.rightPx - box.leftPx + 1, layout.linePitchPx);
    return area.adjusted(-1, -1, 1, 1); // at 125 % an edge may be on a pixel that is only partly in the area
}

QRect AreaOfLineNumbers(const PageLayout &layout)
{
    return QRect(0, 0, layout.NumberStripPx() + 1, layout.heightPx);
}

PagePainter::PagePainter(QPainter *painter, const PageToPaint &page, PageFontAtScale *font)
    : m_painter(*painter), m_page(page), m_layout(page.layout), m_colours(page.colours), m_font(*font),
      m_scale(font->Scale())
{
    m_painter.scale(1 / m_scale, 1 / m_scale);
    m_painter.setFont(m_font.Font());
    // Text is centred between the upper and lower edges of a box.
    m_baseline = m_font.BaselineIn(Device(m_layout.linePitchPx - RowGapPx));
}

void PagePainter::Paint(const QRect &part)
{
    // At fractional scales, neighbours share pixels with the part at its edges. The area is rounded to whole device
    // pixels, or at 125 % a line of half-covered ones would be cleared but not repainted.
    const QRect area = part.adjusted(-1, -1, 1, 1);
    // A character reaches into the next cell at most.
    const int reachPx = 2 * m_layout.cellWidthPx;
    m_leftPx = area.left() - reachPx;
    m_rightPx = area.right() + reachPx;
    const QRect deviceArea = QRectF(QPointF(area.topLeft()) * m_scale, QSizeF(area.size()) * m_scale).toAlignedRect();
    m_painter.save();
    m_painter.setClipRect(deviceArea, Qt::IntersectClip);
    m_painter.fillRect(deviceArea, m_colours.background);
    const PageInView view = PageAt(m_page.topLine, m_page.text.LineCount(), m_layout);
    const int firstRow = qMax(0, m_layout.RowOffsetAt(area.top())) + 1;
    const int lastRow = qMin(m_layout.RowOf(view.lastLine, view.topLine), m_layout.RowOffsetAt(area.bottom()) + 1);
    if (m_layout.hasLineNumbers) {
        if (area.left() < m_layout.NumberStripPx())
            for (int row = firstRow; row <= lastRow; ++row)
                DrawNumber(row);
        m_painter.fillRect(Device(QRect(m_layout.NumberStripPx(), 0, 1, m_layout.heightPx)), m_colours.stripEdge);
    }
    DrawFrame();
    // Text scrolled out at the left must not run into the line numbers; the frame around the first cell may.
    m_painter.setClipRect(Device(QRect(m_layout.TextLeftPx() - CurrentFramePx, 0, m_layout.widthPx, m_layout.heightPx)),
                          Qt::IntersectClip);
    if (area.right() >= m_layout.TextLeftPx() - CurrentFramePx)
        for (int row = firstRow; row <= lastRow; ++row)
            DrawText(row);
    m_painter.restore();
}

int PagePainter::LineIn(int row) const
{
    return m_layout.LineIn(row, m_page.topLine);
}

void PagePainter::DrawText(int row)
{
    const int line = LineIn(row);
    if (line == m_page.found.line)
        DrawFound(row);
    if (line == m_page.current.line)
        DrawCurrent(row); // below the text, because an adjacent character may reach into it
    DrawCells(m_page.text.MaskedLine(line), 0, row, m_colours.text);
    for (const int blank : m_page.text.BlanksOnLine(line))
        DrawBox(blank, row);
    UnderlinePictures(row);
}

/// Width of lines: one pixel, more on a page with large text.
int PagePainter::PenWidth() const
{
    constexpr int pitchOfOnePixel = 20;
    return qMax(1, Device(1) * qMax(1, m_layout.linePitchPx / pitchOfOnePixel));
}

int PagePainter::Device(int px) const
{
    return int(std::lround(px * m_scale));
}

QRect PagePainter::Device(const QRect &rect) const
{
    return QRect(QPoint(Device(rect.left()), Device(rect.top())),
                 QPoint(Device(rect.right() + 1) - 1, Device(rect.bottom() + 1) - 1));
}

void PagePainter::DrawFound(int row)
{
    const TextSpan &found = m_page.found;
    auto [firstCell, endCell] = m_page.text.Cells(found);
    for (const int blank : m_page.text.BlanksOnLine(found.line)) {
        const CellRange cells = m_page.text.Cells(blank);
        if (!m_page.round.bolOpen(blank) && cells.start < endCell && firstCell < cells.end) {
            firstCell = qMin(firstCell, cells.start);
            endCell = qMax(endCell, cells.end);
        }
    }
    m_painter.fillRect(Device(BoxOf(firstCell, endCell, row)), m_colours.found);
}

/// Frames the current target just outside its box, in the gap between rows.
void PagePainter::DrawCurrent(int row)
{
    const CellRange cells = m_page.text.Cells(m_page.current);
    const QRect box = BoxOf(cells.start, cells.end, row);
    DrawRing(Device(box.adjusted(-CurrentFramePx, -CurrentFramePx, CurrentFramePx, CurrentFramePx)),
             qMax(1, Device(CurrentFramePx)), m_colours.current);
}

/// The area of the cells firstCell..endCell - 1 of a row.
QRect PagePainter::BoxOf(int firstCell, int endCell, int row) const
{
    return QRect(m_layout.CellLeftPx(firstCell), m_layout.RowTopPx(row), (endCell - firstCell) * m_layout.cellWidthPx,
                 m_layout.linePitchPx - RowGapPx);
}

void PagePainter::DrawBox(int blank, int row)
{
    const BoxEdges box = GetBqInfoFromLine(m_page.text, blank, m_layout.cellWidthPx, m_layout.CellLeftPx(0));
    if (box.rightPx < m_leftPx || box.leftPx > m_rightPx)
        return;
    const bool isShown = m_page.round.bolOpen(blank);
    const int penWidth = PenWidth();
    // The right edge is where HitTest expects it: on the first pixel after the last cell.
    const QRect outline = Device(
        QRect(box.leftPx, m_layout.RowTopPx(row), box.rightPx - box.leftPx + 1, m_layout.linePitchPx - RowGapPx));
    m_painter.setPen(QPen(isShown ? m_colours.shownBox : m_colours.hiddenBox, penWidth, Qt::SolidLine, Qt::SquareCap,
                          Qt::MiterJoin));
    m_painter.setBrush(Qt::NoBrush);
    // A pen of w pixels reaches w / 2 to both sides of its path.
    const double half = penWidth / 2.0;
    m_painter.drawRect(QRectF(outline).adjusted(half, half, -half, -half));
    if (m_page.round.IsHard(blank))
        DrawCorner(outline);
    const QStringView answer = m_page.text.Answer(blank);
    const int answerCell = m_page.text.Cells(blank).start + 1;
    if (!isShown) {
        if (blank == m_page.hintedBlank)
            DrawCells(answer.first(m_page.hintLength), answerCell, row, m_colours.hint);
        return;
    }
    DrawCells(answer, answerCell, row, m_colours.text);
    // An empty answer must not differ from a hidden one only by the colour of its box, so mark it with a dash.
    if (answer.trimmed().isEmpty())
        m_painter.drawLine(outline.left() + outline.width() / 4, outline.center().y(),
                           outline.right() - outline.width() / 4, outline.center().y());
}

/// Marks a hard blank by its box's upper right corner, where the bracket was; the shape is visible without colour.
void PagePainter::DrawCorner(const QRect &outline)
{
    const int side = qMin(Device(m_layout.cellWidthPx), outline.height() / 2);
    const QPointF corner(outline.right() + 1, outline.top());
    const QPointF points[] = {corner - QPointF(side, 0), corner, corner + QPointF(0, side)};
    m_painter.setPen(Qt::NoPen);
    m_painter.setBrush(m_colours.hard);
    m_painter.drawPolygon(points, 3);
    m_painter.setBrush(Qt::NoBrush);
}

/// Underlines the picture references that a click opens.
void PagePainter::UnderlinePictures(int row)
{
    const int rowTop = Device(m_layout.RowTopPx(row));
    const int lowest = Device(m_layout.linePitchPx - RowGapPx) - 2 * PenWidth();
    const int top = rowTop + qMin(int(m_baseline) + PenWidth(), lowest);
    for (const TextSpan &picture : PicturesOnLine(m_page.text, m_page.round, LineIn(row))) {
        const CellRange cells = m_page.text.Cells(picture);
        const int left = Device(m_layout.CellLeftPx(cells.start));
        m_painter.fillRect(left, top, Device(m_layout.CellLeftPx(cells.end)) - left, PenWidth(), m_colours.text);
    }
}

/// Draws a text starting at a cell of its row, from 0, each character in its own cell or cells.
void PagePainter::DrawCells(QStringView text, int cell, int row, const QColor &colour)
{
    const double baseline = Device(m_layout.RowTopPx(row)) + m_baseline;
    while (!text.isEmpty() && m_layout.CellLeftPx(cell) < m_leftPx) {
        cell += CellsOf(text.front());
        text = text.sliced(1);
    }
    const qsizetype cellsToPaint = qMax(0, (m_rightPx - m_layout.CellLeftPx(cell)) / m_layout.cellWidthPx + 1);
    text = text.first(qMin(text.size(), cellsToPaint));
    const QList<quint32> glyphs = m_font.Glyphs().glyphIndexesForString(text.toString());
    const bool isPlain = glyphs.size() == text.size();
    QList<quint32> drawn;
    QList<QPointF> positions;
    m_painter.setPen(colour);
    for (qsizetype i = 0; i < text.size(); ++i) {
        const QChar character = text[i];
        const int cells = CellsOf(character);
        const QPointF at(Device(m_layout.CellLeftPx(cell)), baseline);
        cell += cells;
        if (character.isSpace() || character < u' ')
            continue;
        if (isPlain && glyphs[i] != 0) {
            drawn += glyphs[i];
            positions += at;
        } else {
            DrawForeign(character, at, Device(cells * m_layout.cellWidthPx));
        }
    }
    DrawGlyphs(m_font.Glyphs(), drawn, positions);
}

/// Draws a character missing from the page's font in the system's fallback font, narrowed to its cells.
void PagePainter::DrawForeign(QChar character, const QPointF &at, int width)
{
    const double advance = QFontMetricsF(m_painter.font()).horizontalAdvance(character);
    m_painter.save();
    m_painter.translate(at);
    if (advance > width)
        m_painter.scale(width / advance, 1);
    m_painter.drawText(QPointF(), QString(character));
    m_painter.restore();
}

void PagePainter::DrawNumber(int row)
{
    const int line = LineIn(row);
    constexpr int maxDigits = 4; // digits of longer numbers are narrowed
    const QRect strip = Device(QRect(0, m_layout.RowTopPx(row), m_layout.NumberStripPx() - m_layout.cellWidthPx / 2,
                                     m_layout.linePitchPx - RowGapPx));
    const bool isMarked = line == m_page.round.lngMarkLine();
    if (isMarked)
        m_painter.fillRect(strip, m_colours.lineMark);
    const QString number = QString::number(line);
    const bool isNarrow = number.size() > maxDigits;
    const int percent = isNarrow ? 100 * maxDigits / int(number.size()) : 100;
    const QRawFont &glyphs = isNarrow ? m_font.NarrowGlyphs(percent) : m_font.Glyphs();
    const double figureWidth = Device(m_layout.cellWidthPx) * percent / 100.0;
    QList<QPointF> positions;
    for (qsizetype left = number.size(); left > 0; --left)
        positions += QPointF(std::round(strip.right() + 1 - figureWidth * double(left)), strip.top() + m_baseline);
    m_painter.setPen(isMarked ? m_colours.markedNumber : m_colours.number);
    DrawGlyphs(glyphs, glyphs.glyphIndexesForString(number), positions);
}

/// Draws the edge of the page, which shows whether it has keyboard focus.
void PagePainter::DrawFrame()
{
    const bool isFocused = m_page.hasFocus;
    DrawRing(QRect(QPoint(0, 0), QSize(Device(m_layout.widthPx), Device(m_layout.heightPx))),
             qMax(1, Device(isFocused ? FocusFramePx : 1)), isFocused ? m_colours.focus : m_colours.frame);
}

/// Paints the outermost pixels inside a rectangle.
void PagePainter::DrawRing(const QRect &edge, int width, const QColor &colour)
{
    for (int i = 0; i < width; ++i) {
        const QRect ring = edge.adjusted(i, i, -i, -i);
        m_painter.fillRect(QRect(ring.topLeft(), QSize(ring.width(), 1)), colour);
        m_painter.fillRect(QRect(ring.bottomLeft(), QSize(ring.width(), 1)), colour);
        m_painter.fillRect(QRect(ring.topLeft(), QSize(1, ring.height())), colour);
        m_painter.fillRect(QRect(ring.topRight(), QSize(1, ring.height())), colour);
    }
}

void PagePainter::DrawGlyphs(const QRawFont &font, const QList<quint32> &glyphs, const QList<QPointF> &positions)
{
    QGlyphRun run;
    run.setRawFont(font);
    run.setGlyphIndexes(glyphs);
    run.setPositions(positions);
    m_painter.drawGlyphRun(QPointF(), run);
}
