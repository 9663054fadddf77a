// SPDX-FileCopyrightText: 2026 The Kotoban developers
// SPDX-License-Identifier: MIT

#include "history/DayChart.h"

#include "widgets/Contrast.h"
#include "widgets/Measures.h"
#include "widgets/NamedControls.h"
#include "widgets/PageColours.h"

#include <QHelpEvent>
#include <QKeyEvent>
#include <QPainter>
#include <QToolTip>

namespace {

constexpr ChartColours LightChart = {
    .today = QColor(26, 95, 180),
    .other = QColor(120, 147, 188),
    .steps = {QColor(237, 240, 243), QColor(101, 138, 192), QColor(68, 114, 178), QColor(36, 84, 147),
              QColor(15, 53, 102)},
};

constexpr ChartColours DarkChart = {
    .today = QColor(124, 186, 255),
    .other = QColor(88, 125, 168),
    .steps = {QColor(42, 46, 51), QColor(93, 134, 181), QColor(127, 169, 218), QColor(169, 204, 245),
              QColor(220, 235, 253)},
};

} // namespace

ChartColours ChartColoursOn(const QPalette &desktop)
{
    const QColor base = desktop.color(QPalette::Base);
    const QColor text = desktop.color(QPalette::Text);
    ChartColours colours = IsDarker(base, text) ? DarkChart : LightChart;
    for (QColor *const colour : {&colours.today, &colours.other})
        *colour = WithContrast(*colour, base, text, ShapeContrast);
    for (size_t step = 1; step < colours.steps.size(); ++step)
        colours.steps[step] = WithContrast(colours.steps[step], colours.steps[0], text, ShapeContrast);
    return colours;
}

DayChart::DayChart(const QString &name, const QString &caption, QWidget *parent) : QWidget(parent), m_caption(caption)
{
    setObjectName(name);
    setAccessibleName(caption);
    setFocusPolicy(Qt::StrongFocus);
}

void DayChart::ShowRead(const QDate &today, const QString &sentence)
{
    m_today = today;
    m_sentence = sentence;
    setAccessibleDescription(sentence);
    if (m_chosen.IsEmpty())
        update();
    else
        Choose(HasDays(m_chosen) ? m_chosen : DaySpan()); // its text may have changed
}

void DayChart::ForgetChoice()
{
    Choose(DaySpan());
}

QString DayChart::Sentence() const
{
    return m_chosen.IsEmpty() ? m_sentence : TextOf(m_chosen);
}

QSize DayChart::sizeHint() const
{
    return QSize(Ems(fontMetrics(), 30), Ems(fontMetrics(), 13));
}

QSize DayChart::minimumSizeHint() const
{
    constexpr int leastCalendarPx = 66; // its rows of squares, which do not shrink with the font
    return QSize(Ems(fontMetrics(), 20), qMax(Ems(fontMetrics(), 7), Ems(fontMetrics(), 2) + leastCalendarPx));
}

bool DayChart::event(QEvent *event)
{
    if (event->type() != QEvent::ToolTip)
        return QWidget::event(event);
    const auto *const help = static_cast<QHelpEvent *>(event);
    const DaySpan days = DaysAt(QPointF(help->pos()));
    QToolTip::showText(help->globalPos(), days.IsEmpty() ? QString() : PlainToolTip(TextOf(days)), this);
    return true;
}

void DayChart::focusInEvent(QFocusEvent *event)
{
    QWidget::focusInEvent(event);
    update();
}

void DayChart::keyPressEvent(QKeyEvent *event)
{
    const bool isEnter = event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter;
    if (isEnter && !m_chosen.IsEmpty())
        Q_EMIT ListAsked(m_chosen);
    else if (const DaySpan days = DaysAfterKey(event->key()); !days.IsEmpty())
        Choose(days);
    else if (!isEnter) // which must not open a file
        QWidget::keyPressEvent(event);
}

void DayChart::mousePressEvent(QMouseEvent *event)
{
    const DaySpan days = DaysAt(event->position());
    if (days.IsEmpty() || event->button() != Qt::LeftButton)
        return;
    const bool isChosen = days.first == m_chosen.first && days.last == m_chosen.last;
    Choose(isChosen ? DaySpan() : days);
    if (!isChosen)
        Q_EMIT ListAsked(days);
}

void DayChart::Choose(const DaySpan &days)
{
    m_chosen = days;
    setAccessibleName(days.IsEmpty() ? m_caption : QString(m_caption + u' ' + TextOf(days)));
    update();
    Q_EMIT ChoiceChanged();
}

void DayChart::PaintFocus(QPainter *painter) const
{
    if (!hasFocus())
        return;
    constexpr double inset = FocusRingWidth / 2.0;
    painter->save();
    painter->resetTransform();
    painter->setPen(QPen(ColoursOn(palette()).accent, FocusRingWidth));
    painter->setBrush(Qt::NoBrush);
    painter->drawRect(QRectF(rect()).adjusted(inset, inset, -inset, -inset));
    painter->restore();
}

void DayChart::PaintChoice(QPainter *painter, const QRectF &place) const
{
    painter->save();
    painter->setPen(QPen(ColoursOn(palette()).accent, FocusRingWidth));
    painter->setBrush(Qt::NoBrush);
    const double reach = FocusRingGap + FocusRingWidth / 2.0;
    painter->drawRect(place.adjusted(-reach, -reach, reach, reach));
    painter->restore();
}

void DayChart::PaintNote(QPainter *painter, const QString &note) const
{
    painter->setPen(DimText());
    painter->drawText(rect(), Qt::AlignCenter, note);
}

QColor DayChart::DimText() const
{
    return Dimmed(palette().color(QPalette::Text), palette().color(QPalette::Base));
}
