// SPDX-FileCopyrightText: 2026 The Kotoban developers
// SPDX-License-Identifier: MIT

#include "history/modHistoryBars.h"

#include "base/modDateText.h"

#include <QtMath>

#include <algorithm>

using namespace Qt::Literals::StringLiterals;

namespace {

constexpr int DaysPerWeek = 7;
constexpr int MonthsPerYear = 12;

qint64 MonthNumber(const QDate &day)
{
    return qint64(day.year()) * MonthsPerYear + day.month() - 1;
}

QDate FirstOfMonth(qint64 number)
{
    return QDate(int(number / MonthsPerYear), int(number % MonthsPerYear) + 1, 1);
}

/// The day of a month's bar or of the first of the days' bars, from which their numbers count.
QDate FirstBarDay(const History &history, BarSpan span)
{
    if (span != BarSpan::Month)
        return history.StartDate();
    QDate first = history.EndDate();
    for (const HistoryDay &day : history.Days())
        if (day.day.isValid())
            first = qMin(first, day.day);
    return qMax(first, history.StartDate());
}

} // namespace

BarSpan SpanOfBars(int weeks)
{
    constexpr int weeksPerYear = 52;
    if (weeks > weeksPerYear)
        return BarSpan::Month;
    return weeks > 2 ? BarSpan::Week : BarSpan::Day;
}

std::vector<HistoryBar> HistoryBars(const History &history)
{
    std::vector<HistoryBar> bars;
    if (history.Weeks() == 0)
        return bars;
    const BarSpan span = SpanOfBars(history.Weeks());
    const QDate start = FirstBarDay(history, span);
    const auto numberOf = [&](const QDate &day) {
        if (span == BarSpan::Month)
            return MonthNumber(day) - MonthNumber(start);
        return start.daysTo(day) / (span == BarSpan::Week ? DaysPerWeek : 1);
    };
    const qint64 count = numberOf(history.EndDate()) + 1;
    for (qint64 number = 0; number < count; ++number) {
        DaySpan days = {start.addDays(number), start.addDays(number)};
        if (span == BarSpan::Week)
            days = {start.addDays(number * DaysPerWeek), start.addDays(number * DaysPerWeek + DaysPerWeek - 1)};
        else if (span == BarSpan::Month)
            days = {FirstOfMonth(MonthNumber(start) + number),
                    FirstOfMonth(MonthNumber(start) + number + 1).addDays(-1)};
        bars.push_back({days});
    }
    for (const HistoryDay &day : history.Days())
        if (day.day.isValid() && day.day >= start && day.day <= history.EndDate())
            bars[size_t(numberOf(day.day))].sum += day.sum;
    return bars;
}

QString BarValue(const HistoryBar &bar, size_t barCount)
{
    constexpr qint64 minutesPerHour = 60;
    constexpr qint64 firstInHours = 1000; // such a number is too wide above a bar
    const qint64 minutes = StudyMinutes(bar.sum.seconds);
    if (bar.sum.answers == 0)
        return barCount <= DaysPerWeek ? u"なし"_s : QString();
    return minutes < firstInHours ? QString(QString::number(minutes) + u'分')
                                  : QString(QString::number(minutes / minutesPerHour) + u"時間"_s);
}

QString BarName(const HistoryBar &bar, BarSpan span, const QDate &today)
{
    const QDate &day = bar.days.first;
    if (span == BarSpan::Week)
        return QString::number(day.month()) + u'/' + QString::number(day.day());
    if (span == BarSpan::Month)
        return QString::number(day.month()) + u'月';
    return day == today ? u"今日"_s : QString(Weekday(day));
}

QString BarDetail(const HistoryBar &bar, BarSpan span)
{
    if (span == BarSpan::Month)
        return bar.days.first.month() == 1 ? QString::number(bar.days.first.year()) : QString();
    return bar.sum.answers == 0 ? QString() : QString(QString::number(bar.sum.answers) + u'問');
}

QString BarText(const HistoryBar &bar, BarSpan span, const QDate &today)
{
    QString text = ShortDayText(bar.days.first, today);
    if (span == BarSpan::Week)
        text += u'～' + ShortDayText(bar.days.last, today);
    else if (span == BarSpan::Month)
        text = QString::number(bar.days.first.year()) + u'年' + QString::number(bar.days.first.month()) + u'月';
    return text + u' ' + (bar.sum.answers == 0 ? u"なし"_s : StudySumText(bar.sum));
}

namespace {

constexpr double LeastSlotPx = 3;
constexpr double EmsAbove = 1.7; ///< for the value
constexpr double EmsBelow = 3.4; ///< for name and detail

} // namespace

BarPlaces::BarPlaces(const std::vector<HistoryBar> &bars, const QSizeF &size, double emPx)
    : m_bars(bars), m_size(size), m_em(emPx)
{
    const size_t mostShown = size_t(qMax(1.0, size.width() / LeastSlotPx));
    m_first = bars.size() > mostShown ? bars.size() - mostShown : 0;
    m_slot = size.width() / double(qMax(size_t(1), bars.size() - m_first));
    constexpr qint64 leastMost = 10; // minutes; a day of one minute is not to fill the chart
    m_most = leastMost;
    for (size_t bar = m_first; bar < bars.size(); ++bar)
        m_most = qMax(m_most, StudyMinutes(bars[bar].sum.seconds));
}

bool BarPlaces::IsDense() const
{
    constexpr double emsForValue = 3.2;
    return m_slot < emsForValue * m_em;
}

bool BarPlaces::HasName(size_t bar, BarSpan span, double widestPx) const
{
    constexpr double emsBetween = 0.5;
    const int distance = qCeil((widestPx + emsBetween * m_em) / m_slot);
    if (span != BarSpan::Month)
        return (m_bars.size() - 1 - bar) % size_t(distance) == 0;
    int months = qMin(distance, MonthsPerYear);
    while (MonthsPerYear % months != 0)
        ++months;
    const int years = (distance + MonthsPerYear - 1) / MonthsPerYear;
    const QDate &day = m_bars[bar].days.first;
    return (day.month() - 1) % months == 0 && day.year() % years == 0;
}

QRectF BarPlaces::Slot(size_t bar) const
{
    return QRectF(double(bar - m_first) * m_slot, 0, m_slot, m_size.height());
}

QRectF BarPlaces::Bar(size_t bar) const
{
    const StudySum &sum = m_bars[bar].sum;
    if (sum.answers == 0)
        return QRectF();
    constexpr double ofSlot = 0.6;
    constexpr double mostEms = 4;
    constexpr double leastPx = 2;
    const double width = qMin(m_slot * ofSlot, mostEms * m_em);
    const double room = qMax(leastPx, BaseLine() - EmsAbove * m_em);
    const double height = qMax(leastPx, double(StudyMinutes(sum.seconds)) * room / double(m_most));
    return QRectF(Slot(bar).center().x() - width / 2, BaseLine() - height, width, height);
}

double BarPlaces::BaseLine() const
{
    return m_size.height() - EmsBelow * m_em;
}

int BarPlaces::BarAt(const QPointF &point) const
{
    if (m_bars.empty() || point.x() < 0 || point.x() >= m_size.width())
        return -1;
    return int(qMin(m_bars.size() - 1, m_first + size_t(point.x() / m_slot)));
}
