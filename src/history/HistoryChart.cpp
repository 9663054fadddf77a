// SPDX-FileCopyrightText: 2026 The Kotoban developers
// SPDX-License-Identifier: MIT

#include "history/HistoryChart.h"

#include "widgets/Contrast.h"
#include "widgets/Measures.h"

#include <QPainter>

#include <algorithm>

using namespace Qt::Literals::StringLiterals;

HistoryChart::HistoryChart(const HistoryReader &reader, QWidget *parent)
    : DayChart(u"picHistory"_s, u"学習時間の棒グラフ"_s, parent), m_reader(reader)
{
}

void HistoryChart::ShowRead(const QDate &today)
{
    const History &history = m_reader.Result();
    m_span = SpanOfBars(history.Weeks());
    m_bars = HistoryBars(history);
    const auto seconds = [](const HistoryBar &bar) { return bar.sum.seconds; };
    m_highest = m_bars.empty() ? 0 : size_t(std::ranges::max_element(m_bars, {}, seconds) - m_bars.begin());
    DayChart::ShowRead(today, Note().isEmpty() ? HistorySentence(history, today) : Note());
}

/// What stands in the place of bars that cannot be drawn, or not yet; otherwise empty.
QString HistoryChart::Note() const
{
    if (m_reader.HasFailed())
        return u"読めませんでした"_s;
    if (!m_reader.Result().Days().empty())
        return m_reader.IsComplete() ? QString() : u"読み込み中…"_s;
    return m_reader.IsComplete() ? u"この期間の記録はありません"_s : u"読み込み中…"_s;
}

QRectF HistoryChart::Area() const
{
    const double margin = Ems(fontMetrics(), 0.9);
    return QRectF(rect()).adjusted(margin, 0, -margin, 0);
}

BarPlaces HistoryChart::Places() const
{
    return BarPlaces(m_bars, Area().size(), Ems(fontMetrics(), 1));
}

/// The number of the bar of some days, from 0; -1 if they have none, as after another history was read.
qsizetype HistoryChart::NumberOf(const DaySpan &days) const
{
    const auto bar = std::ranges::find(m_bars, days.first, [](const HistoryBar &each) { return each.days.first; });
    return bar == m_bars.end() || bar->days.last != days.last ? -1 : bar - m_bars.begin();
}

bool HistoryChart::HasDays(const DaySpan &days) const
{
    return !m_reader.HasFailed() && NumberOf(days) >= 0;
}

DaySpan HistoryChart::DaysAt(const QPointF &point) const
{
    const int bar = Places().BarAt(point - Area().topLeft());
    return bar < 0 ? DaySpan() : m_bars[size_t(bar)].days;
}

DaySpan HistoryChart::DaysAfterKey(int key) const
{
    if (m_bars.empty())
        return DaySpan();
    const qsizetype first = qsizetype(Places().First());
    const qsizetype last = qsizetype(m_bars.size()) - 1;
    const qsizetype chosen = NumberOf(Chosen());
    const auto days = [&](qsizetype bar) { return m_bars[size_t(qBound(first, bar, last))].days; };
    switch (key) {
    case Qt::Key_Left:
        return days(chosen < 0 ? last : chosen - 1);
    case Qt::Key_Right:
        return days(chosen < 0 ? last : chosen + 1);
    case Qt::Key_Home:
        return days(first);
    case Qt::Key_End:
        return days(last);
    default:
        return DaySpan();
    }
}

QString HistoryChart::TextOf(const DaySpan &days) const
{
    const qsizetype bar = NumberOf(days);
    return bar < 0 ? QString() : BarText(m_bars[size_t(bar)], m_span, Today());
}

void HistoryChart::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    painter.fillRect(rect(), palette().base());
    PaintFocus(&painter);
    if (m_reader.Result().Days().empty() || m_bars.empty()) {
        PaintNote(&painter, Note());
        return;
    }
    painter.translate(Area().topLeft());
    const BarPlaces places = Places();
    for (size_t bar = places.First(); bar < m_bars.size(); ++bar)
        PaintBar(&painter, places, bar);
    if (const qsizetype chosen = NumberOf(Chosen()); chosen >= qsizetype(places.First())) {
        const QRectF bar = places.Bar(size_t(chosen));
        const QRectF slot = places.Slot(size_t(chosen));
        PaintChoice(&painter,
                    bar.isEmpty() ? QRectF(slot.left() + 3, places.BaseLine() - 3, slot.width() - 6, 3) : bar);
    }
    for (size_t bar = places.First(); bar < m_bars.size(); ++bar)
        if (HasText(places, bar))
            PaintValue(&painter, places, bar);
    if (const qsizetype chosen = NumberOf(Chosen()); chosen >= qsizetype(places.First()))
        PaintValue(&painter, places, size_t(chosen)); // above that of a bar beside it
    painter.setPen(palette().color(QPalette::Mid));
    painter.drawLine(QPointF(0, places.BaseLine()), QPointF(Area().width(), places.BaseLine()));
    PaintNames(&painter, places);
}

