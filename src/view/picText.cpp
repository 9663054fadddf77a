#include "view/picText.h"

#include "view/PageAccessible.h"
#include "view/modClickTarget.h"
#include "view/modPageText.h"
#include "widgets/PageFont.h"

#include <QAccessible>
#include <QDragEnterEvent>
#include <QFontDatabase>
#include <QFontMetricsF>
#include <QGlyphRun>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QPaintEvent>
#include <QPainter>
#include <QRawFont>

#include <cmath>

namespace {

const QColor Background = Qt::white;
const QColor TextColour = Qt::black;
const QColor DarkGrey(128, 128, 128); // colour 8 of the palette of 16
const QColor NumberColour(96, 96, 96);
const QColor MarkBackground(255, 214, 102);
const QColor FoundBackground(190, 225, 255);
const QColor StripEdge(208, 208, 208);
const QColor Frame(160, 160, 160);
const QColor SpotColour(20, 90, 200);

constexpr int LinesPerNotch = 3;
constexpr int WheelNotch = 120; // eighths of a degree
constexpr int RowGapPx = 2;     // between the boxes of two rows
constexpr int FocusFramePx = 2;
constexpr int SpotFramePx = 2;

} // namespace

/// The page's font in pixels of the device.
class PicText::DeviceFont
{
  public:
    /// @param font  of the page, in its own pixels; @param scale  pixels of the device in one of them
    DeviceFont(const QFont &font, double scale) : m_font(font), m_scale(scale)
    {
        m_font.setPixelSize(int(std::lround(font.pixelSize() * scale)));
        m_glyphs = QRawFont::fromFont(m_font, QFontDatabase::Japanese);
        const QFontMetricsF metrics(m_font);
        m_ascent = metrics.ascent();
        m_height = metrics.height();
    }

    double Scale() const
    {
        return m_scale;
    }

    const QFont &Font() const
    {
        return m_font;
    }

    const QRawFont &Glyphs() const
    {
        return m_glyphs;
    }

    /// The glyphs narrowed to a share of their width, in percent. The font of the last share is kept: a painter that
    /// is scaled instead would draw each glyph anew.
    const QRawFont &NarrowGlyphs(int percent)
    {
        if (percent != m_narrowPercent) {
            QFont font = m_font;
            font.setStretch(percent);
            m_narrowGlyphs = QRawFont::fromFont(font, QFontDatabase::Japanese);
            m_narrowPercent = percent;
        }
        return m_narrowGlyphs;
    }

    /// From the top of a row to its baseline, when the letters stand in the middle of the given height.
    double BaselineIn(int height) const
    {
        return std::floor(m_ascent + (height - m_height) / 2);
    }

  private:
    QFont m_font;
    double m_scale;
    QRawFont m_glyphs;
    QRawFont m_narrowGlyphs;
    int m_narrowPercent = 0;
    double m_ascent;
    double m_height;
};

/// Paints in pixels of the device, so that boxes and letters are sharp at every scaling of the screen.
class PicText::Painter
{
  public:
    explicit Painter(PicText *area)
        : m_area(*area), m_text(*area->m_text), m_round(*area->m_round), m_layout(area->m_layout),
          m_font(area->FontAt(area->devicePixelRatioF())), m_scale(m_font.Scale()), m_painter(area)
    {
        m_painter.scale(1 / m_scale, 1 / m_scale);
        m_painter.setFont(m_font.Font());
        // Letters stand in the middle between the upper and the lower edge of a box.
        m_baseline = m_font.BaselineIn(Device(m_layout.linePitchPx - RowGapPx));
    }

