// SPDX-FileCopyrightText: 2026 The Kotoban developers
// SPDX-License-Identifier: MIT

#include "files/modStudyTally.h"

#include "base/modDateText.h"

#include <QDeadlineTimer>

using namespace Qt::Literals::StringLiterals;

bool StudyTallies::ReadRecent(const QDate &today)
{
    if (!m_firstRecentDay.isValid()) {
        m_firstRecentDay = today;
        m_unread = {QDate(1, 1, 1), today.addDays(-1)}; // 0001 is the earliest four-digit year
    }
    m_recent.clear();
    DaySpan days = {m_firstRecentDay, qMax(m_firstRecentDay, today)};
    return Read(QDeadlineTimer(QDeadlineTimer::Forever), &days, &m_recent);
}

bool StudyTallies::ReadNext(const QDeadlineTimer &until)
{
    return !m_unread.IsEmpty() && Read(until, &m_unread, &m_before) && !m_unread.IsEmpty();
}

StudyTally StudyTallies::Of(const QString &title) const
{
    const StudyTally before = m_before.value(title);
    const StudyTally recent = m_recent.value(title);
    return {before.times + recent.times, recent.times > 0 ? recent.lastDay : before.lastDay};
}

/// Adds the sessions of some days to the tallies until a deadline. @return false after a database fault, which discards
/// all tallies
bool StudyTallies::Read(const QDeadlineTimer &until, DaySpan *days, ByTitle *tallies)
{
    const SilentFaults silent(m_database);
    const bool isRead = DBSelRecKotoban(m_database, m_userName, until, days, [tallies](const RecordedSession &session) {
        StudyTally &tally = (*tallies)[session.fileName.toString()];
        if (tally.times++ == 0) // the newest day comes first
            tally.lastDay = DateFromText(session.day);
    });
    if (!isRead) {
        m_recent.clear();
        m_before.clear();
        m_firstRecentDay = QDate();
        m_unread = DaySpan();
    }
    return isRead;
}

QString StudiedText(const StudyTally &tally, const QDate &today)
{
    if (tally.times == 0)
        return QString();
    return QString::number(tally.times) + u"回　最後 "_s + RecentDayText(tally.lastDay, today);
}

QString StudyFiguresSentence(int blanks, const StudyTally &tally, const QDate &today)
{
    QString sentence = u"空欄"_s + QString::number(blanks);
    if (tally.times > 0)
        sentence += u'，' + QString::number(tally.times) + u"回，最後は"_s + RecentDayText(tally.lastDay, today);
    return sentence;
}
