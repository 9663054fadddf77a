// SPDX-FileCopyrightText: 2026 The Kotoban developers
// SPDX-License-Identifier: MIT

#include "page/picText.h"

#include "page/PageAccessible.h"
#include "page/PagePainter.h"
#include "study/modClickTarget.h"
#include "study/modPageText.h"
#include "widgets/PageFont.h"
#include "widgets/PageFontAtScale.h"

#include <QAccessible>
#include <QDragEnterEvent>
#include <QFontMetricsF>
#include <QGuiApplication>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QPaintEvent>
#include <QPainter>

#include <cmath>
#include <utility>

namespace {

constexpr int LinesPerNotch = 3;
constexpr int CellsPerNotch = 8;

const QString HowToBegin = QStringLiteral("「ファイル選択」(Alt+O) で学習ファイルを選んでください");

} // namespace

PicText::PicText(QWidget *parent) : QWidget(parent), m_font(PageFont())
{
    setFocusPolicy(Qt::StrongFocus);
    setMouseTracking(true);
    setAcceptDrops(true);
    setAttribute(Qt::WA_OpaquePaintEvent);
    setAttribute(Qt::WA_InputMethodEnabled, false); // an input method would consume Enter
    PageAccessible::Install();                      // before anything about this widget is reported
    setAccessibleName(QStringLiteral("本文"));
    // Not every desktop reports a switch between light and dark, but to switch, the user leaves the program.
    connect(qGuiApp, &QGuiApplication::applicationStateChanged, this, &PicText::UpdateColours);
}

PicText::~PicText() = default;

PageFontAtScale &PicText::FontAt(double scale)
{
    if (!m_deviceFont || m_deviceFont->Scale() != scale)
        m_deviceFont = std::make_unique<PageFontAtScale>(m_font, scale);
    return *m_deviceFont;
}

void PicText::SetStudy(const DisplayText *text, const StudyRound *round)
{
    m_text = text;
    m_round = round;
    m_found = TextSpan();
    m_current = TextSpan();
    m_hintedBlank = 0;
    DrawPage();
}

void PicText::SetAppearance(float points, int lineSpacePx, bool hasLineNumbers, int zoomPercent)
{
    m_font.setPixelSize(int(std::lround(double(points) * logicalDpiY() / 72 * zoomPercent / 100)));
    m_deviceFont.reset();
    const QFontMetricsF metrics(m_font);
    const double halfWidth = qMax(metrics.horizontalAdvance(u'あ') / 2, metrics.horizontalAdvance(u'W'));
    m_layout.cellWidthPx = qMax(1, int(std::ceil(halfWidth)));
    m_layout.linePitchPx = int(std::ceil(metrics.height())) + lineSpacePx * zoomPercent / 100;
    m_layout.hasLineNumbers = hasLineNumbers;
    update();
}

void PicText::SetPageColour(PageColourChoice choice)
{
    m_pageColour = choice;
    UpdateColours();
}

void PicText::UpdateColours()
{
    const PageColours *const colours = &ColoursOf(m_pageColour, palette());
    if (colours == m_colours)
        return;
    m_colours = colours;
    update();
    Q_EMIT ColoursChanged();
}

void PicText::changeEvent(QEvent *event)
{
    QWidget::changeEvent(event);
    if (event->type() == QEvent::PaletteChange)
        UpdateColours();
}

void PicText::SetTopLine(int topLine)
{
    m_topLine = topLine;
    DrawPage();
    UpdatePointer(mapFromGlobal(QCursor::pos()));
}

void PicText::SetLeftCell(int leftCell)
{
    m_layout.leftCell = leftCell;
    DrawPage();
    UpdatePointer(mapFromGlobal(QCursor::pos()));
}

void PicText::SetFound(const TextSpan &found)
{
    m_found = found;
    update();
}

void PicText::SetCurrent(const TextSpan &current)
{
    if (current == m_current)
        return;
    m_current = current;
    update();
    if (QAccessible::isActive())
        TellChange(QAccessibleTextCursorEvent(this, SpokenCursor()));
}

void PicText::SetHint(int blank)
{
    if (blank == m_hintedBlank)
        return;
    for (const int changed : {std::exchange(m_hintedBlank, blank), blank})
        if (changed > 0)
            update(AreaOfBlank(*m_text, changed, m_topLine, m_layout));
}

void PicText::DrawHard(int blank)
{
    update(AreaOfBlank(*m_text, blank, m_topLine, m_layout));
    TellChange(QAccessibleEvent(this, QAccessible::VisibleDataChanged));
}

int PicText::SpokenCursor() const
{
    return m_current.line > 0 ? SpokenOffset(*m_text, *m_round, m_topLine, m_current.line, m_current.Index()) : 0;
}

void PicText::DrawPage()
{
    update();
    TellChange(QAccessibleEvent(this, QAccessible::VisibleDataChanged));
}

