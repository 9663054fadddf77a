// The study history: the sessions of a span of weeks as lines of text, its totals, and the report file.
#pragma once

#include "store/Sqlite3Func.h"

#include <QDate>
#include <QStringList>

#include <vector>

/// What was studied on one day.
struct DayTotal
{
    QDate day;
    qint64 seconds = 0;
    qint64 answers = 0; ///< more than one session's count can hold
};

/// Hours, only when there are any, minutes and seconds: "1時間 5分 9秒".
QString HoursMinutesSeconds(qint64 seconds);

/// The history of one user over whole weeks.
struct History
{
    QDate endDate;              ///< last day of the span
    int weeks = 0;              ///< the span has 7 days a week
    bool isRead = false;        ///< false after a database fault
    QStringList lines;          ///< a heading for each day, newest first, and below it its sessions, earliest first
    std::vector<DayTotal> days; ///< the days with sessions, newest first
    QString totalTime = HoursMinutesSeconds(0); ///< e.g. "1時間 5分 9秒"
    QString totalAnswers = QString(u'0');       ///< decimal

    /// First day of the span.
    QDate StartDate() const
    {
        return endDate.addDays(1 - qint64(weeks) * 7);
    }
};

/// Reads a user's history. After a database fault it is empty; the learner has been told once, by the first statement.
/// @param weeks  1 or more; the span ends on endDate
History ReadHistory(StudyDatabase &database, const QDate &endDate, int weeks, const QString &userName);

/// Longest span of a history, in weeks.
constexpr int MostWeeks = 9999;

/// A number of weeks as the learner types it: a whole number from 1 to MostWeeks. @return 0 for any other text
int ReadWeeks(const QString &text);

/// One session: start, duration, answers, file. Numbers too wide for their field lose their left digits.
/// @param startTime  "hh:nn:ss"; @param seconds  duration
QString HistoryLine(const QString &startTime, qint64 seconds, int answers, const QString &fileName);

/// Name of the report file. The date in it is today's and not the end of the span; that is meant. Characters of the
/// user's name that a file name cannot hold become "_".
QString ReportFileName(const QString &userName, const QDate &today, int weeks);

/// The report: the history's lines and a line of totals, each ended by CR LF.
QString ReportText(const History &history);
