// SPDX-FileCopyrightText: 2026 The Kotoban developers
// SPDX-License-Identifier: MIT

// The last 365 days as squares: weeks are columns, Sunday on top, and the last square is today's.
#pragma once

#include "history/modStudyTally.h"

#include <QRectF>

#include <vector>

constexpr int CalendarDays = 365;
constexpr int CalendarSteps = 5; ///< of a square: nothing, under 15, under 30, under 60 minutes, more

/// The step of a day, from 0. @param sum  what was studied on it
int CalendarStep(const StudySum &sum);

/// The year up to today as a sentence: "この1年は 166日，81時間3分　最長 12日連続".
QString YearSentence(const StudyTallies &tallies, const QDate &today);

/// A day with what was studied on it: "2026/11/24(火)　50分 251問".
QString DaySentence(const QDate &day, const StudySum &sum);

/// Where the squares stand in an area, in pixels from its upper left corner.
class CalendarPlaces
{
  public:
    /// @param size  of the area for weekdays, months and squares
    /// @param emPx  width of a full-width character
    CalendarPlaces(const QDate &today, const QSizeF &size, double emPx);

    /// The earliest day that is shown: of the last 365 if there is room for all weeks, else of the weeks that fit.
    const QDate &FirstDay() const
    {
        return m_firstDay;
    }

    /// The square of a day from FirstDay() to today.
    QRectF Square(const QDate &day) const;

    /// The day whose square, or the gap beside it, has a point; invalid if there is none.
    QDate DayAt(const QPointF &point) const;

    /// Where the names of the weekdays stand. @param row  0 for Sunday
    QRectF WeekdayName(int row) const;

    /// The first days of the months that are named, each above its column.
    struct MonthName
    {
        QDate day;
        QPointF bottomLeft; ///< of the name
    };
    std::vector<MonthName> MonthNames() const;

    /// Below the squares.
    double Bottom() const;

  private:
    int ColumnOf(const QDate &day) const;

    QDate m_today;
    double m_em;
    double m_pitch;
    QDate m_firstDay;
    QDate m_firstSunday; // of the first column
};