void PicText::DrawBlank(int blank)
{
    update(AreaOfBlank(*m_text, blank, m_topLine, m_layout));
    if (!QAccessible::isActive())
        return; // no assistive technology is listening
    const QString hidden = HiddenAnswerText(*m_round, blank).toString();
    const QString answer = m_text->Answer(blank).toString();
    const bool isShown = m_round->bolOpen(blank);
    const int offset = SpokenOffset(*m_text, *m_round, m_topLine, m_text->Blanks().LineOf(blank),
                                    m_text->Blanks().StartColumnOf(blank));
    TellChange(QAccessibleTextUpdateEvent(this, offset, isShown ? hidden : answer, isShown ? answer : hidden));
}

void PicText::TellChange(QAccessibleEvent &&event)
{
    if (QAccessible::isActive())
        QAccessible::updateAccessibility(&event);
}

PageInView PicText::Page() const
{
    return PageAt(m_topLine, m_text->LineCount(), m_layout);
}

QString PicText::SpokenText() const
{
    return m_text ? SpokenPage(*m_text, *m_round, Page()) : HowToBegin;
}

QRect PicText::SpokenRect(int offset) const
{
    return m_text ? AreaSpokenAt(*m_text, *m_round, Page(), m_layout, offset) : QRect();
}

int PicText::SpokenOffsetAt(const QPoint &at) const
{
    return m_text ? OffsetSpokenAt(*m_text, *m_round, Page(), m_layout, at.x(), at.y()) : -1;
}

void PicText::DrawLineNumbers()
{
    update(AreaOfLineNumbers(m_layout));
}

QSize PicText::sizeHint() const
{
    // Room for a line of maximum length, and few enough rows for a small screen.
    constexpr int columns = 100;
    constexpr int rows = 30;
    return QSize(m_layout.TextLeftPx() + (columns + 2) * m_layout.cellWidthPx, m_layout.RowTopPx(rows + 1));
}

void PicText::keyPressEvent(QKeyEvent *event)
{
    if (m_heldKeys.IsFresh(*event)) // a held key reveals only one answer
        Q_EMIT KeyDown(event->key());
}

void PicText::mousePressEvent(QMouseEvent *event)
{
    Q_EMIT MouseDown(event->button(), event->position().toPoint().x(), event->position().toPoint().y());
}

// The second press of a double click counts as an ordinary click.
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

void PicText::wheelEvent(QWheelEvent *event)
{
    QPoint angle = event->angleDelta();
    if (event->modifiers().testFlag(Qt::ShiftModifier))
        angle = QPoint(angle.x() + angle.y(), 0);
    if (event->modifiers().testFlag(Qt::ControlModifier)) {
        if (const int steps = m_zoomSteps.Take(angle.y(), 1); steps != 0)
            Q_EMIT ZoomTurned(steps);
    } else {
        if (const int lines = m_lineSteps.Take(angle.y(), LinesPerNotch); lines != 0)
            Q_EMIT WheelTurned(-lines);
        if (const int cells = m_cellSteps.Take(angle.x(), CellsPerNotch); cells != 0)
            Q_EMIT WheelTurnedSideways(-cells);
    }
    event->accept();
}

void PicText::resizeEvent(QResizeEvent *)
{
    m_layout.widthPx = width();
    m_layout.heightPx = height();
    Q_EMIT RowsChanged();
}

void PicText::focusInEvent(QFocusEvent *)
{
    update();
}

void PicText::focusOutEvent(QFocusEvent *)
{
    SetHint(0); // the next key goes elsewhere
    update();
}

void PicText::paintEvent(QPaintEvent *event)
{
    QPainter painter(this);
    if (!m_text) {
        painter.fillRect(event->rect(), m_colours->background);
        painter.setPen(m_colours->text);
        painter.drawText(rect(), int(Qt::AlignCenter) | int(Qt::TextWordWrap), HowToBegin);
        return;
    }
    const PageToPaint page{.text = *m_text,
                           .round = *m_round,
                           .colours = *m_colours,
                           .layout = m_layout,
                           .topLine = m_topLine,
                           .found = m_found,
                           .current = m_current,
                           .hintedBlank = m_hintedBlank,
                           .hasFocus = hasFocus()};
    PagePainter pagePainter(&painter, page, &FontAt(devicePixelRatioF()));
    // Painting the parts separately is cheaper than their bounding rectangle, for example a blank and the line numbers.
    for (const QRect &part : event->region())
        pagePainter.Paint(part);
}

void PicText::UpdatePointer(const QPoint &at)
{
    const ClickTarget target =
        m_text ? TargetAt(*m_text, *m_round, at.x(), at.y(), m_topLine, m_layout) : ClickTarget();
    const bool isLink = target.blank > 0 || !target.picture.isEmpty();
    setCursor(isLink ? Qt::PointingHandCursor : Qt::ArrowCursor);
}
