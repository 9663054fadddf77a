// SPDX-FileCopyrightText: 2026 The Kotoban developers
// SPDX-License-Identifier: MIT

#include "history/HistoryChart.h"

#include "base/modDateText.h"
#include "widgets/Contrast.h"

#include <QPainter>

#include <algorithm>

using namespace Qt::Literals::StringLiterals;

namespace {

const QColor BarColour(120, 160, 210);
const QColor LineColour(200, 90, 40);
const QColor AxisColour(150, 150, 150);

/// Largest value of the bars, but at least `minimum`, so that it can be a divisor.
qint64 Highest(const std::vector<HistoryBar> &bars, qint64 HistoryBar::*value, qint64 minimum)
{
    qint64 highest = minimum;
    for (const HistoryBar &bar : bars)
        highest = std::max(highest, bar.*value);
    return highest;
}

} // namespace

HistoryChart::HistoryChart(const HistoryReader &reader, QWidget *parent)
    : QWidget(parent), m_reader(reader), m_history(reader.Result())
{
    setObjectName(u"picHistory"_s);
    setAccessibleName(u"学習時間と回答数のグラフ"_s);
}

void HistoryChart::ShowRead()
{
    setAccessibleDescription(Note());
    update();
}

/// What stands in the place of a chart that cannot be drawn; otherwise empty.
QString HistoryChart::Note() const
{
    if (m_reader.HasFailed())
        return u"読めませんでした"_s;
    return m_history.Days().empty() ? u"この期間の記録はありません"_s : QString();
}

QSize HistoryChart::sizeHint() const
{
    return QSize(fontMetrics().averageCharWidth() * 50, fontMetrics().lineSpacing() * 8);
}

QSize HistoryChart::minimumSizeHint() const
{
    return QSize(sizeHint().width(), fontMetrics().lineSpacing() * 6);
}

void HistoryChart::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    painter.fillRect(rect(), palette().base());
    const int margin = fontMetrics().averageCharWidth();
    const int textHeight = fontMetrics().lineSpacing() + margin / 2;
    const QRect plot = rect().adjusted(margin, textHeight, -margin, -textHeight);
    if (m_history.Weeks() == 0 || plot.width() < 1 || plot.height() < 1)
        return;
    PaintSpan(&painter);
    if (const QString note = Note(); !note.isEmpty()) {
        painter.drawText(plot, Qt::AlignCenter, note);
        return;
    }
    const std::vector<HistoryBar> bars = HistoryBars(m_history, plot.width());
    const qint64 mostSeconds = Highest(bars, &HistoryBar::seconds, 60);
    const qint64 mostAnswers = Highest(bars, &HistoryBar::answers, 1);
    PaintBars(&painter, plot, bars, mostSeconds);
    PaintLine(&painter, plot, bars, mostAnswers);
    PaintLegend(&painter, mostSeconds, mostAnswers);
}

/// Area whose top and bottom edges hold the texts.
QRect HistoryChart::TextRect() const
{
    const int margin = fontMetrics().averageCharWidth();
    return rect().adjusted(margin, 0, -margin, 0);
}

/// Adjusts a colour from outside the palette so that it is visible on the palette's background.
QColor HistoryChart::Visible(const QColor &colour) const
{
    return WithContrast(colour, palette().color(QPalette::Base), palette().color(QPalette::Text), ShapeContrast);
}

void HistoryChart::PaintSpan(QPainter *painter) const
{
    painter->setPen(palette().color(QPalette::Text));
    painter->drawText(TextRect(), Qt::AlignLeft | Qt::AlignBottom, DateText(m_history.StartDate()));
    painter->drawText(TextRect(), Qt::AlignRight | Qt::AlignBottom, DateText(m_history.EndDate()));
}

void HistoryChart::PaintBars(QPainter *painter, const QRect &plot, const std::vector<HistoryBar> &bars,
                             qint64 mostSeconds) const
{
    const double step = double(plot.width()) / double(bars.size());
    const QColor barColour = Visible(BarColour);
    double left = plot.left();
    for (const HistoryBar &bar : bars) {
        const double height = plot.height() * double(bar.seconds) / double(mostSeconds);
        painter->fillRect(QRectF(left, plot.bottom() - height, qMax(1.0, step * 0.8), height), barColour);
        left += step;
    }
    painter->setPen(Visible(AxisColour));
    painter->drawLine(plot.bottomLeft(), plot.bottomRight());
}

void HistoryChart::PaintLine(QPainter *painter, const QRect &plot, const std::vector<HistoryBar> &bars,
                             qint64 mostAnswers) const
{
    const double step = double(plot.width()) / double(bars.size());
    QPolygonF points;
    double x = plot.left() + step * 0.4; // the middle of the first bar
    for (const HistoryBar &bar : bars) {
        points += QPointF(x, plot.bottom() - plot.height() * double(bar.answers) / double(mostAnswers));
        x += step;
    }
    painter->setRenderHint(QPainter::Antialiasing);
    const double width = fontMetrics().lineWidth() * 1.5;
    painter->setPen(QPen(palette().base(), width * 3)); // sets the line off from the bars
    painter->drawPolyline(points);
    painter->setPen(QPen(Visible(LineColour), width));
    painter->drawPolyline(points);
}

/// Only the symbols are coloured: text in these colours would be hard to read on some backgrounds.
void HistoryChart::PaintLegend(QPainter *painter, qint64 mostSeconds, qint64 mostAnswers) const
{
    const QRect legend = TextRect();
    const QString bar = u"■"_s;
    const QString answersText = u" 回答数（最大"_s + QString::number(mostAnswers) + u"問）"_s;
    const QString dash = u"―"_s;
    const int barWidth = fontMetrics().horizontalAdvance(bar);
    const int answersWidth = fontMetrics().horizontalAdvance(answersText);
    painter->setPen(Visible(BarColour));
    painter->drawText(legend, Qt::AlignLeft | Qt::AlignTop, bar);
    painter->setPen(Visible(LineColour));
    painter->drawText(legend.adjusted(0, 0, -answersWidth, 0), Qt::AlignRight | Qt::AlignTop, dash);
    painter->setPen(palette().color(QPalette::Text));
    painter->drawText(legend.adjusted(barWidth, 0, 0, 0), Qt::AlignLeft | Qt::AlignTop,
                      u" 学習時間（最大"_s + QString::number(qRound64(double(mostSeconds) / 60)) + u"分）"_s);
    painter->drawText(legend, Qt::AlignRight | Qt::AlignTop, answersText);
}
