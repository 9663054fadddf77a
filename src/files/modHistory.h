// The study history: the sessions of a span of weeks as lines of text, its totals, and the report file.
#pragma once

#include "files/modSessionSpans.h"
#include "store/Sqlite3Func.h"

#include <QHash>
#include <QStringList>

#include <deque>
#include <vector>

class QDeadlineTimer;

/// What was studied on one day.
struct DayTotal
{
    QDate day; ///< invalid where the record has no date
    qint64 seconds = 0;
    qint64 answers = 0; ///< more than one session's count can hold
};

/// One session, as the record has it.
struct HistorySession
{
    QStringView day;       ///< "yyyy/mm/dd"
    QStringView startTime; ///< "hh:nn:ss"
    QStringView fileName;
    qint64 seconds = 0; ///< duration
    int answers = 0;
};

/// The history of one user over whole weeks, as far as it was read: as lines of text, a heading for each day, newest
/// first, and below it its sessions, earliest first. A million sessions are nothing special, so they are kept in few
/// bytes, and a line becomes text when it is asked for.
class History
{
  public:
    History() = default;

    /// @param weeks  1 or more; the span has 7 days a week, the last of them endDate
    History(const QDate &endDate, int weeks) : m_endDate(endDate), m_weeks(weeks) {}

    /// Appends a session that comes after those before it.
    void Append(const HistorySession &session);

    /// Adds to the totals, which are not those of the lines: see TotalTime.
    void AddToTotals(qint64 seconds, qint64 answers);

    const QDate &EndDate() const
    {
        return m_endDate;
    }

    /// First day of the span.
    QDate StartDate() const
    {
        return m_endDate.addDays(1 - qint64(m_weeks) * 7);
    }

    /// 0 where there is no span.
    int Weeks() const
    {
        return m_weeks;
    }

    int LineCount() const
    {
        return int(m_days.size() + m_sessions.size());
    }

    /// @param line  0 to LineCount() - 1
    QString Line(int line) const;

    /// The days with sessions, newest first.
    const std::vector<DayTotal> &Days() const
    {
        return m_days;
    }

    /// "1時間 5分 9秒": the plain sum of all rows, in which a session of less than no time lessens it, but never less
    /// than nothing.
    QString TotalTime() const;

    /// Decimal.
    QString TotalAnswers() const;

  private:
    struct Session
    {
        qint64 seconds;
        int answers;
        int startTime; // an index of m_texts, as the next
        int fileName;
    };

    int IndexOf(QStringView text);

    QDate m_endDate;
    int m_weeks = 0;
    std::vector<DayTotal> m_days;
    std::vector<int> m_headings;           // the days' headings: their numbers among the lines
    QHash<size_t, QString> m_headingTexts; // of days that have no date
    QString m_lastDay;                     // as the record has it
    std::deque<Session> m_sessions;        // of all days; it grows without moving what it holds
    std::deque<QString> m_texts;           // of the sessions, each once
    QHash<QStringView, int> m_indexes;     // of m_texts, of whose texts a copy of this shares the characters
    qint64 m_totalSeconds = 0;
    qint64 m_totalAnswers = 0;
};

/// Reads the history of one user, span by span, so that nothing has to wait for a long one.
class HistoryReader
{
  public:
    HistoryReader(StudyDatabase &database, const QString &userName) : m_database(database), m_userName(userName) {}

    /// Drops what was read, and begins with another history. @param weeks  1 or more
    void Begin(const QDate &endDate, int weeks);

    /// Reads on until a moment, but at least one span. After a database fault the history is empty; the user has been
    /// told once, by the first statement that failed.
    /// @return whether there is more to read
    bool GoOn(const QDeadlineTimer &until);

    /// What was read up to now.
    const History &Result() const
    {
        return m_history;
    }

    /// Last day of what is still to be read.
    const QDate &UnreadUpTo() const
    {
        return m_unread.EndDate();
    }

    /// Whether the database failed.
    bool HasFailed() const
    {
        return m_hasFailed;
    }

  private:
    bool ReadSpan(const QDate &endDate, int dayCount, qsizetype *sessions);

    StudyDatabase &m_database;
    QString m_userName;
    History m_history;
    SessionSpans m_unread;
    bool m_hasFailed = false;
};

/// Hours, only when there are any, minutes and seconds: "1時間 5分 9秒".
QString HoursMinutesSeconds(qint64 seconds);

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
