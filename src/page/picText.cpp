// SPDX-FileCopyrightText: 2026 The Kotoban developers
// SPDX-License-Identifier: MIT

#include "page/picText.h"

#include "page/PageAccessible.h"
#include "page/PagePainter.h"
#include "platform/modDarkMode.h"
#include "study/modPageText.h"
#include "text/modTextDifference.h"
#include "widgets/PageColourChoice.h"
#include "widgets/PageFont.h"
#include "widgets/PageFontAtScale.h"

#include <QDragEnterEvent>
#include <QFontMetricsF>
#include <QGuiApplication>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QPaintEvent>
#include <QPainter>

#include <cmath>

namespace {

constexpr int LinesPerNotch = 3;
constexpr int CellsPerNotch = 8;

} // namespace

PicText::PicText(const StudyPage &page, QWidget *parent) : QWidget(parent), m_page(page), m_font(PageFont())
{
    setFocusPolicy(Qt::StrongFocus);
    setMouseTracking(true);
    setAcceptDrops(true);
    setAttribute(Qt::WA_OpaquePaintEvent);
    setAttribute(Qt::WA_InputMethodEnabled, false); // an input method would consume Enter
    PageAccessible::Install();                      // before anything about this widget is reported
    setAccessibleName(QStringLiteral("本文"));
    // Not every desktop reports a switch between light and dark, but to switch, the user leaves the program.
    connect(qGuiApp, &QGuiApplication::applicationStateChanged, this, &PicText::FollowDesktop);
    QAccessible::installActivationObserver(this);
}

PicText::~PicText()
{
    QAccessible::removeActivationObserver(this);
}

/// Assistive technology begins to listen: what is there now it asks for itself, and later changes are reported.
void PicText::accessibilityActiveChanged(bool isActive)
{
    m_toldText = isActive ? SpokenPage(m_page) : QString();
    m_toldCaret = isActive ? SpokenCursor(m_page) : 0;
}

PageFontAtScale &PicText::FontAt(double scale)
{
    if (!m_deviceFont || m_deviceFont->Scale() != scale)
        m_deviceFont = std::make_unique<PageFontAtScale>(m_font, scale);
    return *m_deviceFont;
}

void PicText::SetAppearance(float points, int lineSpacePx, bool hasLineNumbers, bool isWrapping, int zoomPercent)
{
    m_font.setPixelSize(int(std::lround(double(points) * logicalDpiY() / 72 * zoomPercent / 100)));
    m_deviceFont.reset();
    m_lineSpacePx = lineSpacePx * zoomPercent / 100;
    m_hasLineNumbers = hasLineNumbers;
    m_isWrapping = isWrapping;
    m_zoomPercent = zoomPercent;
    update();
}

PageLayout PicText::Measured() const
{
    const QFontMetricsF metrics(m_font);
    const double halfWidth = qMax(metrics.horizontalAdvance(u'あ') / 2, metrics.horizontalAdvance(u'W'));
    return {.cellWidthPx = qMax(1, int(std::ceil(halfWidth))),
            .linePitchPx = int(std::ceil(metrics.height())) + m_lineSpacePx,
            .widthPx = width(),
            .heightPx = height(),
            .hasLineNumbers = m_hasLineNumbers,
            .isWrapping = m_isWrapping};
}

void PicText::SetPageColour(PageColourChoice choice)
{
    m_pageColour = choice;
    if (choice != PageColourChoice::Desktop) {
        m_darkMode.reset();
    } else if (!m_darkMode) {
        m_darkMode = std::make_unique<DarkMode>();
        connect(m_darkMode.get(), &DarkMode::Changed, this, &PicText::FollowDesktop);
    }
    FollowDesktop();
}

void PicText::FollowDesktop()
{
    const PageColours colours = ColoursOf(m_pageColour, QGuiApplication::palette(), m_darkMode && m_darkMode->IsDark());
    if (colours == m_colours)
        return;
    m_colours = colours;
    update();
    Q_EMIT ColoursChanged();
}

void PicText::Show(const PageChange &change)
{
    if (change.isPageChanged || change.isTargetMoved || change.isHitMoved)
        update();
    const bool isMarkInView =
        change.markedBlank > 0 && m_page.InView().Shows(m_page.Text().Blanks().LineOf(change.markedBlank));
    if (QAccessible::isActive())
        TellText(change.isPageChanged || isMarkInView);
    if (change.isPageChanged)
        UpdatePointer(mapFromGlobal(QCursor::pos()));
    if (isMarkInView)
        UpdateBlank(change.markedBlank);
    for (const int blank : change.hints)
        UpdateBlank(blank);
    for (const int blank : change.answers)
        UpdateBlank(blank);
    if (change.isLineMarked)
        update(AreaOfLineNumbers(Layout()));
    if (const QRect next = AreaOfNext(); next != m_paintedNext) {
        update(m_paintedNext);
        update(next);
    }
}

