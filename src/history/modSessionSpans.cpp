// SPDX-FileCopyrightText: 2026 The Kotoban developers
// SPDX-License-Identifier: MIT

#include "history/modSessionSpans.h"

SessionSpans::SessionSpans(const QDate &firstDate, const QDate &lastDate) : m_firstDate(firstDate), m_endDate(lastDate)
{
    if (lastDate < firstDate)
        m_endDate = QDate();
}

int SessionSpans::DayCount() const
{
    return int(qMin(qint64(m_maxDays), m_firstDate.daysTo(m_endDate) + 1));
}

void SessionSpans::Next(qsizetype sessions)
{
    constexpr qsizetype wantedSessions = 400; // read in two or three milliseconds
    // After a gap the next span may be as full as any, so it must not be longer than one that can be read in a frame.
    // Before 1970 no clock of a computer has recorded anything.
    constexpr int longestSpan = 28;
    const bool canBeFull = m_endDate.year() >= 1970;
    m_endDate = m_endDate.addDays(-DayCount());
    if (m_endDate < m_firstDate)
        m_endDate = QDate();
    if (sessions > 2 * wantedSessions)
        m_maxDays = qMax(1, m_maxDays / 2);
    else if (sessions < wantedSessions / 2)
        m_maxDays = canBeFull ? qMin(longestSpan, 2 * m_maxDays) : 2 * m_maxDays;
}
