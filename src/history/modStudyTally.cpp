// SPDX-FileCopyrightText: 2026 The Kotoban developers
// SPDX-License-Identifier: MIT

#include "history/modStudyTally.h"

#include "base/modDateText.h"

#include <QDeadlineTimer>

using namespace Qt::Literals::StringLiterals;

bool StudyTallies::ReadRecent(const QDate &today)
{
    if (!m_firstRecentDay.isValid() || today < m_firstRecentDay) {
        m_firstRecentDay = today;
        m_unread = {QDate(1, 1, 1), today.addDays(-1)}; // 0001 is the earliest four-digit year
        m_before = Sums();
    }
    m_recent = Sums();
    DaySpan days = {m_firstRecentDay, today};
    return Read(QDeadlineTimer(QDeadlineTimer::Forever), &days, &m_recent);
}

bool StudyTallies::ReadNext(const QDeadlineTimer &until)
{
    return !m_unread.IsEmpty() && Read(until, &m_unread, &m_before) && !m_unread.IsEmpty();
}

namespace {

/// A tally over two spans of days, of which the second is later.
StudyTally Joined(StudyTally before, const StudyTally &recent)
{
    before.times += recent.times;
    before.sum += recent.sum;
    if (recent.times > 0)
        before.lastDay = recent.lastDay;
    return before;
}

} // namespace

StudyTally StudyTallies::Of(const QString &title) const
{
    return Joined(m_before.byTitle.value(title), m_recent.byTitle.value(title));
}

StudyTallies::ByTitle StudyTallies::OfAll() const
{
    ByTitle all = m_before.byTitle;
    for (auto recent = m_recent.byTitle.begin(); recent != m_recent.byTitle.end(); ++recent)
        all[recent.key()] = Joined(all.value(recent.key()), recent.value());
    return all;
}

StudySum StudyTallies::OnDay(const QDate &day) const
{
    return (day < m_firstRecentDay ? m_before : m_recent).byDay.value(day);
}

QDate StudyTallies::FirstReadDay() const
{
    return m_unread.IsEmpty() && m_firstRecentDay.isValid() ? QDate(1, 1, 1) : m_unread.last.addDays(1);
}

/// Adds the sessions of some days to the sums until a deadline. @return false after a database fault, which discards
/// all sums
bool StudyTallies::Read(const QDeadlineTimer &until, DaySpan *days, Sums *sums)
{
    const SilentFaults silent(m_database);
    QString dayText;
    QDate day;
    const auto take = [&](const RecordedSession &session) {
        if (session.day != dayText) {
            dayText = session.day.toString();
            day = DateFromText(dayText);
        }
        const StudySum sum = SumOf(session);
        StudyTally &tally = sums->byTitle[session.fileName.toString()];
        if (tally.times++ == 0) // the newest day comes first
            tally.lastDay = day;
        tally.sum += sum;
        sums->byDay[day] += sum;
    };
    m_hasFailed = !DBSelRecKotoban(m_database, m_userName, until, days, take);
    if (m_hasFailed) {
        m_recent = Sums();
        m_before = Sums();
        m_firstRecentDay = QDate();
        m_unread = DaySpan();
    }
    return !m_hasFailed;
}

int StudyStreak(const StudyTallies &tallies, const QDate &today)
{
    const QDate last = tallies.OnDay(today).answers > 0 ? today : today.addDays(-1);
    QDate day = last;
    while (tallies.OnDay(day).answers > 0)
        day = day.addDays(-1);
    return day < tallies.FirstReadDay() || !tallies.FirstReadDay().isValid() ? -1 : int(day.daysTo(last));
}

QString StudiedText(const StudyTally &tally, const QDate &today)
{
    if (tally.times == 0)
        return QString();
    return QString::number(tally.times) + u"回　最後 "_s + RecentDayText(tally.lastDay, today);
}

QString StudyFiguresSentence(int blanks, int hard, const StudyTally &tally, const QDate &today)
{
    QString sentence = u"空欄"_s + QString::number(blanks);
    if (hard > 0)
        sentence += u"，苦手"_s + QString::number(hard);
    if (tally.times > 0)
        sentence += u'，' + QString::number(tally.times) + u"回，最後は"_s + RecentDayText(tally.lastDay, today);
    return sentence;
}

QString AllTalliesSentence(const StudyTallies::ByTitle &tallies)
{
    StudyTally all;
    for (const StudyTally &tally : tallies)
        all = Joined(all, tally);
    return u"これまでに "_s + QString::number(tallies.size()) + u"ファイル，"_s + QString::number(all.times) +
           u"回，"_s + StudyTimeText(all.sum.seconds);
}