    /// Paints a part of the text area from the background up, and nothing outside it.
    void Paint(const QRect &part)
    {
        // Whole pixels of the device, or at 125 % a line of half-covered ones would be cleared and not painted again.
        const QRect devicePart =
            QRectF(QPointF(part.topLeft()) * m_scale, QSizeF(part.size()) * m_scale).toAlignedRect();
        m_painter.setClipRect(devicePart);
        m_painter.fillRect(devicePart, Background);
        // A row that is cut off below still shows its upper part.
        const int rowsBelow = m_text.LineCount() - m_area.m_topLine + 1;
        const int firstRow = qMax(0, m_layout.RowOffsetAt(part.top())) + 1;
        const int lastRow = qMin(rowsBelow, m_layout.RowOffsetAt(part.bottom()) + 1);
        for (int row = firstRow; row <= lastRow; ++row) {
            if (part.right() >= m_layout.TextLeftPx())
                DrawText(row);
            if (m_layout.hasLineNumbers && part.left() < m_layout.NumberStripPx())
                DrawNumber(row);
        }
        if (m_layout.hasLineNumbers)
            m_painter.fillRect(Device(QRect(m_layout.NumberStripPx(), 0, 1, m_layout.heightPx)), StripEdge);
        DrawFrame();
    }

  private:
    int LineIn(int row) const
    {
        return m_area.m_topLine + row - 1;
    }

    void DrawText(int row)
    {
        const int line = LineIn(row);
        if (line == m_area.m_mark.line)
            DrawMark(row);
        if (line == m_area.m_spot.line)
            DrawSpot(row); // below the text: a letter beside it may reach into it
        DrawCells(m_text.MaskedLine(line), 0, row);
        for (const int blank : m_text.BlanksOnLine(line))
            DrawBox(blank, row);
    }

    int Device(int px) const
    {
        return int(std::lround(px * m_scale));
    }

    QRect Device(const QRect &rect) const
    {
        return QRect(QPoint(Device(rect.left()), Device(rect.top())),
                     QPoint(Device(rect.right() + 1) - 1, Device(rect.bottom() + 1) - 1));
    }

    void DrawMark(int row)
    {
        const Place &mark = m_area.m_mark;
        const QStringView line = m_text.Line(mark.line);
        int firstCell = CellsBefore(line, mark.column - 1);
        int endCell = CellsBefore(line, mark.column - 1 + mark.length);
        for (const int blank : m_text.BlanksOnLine(mark.line)) {
            const CellRange cells = m_text.Cells(blank);
            if (!m_round.bolOpen(blank) && cells.start < endCell && firstCell < cells.end) {
                firstCell = qMin(firstCell, cells.start);
                endCell = qMax(endCell, cells.end);
            }
        }
        m_painter.fillRect(Device(BoxOf(firstCell, endCell, row)), FoundBackground);
    }

    /// Just around its box, between this row's box and those of its neighbours.
    void DrawSpot(int row)
    {
        const Place &spot = m_area.m_spot;
        const QStringView line = m_text.Line(spot.line);
        const QRect box =
            BoxOf(CellsBefore(line, spot.column - 1), CellsBefore(line, spot.column - 1 + spot.length), row);
        DrawRing(Device(box.adjusted(-SpotFramePx, -SpotFramePx, SpotFramePx, SpotFramePx)),
                 qMax(1, Device(SpotFramePx)), SpotColour);
    }

    /// What the cells of a row from one up to, not including, another take.
    QRect BoxOf(int firstCell, int endCell, int row) const
    {
        return QRect(m_layout.TextLeftPx() + firstCell * m_layout.cellWidthPx, m_layout.RowTopPx(row),
                     (endCell - firstCell) * m_layout.cellWidthPx, m_layout.linePitchPx - RowGapPx);
    }

    static int CellsBefore(QStringView line, qsizetype index)
    {
        return CellsOf(line.first(qMin(index, line.size())));
    }

