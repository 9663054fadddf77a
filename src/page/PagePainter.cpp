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
constexpr int SoftRingGapPx = 1; // between a soft box and the frame around it
constexpr int MinCornerPx = 6;   // of the mark of a hard blank

/// Fills a rounded box with an outline whose edges have these widths.
void FillBox(QPainter *painter, const QRect &box, const QMargins &edges, double radius, const QColor &outline,
             const QColor &fill)
{
    painter->save();
    painter->setRenderHint(QPainter::Antialiasing);
    painter->setPen(Qt::NoPen);
    painter->setBrush(outline);
    painter->drawRoundedRect(box, radius, radius);
    painter->setBrush(fill);
    const double inner = qMax(0.0, radius - edges.top());
    painter->drawRoundedRect(box.marginsRemoved(edges), inner, inner);
    painter->restore();
}

} // namespace

QRect AreaOfBlank(const DisplayText &text, int blank, const PageInView &page, const PageLayout &layout)
{
    const int line = text.Blanks().LineOf(blank);
    const bool isWholeLine = HasPictures(text.Line(line));
    QRect area;
    for (size_t i = 0; i < page.rows.size(); ++i) {
        if (page.rows[i].line != line)
            continue;
        const int rowTopPx = layout.RowTopPx(int(i) + 1);
        const BoxEdges box = BoxInRow(text, blank, page.rows[i], layout);
        if (isWholeLine)
            area |= QRect(layout.TextLeftPx() - CurrentFramePx, rowTopPx, layout.widthPx, layout.linePitchPx);
        else if (box.leftPx < box.rightPx) // at 125 % an edge may be on a pixel that is only partly in the area
            area |=
                QRect(box.leftPx, rowTopPx, box.rightPx - box.leftPx + 1, layout.linePitchPx).adjusted(-1, -1, 1, 1);
    }
    return area;
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
    const int firstRow = m_layout.RowOffsetAt(area.top()) + 1;
    const int lastRow = qMin(int(m_page.view.rows.size()), m_layout.RowOffsetAt(area.bottom()) + 1);
    if (m_layout.hasLineNumbers) {
        if (area.left() < m_layout.NumberStripPx())
            for (int row = firstRow; row <= lastRow; ++row)
                DrawNumber(row);
        m_painter.fillRect(Device(QRect(m_layout.NumberStripPx(), 0, 1, m_layout.heightPx)), m_colours.frame);
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

const PageRow &PagePainter::RowAt(int row) const
{
    return m_page.view.rows[size_t(row) - 1];
}

void PagePainter::DrawText(int row)
{
    const int line = RowAt(row).line;
    if (line == m_page.found.line)
        DrawFound(row);
    if (line == m_page.current.line)
        DrawCurrent(row); // below the text, because an adjacent character may reach into it
    DrawCells(m_page.text.MaskedLine(line), 0, row, m_colours.text);
    for (const int blank : m_page.text.BlanksOnLine(line))
        DrawBlank(blank, row);
    UnderlinePictures(row);
}

/// Width of lines in pixels of the text area.
int PagePainter::LinePx() const
{
    constexpr int pitchOfOnePixel = 20;
    if (m_colours.drawing.hasWiderLines)
        return qBound(m_colours.drawing.leastLinePx, m_page.zoomPercent / 100, 3);
    return qMax(1, m_layout.linePitchPx / pitchOfOnePixel);
}

int PagePainter::PenWidth() const
{
    return qMax(1, Device(1) * LinePx());
}

/// A multiple of the page's font size.
double PagePainter::FontSizes(double count) const
{
    return count * m_font.Font().pixelSize();
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

/// Whether the mark of a hit covers the whole box of a hidden answer, so as not to tell where in it the hit is.
bool PagePainter::IsFoundHidden(int blank) const
{
    if (m_page.found.line != m_page.text.Blanks().LineOf(blank) || m_page.round.bolOpen(blank))
        return false;
    const CellRange found = m_page.text.Cells(m_page.found);
    const CellRange cells = m_page.text.Cells(blank);
    return cells.start < found.end && found.start < cells.end;
}

void PagePainter::DrawFound(int row)
{
    CellRange found = m_page.text.Cells(m_page.found);
    for (const int blank : m_page.text.BlanksOnLine(m_page.found.line)) {
        if (!IsFoundHidden(blank))
            continue;
        const CellRange cells = m_page.text.Cells(blank);
        found = {qMin(found.start, cells.start), qMax(found.end, cells.end)};
    }
    const QRect area = Device(AreaOf(found, row));
    if (area.isEmpty())
        return;
    m_painter.fillRect(area, m_colours.found);
    if (m_colours.drawing.hasRingAtHit)
        DrawOpen(area, found, row, [this](const QRect &ring) { DrawRing(ring, PenWidth(), m_colours.answer); });
}

/// Frames the current target just outside its box, in the gap between rows.
void PagePainter::DrawCurrent(int row)
{
    const CellRange cells = m_page.text.Cells(m_page.current);
    QRect target = Device(AreaOf(cells, row));
    int gap = 0;
    if (m_colours.drawing.isSoft) {
        for (const int blank : m_page.text.BlanksOnLine(m_page.current.line))
            if (m_page.text.Cells(blank) == cells)
                target = BoxOf(blank, row);
        gap = Device(SoftRingGapPx);
    }
    if (target.isEmpty())
        return;
    const int width = qMax(1, Device(CurrentFramePx));
    const int reach = gap + width;
    DrawOpen(target.adjusted(-reach, -reach, reach, reach), cells, row,
             [&](const QRect &ring) { DrawRing(ring, width, m_colours.focus); });
}

/// The area of those cells of a line that are in a row; empty if there are none.
QRect PagePainter::AreaOf(const CellRange &cells, int row) const
{
    const CellRange inRow = InRow(cells, RowAt(row));
    return QRect(m_layout.CellLeftPx(inRow.start - RowAt(row).cells.start), m_layout.RowTopPx(row),
                 (inRow.end - inRow.start) * m_layout.cellWidthPx, m_layout.linePitchPx - RowGapPx);
}

/// Draws what is around some cells of a line without an edge where they go on in another row: draws it longer there
/// and cuts it off.
/// @param box  around the cells in the row
template <typename Draw>
void PagePainter::DrawOpen(const QRect &box, const CellRange &cells, int row, Draw draw)
{
    const CellRange &inRow = RowAt(row).cells;
    const int beyond = box.height();
    const QRect longer =
        box.adjusted(cells.start < inRow.start ? -beyond : 0, 0, cells.end > inRow.end ? beyond : 0, 0);
    if (longer == box)
        return draw(box);
    m_painter.save();
    m_painter.setClipRect(box, Qt::IntersectClip);
    draw(longer);
    m_painter.restore();
}

/// The outer edge of a blank's box in a row, in device pixels.
QRect PagePainter::BoxOf(int blank, int row) const
{
    const CellRange cells = m_page.text.Cells(blank);
    const QRect area = AreaOf(cells, row);
    const PageDrawing &drawing = m_colours.drawing;
    // The right edge is where HitTest expects it: on the first pixel after the last cell.
    if (!drawing.isSoft)
        return Device(area.adjusted(0, 0, 1, 0));
    const QRect whole = Device(area);
    const int inset = int(std::lround(drawing.insetCells * Device(m_layout.cellWidthPx)));
    const int height =
        qMin(int(std::lround(FontSizes(drawing.boxHeight))), Device(m_layout.linePitchPx) - 3 * PenWidth());
    const int left = cells.start < RowAt(row).cells.start ? 0 : inset;
    const int right = cells.end > RowAt(row).cells.end ? 0 : inset;
    return QRect(whole.left() + left, whole.top() + (whole.height() - height) / 2, whole.width() - left - right,
                 height);
}

void PagePainter::DrawBlank(int blank, int row)
{
    const BoxEdges edges = BoxInRow(m_page.text, blank, RowAt(row), m_layout);
    if (edges.leftPx >= edges.rightPx || edges.rightPx < m_leftPx || edges.leftPx > m_rightPx)
        return;
    const bool isShown = m_page.round.bolOpen(blank);
    const bool isSoft = m_colours.drawing.isSoft;
    const bool isFound = IsFoundHidden(blank);
    const QRect box = BoxOf(blank, row);
    const CellRange cells = m_page.text.Cells(blank);
    DrawOpen(box, cells, row, [&](const QRect &open) {
        if (isSoft)
            DrawSoftBox(open, blank, isFound);
        else
            DrawOutline(open, isShown);
    });
    const bool hasCorner = m_page.round.IsHard(blank) && cells.end <= RowAt(row).cells.end;
    if (hasCorner && !isSoft)
        DrawCorner(box);
    const QStringView answer = m_page.text.Answer(blank);
    const int answerCell = cells.start + 1;
    if (isShown)
        DrawCells(answer, answerCell, row, m_colours.answer);
    else if (blank == m_page.hintedBlank)
        DrawCells(answer.first(m_page.hintLength), answerCell, row, isFound ? m_colours.text : m_colours.hint);
    // An empty answer must not differ from a hidden one only by the colour of its box, so mark it with a dash.
    if (isShown && !isSoft && answer.trimmed().isEmpty())
        m_painter.drawLine(box.left() + box.width() / 4, box.center().y(), box.right() - box.width() / 4,
                           box.center().y());
    if (hasCorner && isSoft)
        DrawCorner(box);
}

void PagePainter::DrawOutline(const QRect &box, bool isShown)
{
    const int penWidth = PenWidth();
    m_painter.setPen(QPen(isShown ? m_colours.shownBox : m_colours.hiddenBox, penWidth, Qt::SolidLine, Qt::SquareCap,
                          Qt::MiterJoin));
    m_painter.setBrush(Qt::NoBrush);
    // A pen of w pixels reaches w / 2 to both sides of its path.
    const double half = penWidth / 2.0;
    m_painter.drawRect(QRectF(box).adjusted(half, half, -half, -half));
}

void PagePainter::DrawSoftBox(const QRect &box, int blank, bool isFound)
{
    const PageDrawing &drawing = m_colours.drawing;
    if (m_page.round.bolOpen(blank)) {
        const int width = int(std::lround(qMax(drawing.underlinePx, double(LinePx())) * m_scale));
        m_painter.fillRect(box.left(), box.bottom() + 1 - width, box.width(), width, m_colours.shownBox);
        return;
    }
    const bool isNext = blank == m_page.nextBlank;
    const int edge = PenWidth() * (isNext ? 2 : 1);
    const int leftEdge = isNext ? qMax(edge, int(std::lround(FontSizes(drawing.nextEdge)))) : edge;
    const QColor outline = isFound ? m_colours.answer : isNext ? m_colours.next : m_colours.hiddenBox;
    const QColor fill = isFound ? m_colours.found : isNext ? m_colours.nextFill : m_colours.fill;
    FillBox(&m_painter, box, QMargins(leftEdge, edge, edge, edge), FontSizes(drawing.radius), outline, fill);
}

/// Marks a hard blank by its box's upper right corner, where the bracket was; the shape is visible without colour.
void PagePainter::DrawCorner(const QRect &box)
{
    const PageDrawing &drawing = m_colours.drawing;
    const int side = drawing.isSoft ? qMax(int(std::lround(FontSizes(drawing.hardCorner))), Device(MinCornerPx))
                                    : qMin(Device(m_layout.cellWidthPx), box.height() / 2);
    const QPointF corner(box.right() + 1, box.top());
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
    for (const TextSpan &picture : PicturesOnLine(m_page.text, m_page.round, RowAt(row).line)) {
        const QRect area = Device(AreaOf(m_page.text.Cells(picture), row));
        if (area.isValid())
            m_painter.fillRect(area.left(), top, area.width(), PenWidth(), m_colours.text);
    }
}

/// Draws of a text starting at a cell of its line, from 0, what is in a row, each character in its own cell or cells.
void PagePainter::DrawCells(QStringView text, int cell, int row, const QColor &colour)
{
    const double baseline = Device(m_layout.RowTopPx(row)) + m_baseline;
    const CellRange &inRow = RowAt(row).cells;
    const auto leftOf = [&](int at) { return m_layout.CellLeftPx(at - inRow.start); };
    while (!text.isEmpty() && (cell < inRow.start || leftOf(cell) < m_leftPx)) {
        cell += CellsOf(text.front());
        text = text.sliced(1);
    }
    qsizetype count = 0;
    for (int at = cell; count < text.size() && at < inRow.end && leftOf(at) <= m_rightPx; ++count)
        at += CellsOf(text[count]);
    text = text.first(count);
    const QList<quint32> glyphs = m_font.Glyphs().glyphIndexesForString(text.toString());
    const bool isPlain = glyphs.size() == text.size();
    QList<quint32> drawn;
    drawn.reserve(glyphs.size());
    QList<QPointF> positions;
    positions.reserve(glyphs.size());
    m_painter.setPen(colour);
    for (qsizetype i = 0; i < text.size(); ++i) {
        const QChar character = text[i];
        const int cells = CellsOf(character);
        const QPointF at(Device(leftOf(cell)), baseline);
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

/// Draws a line's number in its first row; if the line is marked, the mark along all of its rows.
void PagePainter::DrawNumber(int row)
{
    const int line = RowAt(row).line;
    constexpr int maxDigits = 4; // digits of longer numbers are narrowed
    const QRect strip = Device(QRect(0, m_layout.RowTopPx(row), m_layout.NumberStripPx() - m_layout.cellWidthPx / 2,
                                     m_layout.linePitchPx - RowGapPx));
    const bool isMarked = line == m_page.round.lngMarkLine();
    if (isMarked) {
        const bool goesOn = row < int(m_page.view.rows.size()) && RowAt(row + 1).line == line;
        m_painter.fillRect(strip.adjusted(0, 0, 0, goesOn ? Device(RowGapPx) : 0), m_colours.lineMark);
    }
    if (RowAt(row).cells.start > 0)
        return;
    const QString number = QString::number(line);
    const bool isNarrow = number.size() > maxDigits;
    const int stretchPercent = isNarrow ? 100 * maxDigits / int(number.size()) : 100;
    const int sizePercent = m_colours.drawing.numberPercent;
    const QRawFont &glyphs = m_font.Figures(sizePercent, stretchPercent);
    const double figureWidth = Device(m_layout.cellWidthPx) * stretchPercent * sizePercent / 10'000.0;
    QList<QPointF> positions;
    for (qsizetype left = number.size(); left > 0; --left)
        positions += QPointF(std::round(strip.right() + 1 - figureWidth * double(left)), strip.top() + m_baseline);
    m_painter.setPen(isMarked ? m_colours.markedNumber : m_colours.number);
    DrawGlyphs(glyphs, glyphs.glyphIndexesForString(number), positions);
}

/// Draws the edge of the page, which shows whether it has keyboard focus.
void PagePainter::DrawFrame()
{
    const bool isFocused = m_page.hasFocusRing;
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
