// SPDX-FileCopyrightText: 2026 The Kotoban developers
// SPDX-License-Identifier: MIT

// Iterates over the days of a record, newest first, in spans that each hold about as many sessions as can be read
// between two events.
#pragma once

#include <QDate>

class SessionSpans
{
  public:
    /// No days.
    SessionSpans() = default;

    /// The days from firstDate to lastDate; none if lastDate is earlier. The first span is a week.
    SessionSpans(const QDate &firstDate, const QDate &lastDate);

    /// Whether all days are done. There is no current span then.
    bool IsAtEnd() const
    {
        return !m_endDate.isValid();
    }

    /// Last day of the current span.
    const QDate &EndDate() const
    {
        return m_endDate;
    }

    /// Number of days in the current span, 1 or more.
    int DayCount() const;

    /// Moves on to the next span: a longer one if the current one held few sessions, a shorter one if it held many.
    /// @param sessions  number of sessions in the current span
    void Next(qsizetype sessions);

  private:
    QDate m_firstDate;
    QDate m_endDate; // invalid at the end
    int m_maxDays = 7;
};
