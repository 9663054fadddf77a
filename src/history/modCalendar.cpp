// SPDX-FileCopyrightText: 2026 The Kotoban developers
// SPDX-License-Identifier: MIT

#include "history/modCalendar.h"

#include "base/modDateText.h"

#include <cmath>

using namespace Qt::Literals::StringLiterals;

namespace {

constexpr int DaysPerWeek = 7;
constexpr int CalendarWeeks = 53;
constexpr double EmsLeft = 2;  ///< for the names of weekdays
constexpr double EmsAbove = 2; ///< for the names of months

/// 0 for Sunday.
int RowOf(const QDate &day)
{
    return day.dayOfWeek() % DaysPerWeek;
}

} // namespace

int CalendarStep(const StudySum &sum)
{
    constexpr qint64 secondsPerMinute = 60;
    int step = sum.answers > 0 ? 1 : 0;
    for (const qint64 minutes : {15, 30, 60})
        step += sum.answers > 0 && sum.seconds >= minutes * secondsPerMinute ? 1 : 0;
    return step;
}

QString YearSentence(const StudyTallies &tallies, const QDate &today)
{
    int days = 0;
    int inARow = 0;
    int longest = 0;
    StudySum sum;
    for (QDate day = today.addDays(1 - CalendarDays); day <= today; day = day.addDays(1)) {
        const StudySum ofDay = tallies.OnDay(day);
        inARow = ofDay.answers > 0 ? inARow + 1 : 0;
        days += ofDay.answers > 0 ? 1 : 0;
        longest = qMax(longest, inARow);
        sum += ofDay;
    }
    return u"この1年は "_s + QString::number(days) + u"日，"_s + StudyTimeText(sum.seconds) + u"　最長 "_s +
           QString::number(longest) + u"日連続"_s;
}

QString DaySentence(const QDate &day, const StudySum &sum)
{
    return DateWithWeekday(day) + u'　' + (sum.answers > 0 ? StudySumText(sum) : u"なし"_s);
}

CalendarPlaces::CalendarPlaces(const QDate &today, const QSizeF &size, double emPx) : m_today(today), m_em(emPx)
{
    constexpr double leastPitch = 9;
    constexpr double mostPitchEms = 1.6;
    const double room = size.width() - EmsLeft * emPx;
    const double rowHeight = (size.height() - EmsAbove * emPx) / DaysPerWeek;
    const double mostPitch = qMin(mostPitchEms * emPx, rowHeight);
    m_pitch = qMax(leastPitch, std::floor(qMin(room / CalendarWeeks, mostPitch)));
    const int weeks = qBound(1, int(room / m_pitch), CalendarWeeks);
    m_firstSunday = today.addDays(-RowOf(today) - qint64(weeks - 1) * DaysPerWeek);
    m_firstDay = qMax(m_firstSunday, today.addDays(1 - CalendarDays));
}

int CalendarPlaces::ColumnOf(const QDate &day) const
{
    return int(m_firstSunday.daysTo(day) / DaysPerWeek);
}

QRectF CalendarPlaces::Square(const QDate &day) const
{
    const double side = m_pitch - qMax(1.0, std::floor(m_pitch / 5));
    return QRectF(EmsLeft * m_em + ColumnOf(day) * m_pitch, EmsAbove * m_em + RowOf(day) * m_pitch, side, side);
}

QDate CalendarPlaces::DayAt(const QPointF &point) const
{
    const double column = std::floor((point.x() - EmsLeft * m_em) / m_pitch);
    const double row = std::floor((point.y() - EmsAbove * m_em) / m_pitch);
    if (column < 0 || column >= CalendarWeeks || row < 0 || row >= DaysPerWeek)
        return QDate();
    const QDate day = m_firstSunday.addDays(qint64(column) * DaysPerWeek + qint64(row));
    return day < m_firstDay || day > m_today ? QDate() : day;
}

QRectF CalendarPlaces::WeekdayName(int row) const
{
    return QRectF(0, EmsAbove * m_em + row * m_pitch, EmsLeft * m_em, m_pitch);
}

std::vector<CalendarPlaces::MonthName> CalendarPlaces::MonthNames() const
{
    constexpr double leastEmsBetween = 2.6;
    std::vector<MonthName> names;
    for (QDate day(m_firstDay.year(), m_firstDay.month(), 1); day <= m_today; day = day.addMonths(1)) {
        if (day < m_firstDay)
            continue;
        const double left = Square(day).left();
        if (names.empty() || left - names.back().bottomLeft.x() >= leastEmsBetween * m_em)
            names.push_back({day, QPointF(left, (EmsAbove - 0.5) * m_em)});
    }
    return names;
}

double CalendarPlaces::Bottom() const
{
    return EmsAbove * m_em + DaysPerWeek * m_pitch;
}