    void DrawBox(int blank, int row)
    {
        const BoxEdges box = GetBqInfoFromLine(m_text, blank, m_layout.cellWidthPx, m_layout.TextLeftPx());
        const bool isShown = m_round.bolOpen(blank);
        const int penWidth = qMax(1, Device(1));
        // The right edge stands where clicks ask for it: on the first pixel behind the last cell.
        const QRect outline = Device(
            QRect(box.leftPx, m_layout.RowTopPx(row), box.rightPx - box.leftPx + 1, m_layout.linePitchPx - RowGapPx));
        m_painter.setPen(QPen(isShown ? DarkGrey : TextColour, penWidth, Qt::SolidLine, Qt::SquareCap, Qt::MiterJoin));
        m_painter.setBrush(Qt::NoBrush);
        // A pen of w pixels reaches w / 2 to both sides of its path.
        const double half = penWidth / 2.0;
        m_painter.drawRect(QRectF(outline).adjusted(half, half, -half, -half));
        if (!isShown)
            return;
        const QStringView answer = m_text.Answer(blank);
        DrawCells(answer, m_text.Cells(blank).start + 1, row);
        // A shown answer of nothing must not differ from a hidden one by the colour of its box alone.
        if (answer.trimmed().isEmpty())
            m_painter.drawLine(outline.left() + outline.width() / 4, outline.center().y(),
                               outline.right() - outline.width() / 4, outline.center().y());
    }

