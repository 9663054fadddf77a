// SPDX-FileCopyrightText: 2026 The Kotoban developers
// SPDX-License-Identifier: MIT

#include "files/modStudyTally.h"

#include "base/modDateText.h"
#include "store/modDB_SQLite.h"

using namespace Qt::Literals::StringLiterals;

StudyTallies::StudyTallies(StudyDatabase &database, const QString &userName)
    : m_database(database), m_userName(userName)
{
}

bool StudyTallies::ReadRecent(const QDate &today)
{
    if (!m_firstRecentDay.isValid()) {
        m_firstRecentDay = today;
        m_unread = SessionSpans(QDate(1, 1, 1), today.addDays(-1)); // 0001 is the earliest four-digit year
    }
    m_recent.clear();
    const int dayCount = int(qMax(qint64(0), m_firstRecentDay.daysTo(today))) + 1;
    qsizetype sessions = 0;
    m_hasFailed = !Read(today, dayCount, &m_recent, &sessions);
    return !m_hasFailed;
}

bool StudyTallies::ReadNext()
{
    if (m_hasFailed || m_unread.IsAtEnd())
        return false;
    qsizetype sessions = 0;
    m_hasFailed = !Read(m_unread.EndDate(), m_unread.DayCount(), &m_before, &sessions);
    if (m_hasFailed)
        return false; // the span remains unread
    m_unread.Next(sessions);
    return !m_unread.IsAtEnd();
}

StudyTally StudyTallies::Of(const QString &title) const
{
    if (m_hasFailed)
        return StudyTally();
    const StudyTally before = m_before.value(title);
    const StudyTally recent = m_recent.value(title);
    return {before.times + recent.times, recent.times > 0 ? recent.lastDay : before.lastDay};
}

/// Adds the sessions of a span to the tallies. @return false after a database fault; then nothing was added
bool StudyTallies::Read(const QDate &endDate, int dayCount, ByTitle *tallies, qsizetype *sessions)
{
    const SilentFaults silent(m_database);
    ResultTable table;
    if (!DBSelRecKotoban(m_database, endDate, dayCount, m_userName, &table, false))
        return false;
    *sessions = qsizetype(table.size()) - 1;
    if (*sessions == 0)
        return true;
    const int fileColumn = m_database.FindColumn(table, u"file_name");
    const int dayColumn = m_database.FindColumn(table, u"ymd_sta");
    if (fileColumn < 0 || dayColumn < 0)
        return false;
    for (int row = 1; row < int(table.size()); ++row) {
        const RowValues values(table, row);
        StudyTally &tally = (*tallies)[values[fileColumn].toString()];
        if (tally.times++ == 0) // rows start with the newest day
            tally.lastDay = DateFromText(values[dayColumn]);
    }
    return true;
}

QStringList StudyFigures(int blanks, const StudyTally &tally, const QDate &today)
{
    const QString count = QString::number(blanks) + u'問';
    if (tally.times == 0)
        return {count, QString(), QString()};
    const bool isThisYears = tally.lastDay > today.addYears(-1);
    return {count, QString::number(tally.times) + u'回',
            isThisYears ? tally.lastDay.toString(u"M/d") : QString(tally.lastDay.toString(u"yyyy") + u'年')};
}

QString StudyFiguresSentence(int blanks, const StudyTally &tally)
{
    QString sentence = QString::number(blanks) + u'問';
    if (tally.times > 0)
        sentence += u"、"_s + QString::number(tally.times) + u"回、最後は"_s + DateText(tally.lastDay);
    return sentence;
}
