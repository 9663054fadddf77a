// The days of a record, newest first, in spans that hold about as many sessions as can be read between two events.
#pragma once

#include <QDate>

class SessionSpans
{
  public:
    /// No days.
    SessionSpans() = default;

    /// The days from firstDate to lastDate, none when it lies before that. The first span is a week.
    SessionSpans(const QDate &firstDate, const QDate &lastDate);

    /// Whether all days were gone through. There is no present span then.
    bool IsAtEnd() const
    {
        return !m_endDate.isValid();
    }

    /// Last day of the present span.
    const QDate &EndDate() const
    {
        return m_endDate;
    }

    /// Days in the present span, 1 or more.
    int DayCount() const;

    /// Goes on to the next span: a longer one where the present one held little, a shorter one where it held much.
    /// @param sessions  what it held
    void Next(qsizetype sessions);

  private:
    QDate m_firstDate;
    QDate m_endDate; // invalid at the end
    int m_mostDays = 7;
};