    /// Draws a text from a cell of its row on, 0 the first, each character on its own cell.
    void DrawCells(QStringView text, int cell, int row)
    {
        const double baseline = Device(m_layout.RowTopPx(row)) + m_baseline;
        const QList<quint32> glyphs = m_font.Glyphs().glyphIndexesForString(text.toString());
        const bool isPlain = glyphs.size() == text.size();
        QList<quint32> drawn;
        QList<QPointF> positions;
        m_painter.setPen(TextColour);
        for (qsizetype i = 0; i < text.size(); ++i) {
            const QChar character = text[i];
            const int cells = CellsOf(character);
            const QPointF at(Device(m_layout.TextLeftPx() + cell * m_layout.cellWidthPx), baseline);
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

    /// Draws a character that the page's font lacks with the font that the system finds for it, narrowed to its cells.
    void DrawForeign(QChar character, const QPointF &at, int width)
    {
        const double advance = QFontMetricsF(m_painter.font()).horizontalAdvance(character);
        m_painter.save();
        m_painter.translate(at);
        if (advance > width)
            m_painter.scale(width / advance, 1);
        m_painter.drawText(QPointF(), QString(character));
        m_painter.restore();
    }

    void DrawNumber(int row)
    {
        const int line = LineIn(row);
        constexpr int widestFigures = 4; // the figures of longer numbers are narrowed
        const QRect strip = Device(QRect(0, m_layout.RowTopPx(row), m_layout.NumberStripPx() - m_layout.cellWidthPx / 2,
                                         m_layout.linePitchPx - RowGapPx));
        if (line == m_round.lngMarkLine())
            m_painter.fillRect(strip, MarkBackground);
        const QString number = QString::number(line);
        const bool isNarrow = number.size() > widestFigures;
        const int percent = isNarrow ? 100 * widestFigures / int(number.size()) : 100;
        const QRawFont &glyphs = isNarrow ? m_font.NarrowGlyphs(percent) : m_font.Glyphs();
        const double figureWidth = Device(m_layout.cellWidthPx) * percent / 100.0;
        QList<QPointF> positions;
        for (qsizetype left = number.size(); left > 0; --left)
            positions += QPointF(std::round(strip.right() + 1 - figureWidth * double(left)), strip.top() + m_baseline);
        m_painter.setPen(NumberColour);
        DrawGlyphs(glyphs, glyphs.glyphIndexesForString(number), positions);
    }

    /// The edge of the page, which shows whether keys go to it.
    void DrawFrame()
    {
        const bool isFocused = m_area.hasFocus();
        DrawRing(QRect(QPoint(0, 0), QSize(Device(m_area.width()), Device(m_area.height()))),
                 qMax(1, Device(isFocused ? FocusFramePx : 1)),
                 isFocused ? m_area.palette().color(QPalette::Highlight) : Frame);
    }

    /// Paints the outermost pixels within a rectangle.
    void DrawRing(const QRect &edge, int width, const QColor &colour)
    {
        for (int i = 0; i < width; ++i) {
            const QRect ring = edge.adjusted(i, i, -i, -i);
            m_painter.fillRect(QRect(ring.topLeft(), QSize(ring.width(), 1)), colour);
            m_painter.fillRect(QRect(ring.bottomLeft(), QSize(ring.width(), 1)), colour);
            m_painter.fillRect(QRect(ring.topLeft(), QSize(1, ring.height())), colour);
            m_painter.fillRect(QRect(ring.topRight(), QSize(1, ring.height())), colour);
        }
    }

    void DrawGlyphs(const QRawFont &font, const QList<quint32> &glyphs, const QList<QPointF> &positions)
    {
        QGlyphRun run;
        run.setRawFont(font);
        run.setGlyphIndexes(glyphs);
        run.setPositions(positions);
        m_painter.drawGlyphRun(QPointF(), run);
    }

    const PicText &m_area;
    const DisplayText &m_text;
    const StudyRound &m_round;
    const PageLayout &m_layout;
    DeviceFont &m_font;
    double m_scale;
    QPainter m_painter;
    double m_baseline; // from the top of a row
};

PicText::PicText(QWidget *parent) : QWidget(parent), m_font(PageFont())
{
    setFocusPolicy(Qt::StrongFocus);
    setMouseTracking(true);
    setAcceptDrops(true);
    setAttribute(Qt::WA_OpaquePaintEvent);
    setAttribute(Qt::WA_InputMethodEnabled, false); // an input method would keep Enter to itself
    PageAccessible::Install();                      // before anything is told of this widget
    setAccessibleName(QStringLiteral("本文"));
}

PicText::~PicText() = default;

PicText::DeviceFont &PicText::FontAt(double scale)
{
    if (!m_deviceFont || m_deviceFont->Scale() != scale)
        m_deviceFont = std::make_unique<DeviceFont>(m_font, scale);
    return *m_deviceFont;
}

void PicText::SetStudy(const DisplayText *text, const StudyRound *round)
{
    m_text = text;
    m_round = round;
    DrawPage();
}

void PicText::SetAppearance(float points, int lineSpacePx, bool hasLineNumbers)
{
    m_font.setPixelSize(int(std::lround(double(points) * logicalDpiY() / 72)));
    m_deviceFont.reset();
    const QFontMetricsF metrics(m_font);
    const double halfWidth = qMax(metrics.horizontalAdvance(u'あ') / 2, metrics.horizontalAdvance(u'W'));
    m_layout.cellWidthPx = qMax(1, int(std::ceil(halfWidth)));
    m_layout.linePitchPx = int(std::ceil(metrics.height())) + lineSpacePx;
    m_layout.hasLineNumbers = hasLineNumbers;
    m_layout.heightPx = height();
    updateGeometry(); // the size that a long line asks for
    update();
    Q_EMIT RowsChanged();
}

void PicText::SetTopLine(int topLine)
{
    m_topLine = topLine;
    DrawPage();
    UpdatePointer(mapFromGlobal(QCursor::pos()));
}

void PicText::SetMark(const Place &place)
{
    m_mark = place;
    update();
}

void PicText::SetSpot(const Place &spot)
{
    if (spot == m_spot)
        return;
    m_spot = spot;
    update();
    if (QAccessible::isActive())
        TellChange(new QAccessibleTextCursorEvent(this, SpokenCursor()));
}

int PicText::SpokenCursor() const
{
    return m_spot.line > 0 ? SpokenOffset(*m_text, *m_round, m_topLine, m_spot.line, m_spot.column - 1) : 0;
}

void PicText::DrawPage()
{
    update();
    TellChange(new QAccessibleEvent(this, QAccessible::VisibleDataChanged));
}

void PicText::DrawBlank(int blank)
{
    const BoxEdges box = GetBqInfoFromLine(*m_text, blank, m_layout.cellWidthPx, m_layout.TextLeftPx());
    const int row = m_text->Blanks().LineOf(blank) - m_topLine + 1;
    const QRect area(box.leftPx, m_layout.RowTopPx(row), box.rightPx - box.leftPx + 1, m_layout.linePitchPx);
    update(area.adjusted(-1, -1, 1, 1)); // at 125 % an edge may lie on a pixel that is only partly within the area
    if (!QAccessible::isActive())
        return; // nobody listens
    const QString hidden = HiddenAnswerText.toString();
    const QString answer = m_text->Answer(blank).toString();
    const bool isShown = m_round->bolOpen(blank);
    const int offset = SpokenOffset(*m_text, *m_round, m_topLine, m_text->Blanks().LineOf(blank),
                                    m_text->Blanks().StartColumnOf(blank));
    TellChange(new QAccessibleTextUpdateEvent(this, offset, isShown ? hidden : answer, isShown ? answer : hidden));
}

void PicText::TellChange(QAccessibleEvent *event)
{
    if (QAccessible::isActive())
        QAccessible::updateAccessibility(event);
    delete event;
}

QString PicText::SpokenText() const
{
    return m_text ? SpokenPage(*m_text, *m_round, PageAt(m_topLine, m_text->LineCount(), m_layout)) : QString();
}

void PicText::DrawLineNumbers()
{
    update(0, 0, m_layout.NumberStripPx() + 1, height());
}

QSize PicText::sizeHint() const
{
    // A line of the greatest length, and a page that fits on a small screen.
    constexpr int columns = 100;
    constexpr int rows = 30;
    return QSize(m_layout.TextLeftPx() + (columns + 2) * m_layout.cellWidthPx, m_layout.RowTopPx(rows + 1));
}

void PicText::keyPressEvent(QKeyEvent *event)
{
    if (m_heldKeys.IsFresh(*event)) // a key that is held is one answer
        Q_EMIT KeyDown(event->key());
}

void PicText::mousePressEvent(QMouseEvent *event)
{
    Q_EMIT MouseDown(event->button(), event->position().toPoint().x(), event->position().toPoint().y());
}

// The second press of two quick clicks is a click like any other.
void PicText::mouseDoubleClickEvent(QMouseEvent *event)
{
    mousePressEvent(event);
}

void PicText::mouseMoveEvent(QMouseEvent *event)
{
    UpdatePointer(event->position().toPoint());
    Q_EMIT MouseMove();
}

void PicText::dragEnterEvent(QDragEnterEvent *event)
{
    event->acceptProposedAction();
}

void PicText::dropEvent(QDropEvent *)
{
    Q_EMIT OLEDragDrop();
}

// A touchpad turns the wheel by small fractions of a notch; they add up until they make a line. Ctrl with the wheel
// belongs to nobody here and is passed on.
void PicText::wheelEvent(QWheelEvent *event)
{
    if (event->modifiers().testFlag(Qt::ControlModifier)) {
        event->ignore();
        return;
    }
    constexpr int anglePerLine = WheelNotch / LinesPerNotch;
    m_wheelAngle += event->angleDelta().y();
    const int lines = m_wheelAngle / anglePerLine;
    m_wheelAngle -= lines * anglePerLine;
    if (lines != 0)
        Q_EMIT WheelTurned(-lines);
    event->accept();
}

void PicText::resizeEvent(QResizeEvent *)
{
    m_layout.heightPx = height();
    Q_EMIT RowsChanged();
}

void PicText::focusInEvent(QFocusEvent *)
{
    update();
}

void PicText::focusOutEvent(QFocusEvent *)
{
    update();
}

void PicText::paintEvent(QPaintEvent *event)
{
    if (!m_text) {
        QPainter(this).fillRect(event->rect(), Background);
        return;
    }
    // Part by part: a blank at one end of a page and the numbers at the other are little to paint.
    Painter painter(this);
    for (const QRect &part : event->region())
        // Neighbours share pixels with the part at its edges where the screen's scaling is no whole number.
        painter.Paint(part.adjusted(-1, -1, 1, 1));
}

void PicText::UpdatePointer(const QPoint &at)
{
    const ClickTarget target =
        m_text ? TargetAt(*m_text, *m_round, at.x(), at.y(), m_topLine, m_layout) : ClickTarget();
    const bool isLink = target.blank > 0 || !target.picture.isEmpty();
    setCursor(isLink ? Qt::PointingHandCursor : Qt::ArrowCursor);
}