void HistoryChart::PaintBar(QPainter *painter, const BarPlaces &places, size_t bar) const
{
    const HistoryBar &each = m_bars[bar];
    const ChartColours colours = ChartColoursOn(palette());
    const QRectF place = places.Bar(bar);
    constexpr double radiusPx = 3;
    painter->save();
    painter->setRenderHint(QPainter::Antialiasing);
    painter->setPen(Qt::NoPen);
    painter->setBrush(HasToday(each) ? colours.today : colours.other);
    painter->setClipRect(place);
    painter->drawRoundedRect(place.adjusted(0, 0, 0, radiusPx), radiusPx, radiusPx); // round above only
    painter->restore();
}

/// Writes the value of a bar above it, inside the chart.
void HistoryChart::PaintValue(QPainter *painter, const BarPlaces &places, size_t bar) const
{
    const HistoryBar &each = m_bars[bar];
    const QRectF place = places.Bar(bar);
    const QString value = BarValue(each, m_bars.size());
    QFont font = painter->font();
    font.setBold(HasToday(each));
    painter->save();
    painter->setFont(font);
    painter->setPen(place.isEmpty() ? DimText() : palette().color(QPalette::Text));
    const double textWidth = painter->fontMetrics().horizontalAdvance(value);
    const double left = LeftOfText(places.Slot(bar).center().x(), textWidth);
    const double bottom = (place.isEmpty() ? places.BaseLine() : place.top()) - 2;
    const double height = painter->fontMetrics().height();
    if (places.IsDense()) // and the bars beside it may be higher
        painter->fillRect(QRectF(left, bottom - height, textWidth, height), palette().base());
    painter->drawText(QPointF(left, bottom - painter->fontMetrics().descent()), value);
    painter->restore();
}

/// Where a text about a bar begins so that it stays inside the chart.
double HistoryChart::LeftOfText(double centre, double textWidth) const
{
    const double margin = Area().left() - 2 * FocusRingWidth;
    return qBound(-margin, centre - textWidth / 2, Area().width() + margin - textWidth);
}

bool HistoryChart::HasToday(const HistoryBar &bar) const
{
    return bar.days.first <= Today() && Today() <= bar.days.last;
}

/// Whether a bar bears its value. Where the bars are dense, only today's, the highest and the chosen one do.
bool HistoryChart::HasText(const BarPlaces &places, size_t bar) const
{
    return !places.IsDense() || bar == m_highest || qsizetype(bar) == NumberOf(Chosen()) || HasToday(m_bars[bar]);
}

/// The names below the bars, as many as do not touch, and their details where there is room.
void HistoryChart::PaintNames(QPainter *painter, const BarPlaces &places) const
{
    const QFont plain = painter->font();
    QFont bold = plain;
    bold.setBold(true);
    const auto widthOf = [](const QFont &font, const QString &text) {
        return QFontMetricsF(font).horizontalAdvance(text);
    };
    double widest = 0;
    for (size_t bar = places.First(); bar < m_bars.size(); ++bar) {
        widest = qMax(widest, widthOf(bold, BarName(m_bars[bar], m_span, Today())));
        if (m_span != BarSpan::Day) // whose names all have room
            widest = qMax(widest, widthOf(plain, BarDetail(m_bars[bar], m_span)));
    }
    for (size_t bar = places.First(); bar < m_bars.size(); ++bar) {
        const HistoryBar &each = m_bars[bar];
        if (!places.HasName(bar, m_span, widest))
            continue;
        const bool isToday = m_span == BarSpan::Day && HasToday(each);
        const auto paint = [&](const QFont &font, const QColor &colour, const QString &text, double lines) {
            const double left = LeftOfText(places.Slot(bar).center().x(), widthOf(font, text));
            painter->setFont(font);
            painter->setPen(colour);
            painter->drawText(QPointF(left, places.BaseLine() + Ems(fontMetrics(), 0.2) + fontMetrics().ascent() +
                                                lines * fontMetrics().height()),
                              text);
        };
        paint(isToday ? bold : plain, each.sum.answers == 0 && !isToday ? DimText() : palette().color(QPalette::Text),
              BarName(each, m_span, Today()), 0);
        if (const QString detail = BarDetail(each, m_span);
            m_span != BarSpan::Day || widthOf(plain, detail) < places.Slot(bar).width())
            paint(plain, DimText(), detail, 1);
    }
}
