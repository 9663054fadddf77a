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
        m_unreadUpTo = today.addDays(-1);
    }
    m_recent.clear();
    const int dayCount = int(qMax(qint64(0), m_firstRecentDay.daysTo(today))) + 1;
    qsizetype sessions = 0;
    return Read(today, dayCount, &m_recent, &sessions);
}

bool StudyTallies::ReadNext()
{
    // About what is read between two frames of the window, on a slow machine too.
    constexpr qsizetype wantedSessions = 1000;
    if (!m_unreadUpTo.isValid())
        return false;
    const QDate firstDate(1, 1, 1); // no text of four digits is an earlier year
    const int dayCount = int(qMin(qint64(m_nextSpanDays), firstDate.daysTo(m_unreadUpTo) + 1));
    qsizetype sessions = 0;
    const bool isRead = Read(m_unreadUpTo, dayCount, &m_before, &sessions);
    m_unreadUpTo = m_unreadUpTo.addDays(-dayCount);
    if (!isRead || m_unreadUpTo < firstDate)
        m_unreadUpTo = QDate();
    if (sessions > 2 * wantedSessions)
        m_nextSpanDays = qMax(1, m_nextSpanDays / 2);
    else if (sessions < wantedSessions / 2)
        m_nextSpanDays *= 2;
    return m_unreadUpTo.isValid();
}

StudyTally StudyTallies::Of(const QString &title) const
{
    const StudyTally before = m_before.value(title);
    const StudyTally recent = m_recent.value(title);
    return {before.times + recent.times, recent.times > 0 ? recent.lastDay : before.lastDay};
}

bool StudyTallies::Read(const QDate &endDate, int dayCount, ByTitle *tallies, qsizetype *sessions)
{
    ResultTable table;
    const bool isRead = DBSelRecKotoban(m_database, endDate, dayCount, m_userName, &table, false);
    for (int row = 1; row < int(table.size()); ++row) {
        StudyTally &tally = (*tallies)[m_database.SQLite3GetColumn(table, row, u"file_name"_s)];
        if (tally.times++ == 0) // the newest day comes first
            tally.lastDay = DateFromText(m_database.SQLite3GetColumn(table, row, u"ymd_sta"_s));
    }
    *sessions = qsizetype(table.size()) - 1;
    return isRead;
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
