#include "files/HistoryChart.h"

#include "base/modDateText.h"

#include <QPainter>
#include <QPainterPath>

#include <algorithm>

using namespace Qt::Literals::StringLiterals;

namespace {

const QColor BarColour(120, 160, 210);
const QColor LineColour(200, 90, 40);
const QColor AxisColour(150, 150, 150);

/// The largest of some values, but never 0, so that it can be divided by.
double Highest(const std::vector<double> &values)
{
    return std::max(1.0, *std::max_element(values.begin(), values.end()));
}

} // namespace

HistoryChart::HistoryChart(QWidget *parent) : QWidget(parent)
{
    setObjectName(u"picHistory"_s);
    setAccessibleName(u"学習時間と回答数のグラフ"_s);
}

void HistoryChart::SetHistory(const History &history)
{
    m_endDate = history.endDate;
    m_dayCount = history.weeks * 7;
    m_days = history.days;
    update();
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
    if (m_dayCount == 0 || plot.width() < 1 || plot.height() < 1)
        return;
    painter.setPen(palette().color(QPalette::Text));
    painter.drawText(rect().adjusted(margin, 0, -margin, 0), Qt::AlignLeft | Qt::AlignBottom,
                     DateText(m_endDate.addDays(1 - m_dayCount)));
    painter.drawText(rect().adjusted(margin, 0, -margin, 0), Qt::AlignRight | Qt::AlignBottom, DateText(m_endDate));
    if (m_days.empty()) {
        painter.drawText(plot, Qt::AlignCenter, u"この期間の記録はありません"_s);
        return;
    }

    // A span of more days than pixels is drawn in columns of several days.
    const int columns = qMin(m_dayCount, plot.width());
    std::vector<double> minutes(size_t(columns), 0);
    std::vector<double> answers(size_t(columns), 0);
    for (const DayTotal &day : m_days) {
        const qint64 offset = m_dayCount - 1 - day.day.daysTo(m_endDate);
        if (!day.day.isValid() || offset < 0 || offset >= m_dayCount)
            continue;
        const auto column = size_t(offset * columns / m_dayCount);
        minutes[column] += double(day.seconds) / 60;
        answers[column] += double(day.answers);
    }
    const double mostMinutes = Highest(minutes);
    const double mostAnswers = Highest(answers);
    const double step = double(plot.width()) / columns;
    QPainterPath line;
    for (int i = 0; i < columns; ++i) {
        const double height = plot.height() * std::max(0.0, minutes[size_t(i)]) / mostMinutes;
        painter.fillRect(QRectF(plot.left() + i * step, plot.bottom() - height, qMax(1.0, step * 0.8), height),
                         BarColour);
        const QPointF point(plot.left() + (i + 0.4) * step,
                            plot.bottom() - plot.height() * answers[size_t(i)] / mostAnswers);
        if (i == 0)
            line.moveTo(point);
        else
            line.lineTo(point);
    }
    painter.setPen(AxisColour);
    painter.drawLine(plot.bottomLeft(), plot.bottomRight());
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(QPen(LineColour, fontMetrics().lineWidth() * 1.5));
    painter.drawPath(line);

    // The signs have the colours; text of these colours could not be read well on every background.
    const QString bar = u"■"_s;
    const QString answersText = u" 回答数（最大"_s + QString::number(qRound(mostAnswers)) + u"問）"_s;
    const QString dash = u"―"_s;
    const QRect legend = rect().adjusted(margin, 0, -margin, 0);
    const int barWidth = fontMetrics().horizontalAdvance(bar);
    const int answersWidth = fontMetrics().horizontalAdvance(answersText);
    painter.setPen(BarColour);
    painter.drawText(legend, Qt::AlignLeft | Qt::AlignTop, bar);
    painter.setPen(LineColour);
    painter.drawText(legend.adjusted(0, 0, -answersWidth, 0), Qt::AlignRight | Qt::AlignTop, dash);
    painter.setPen(palette().color(QPalette::Text));
    painter.drawText(legend.adjusted(barWidth, 0, 0, 0), Qt::AlignLeft | Qt::AlignTop,
                     u" 学習時間（最大"_s + QString::number(qRound(mostMinutes)) + u"分）"_s);
    painter.drawText(legend, Qt::AlignRight | Qt::AlignTop, answersText);
}