/// Repaints a blank including its background, so that nothing remains of a hidden answer.
void PicText::UpdateBlank(int blank)
{
    update(AreaOfBlank(m_page.Text(), blank, m_page.InView(), Layout()));
}

/// Reports to assistive technology how the text in view differs from what was reported last, and where the caret is.
/// @param isLookChanged  whether more has changed than that
void PicText::TellText(bool isLookChanged)
{
    const auto tell = [](QAccessibleEvent &&event) { QAccessible::updateAccessibility(&event); };
    const QString text = SpokenPage(m_page);
    const QString told = std::exchange(m_toldText, text);
    const int caret = SpokenCursor(m_page);
    const int toldCaret = std::exchange(m_toldCaret, caret);
    const TextDifference difference = DifferenceOf(told, text);
    if (text != told)
        tell(QAccessibleTextUpdateEvent(this, int(difference.offset), difference.before, difference.after));
    if (isLookChanged)
        tell(QAccessibleEvent(this, QAccessible::VisibleDataChanged));
    if (text != told || caret != toldCaret)
        tell(QAccessibleTextCursorEvent(this, caret)); // last, because it makes a screen reader read what is there
}

QSize PicText::sizeHint() const
{
    // Room for a line of maximum length, and few enough rows for a small screen.
    constexpr int columns = 100;
    constexpr int rows = 30;
    const PageLayout layout = Measured();
    return QSize(layout.TextLeftPx() + (columns + 2) * layout.cellWidthPx, layout.RowTopPx(rows + 1));
}

void PicText::keyPressEvent(QKeyEvent *event)
{
    if (!event->isAutoRepeat()) // a held key reveals only one answer
        Q_EMIT KeyDown(event->key(), event->modifiers() == Qt::ShiftModifier);
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
    Q_EMIT LayoutChanged();
}

/// The blank that Enter opens next, if the page tells it apart; it is also the mark of the focus.
int PicText::MarkedNext() const
{
    return hasFocus() && m_colours.drawing.isSoft ? m_page.NextBlank() : 0;
}

QRect PicText::AreaOfNext() const
{
    const int next = MarkedNext();
    return next > 0 ? AreaOfBlank(m_page.Text(), next, m_page.InView(), Layout()) : QRect();
}

void PicText::focusInEvent(QFocusEvent *event)
{
    const Qt::FocusReason reason = event->reason();
    if (reason != Qt::ActiveWindowFocusReason && reason != Qt::PopupFocusReason) // these return to where the focus was
        m_isTabbedTo = reason == Qt::TabFocusReason || reason == Qt::BacktabFocusReason;
    update();
}

void PicText::focusOutEvent(QFocusEvent *)
{
    Q_EMIT FocusLost();
    update();
}

void PicText::paintEvent(QPaintEvent *event)
{
    QPainter painter(this);
    if (!m_page.IsFileOpen()) {
        painter.fillRect(event->rect(), m_colours.background);
        painter.setPen(m_colours.text);
        painter.drawText(rect(), int(Qt::AlignCenter) | int(Qt::TextWordWrap), SpokenPage(m_page));
        return;
    }
    m_paintedNext = AreaOfNext();
    const PageToPaint page{.text = m_page.Text(),
                           .round = m_page.Round(),
                           .colours = m_colours,
                           .layout = Layout(),
                           .view = m_page.InView(),
                           .found = m_page.Found(),
                           .current = m_page.Current(),
                           .hintedBlank = m_page.HintedBlank(),
                           .hintLength = m_page.HintLength(),
                           .nextBlank = MarkedNext(),
                           .zoomPercent = m_zoomPercent,
                           .hasFocusRing = hasFocus() && (m_isTabbedTo || !m_colours.drawing.isSoft)};
    PagePainter pagePainter(&painter, page, &FontAt(devicePixelRatioF()));
    // Painting the parts separately is cheaper than their bounding rectangle, for example a blank and the line numbers.
    for (const QRect &part : event->region())
        pagePainter.Paint(part);
}

void PicText::UpdatePointer(const QPoint &at)
{
    const ClickTarget target = m_page.TargetAt(at.x(), at.y());
    const bool isLink = target.blank > 0 || !target.picture.isEmpty();
    setCursor(isLink ? Qt::PointingHandCursor : Qt::ArrowCursor);
}
