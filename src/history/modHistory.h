// SPDX-FileCopyrightText: 2026 The Kotoban developers
// SPDX-License-Identifier: MIT

// The study history: the sessions of some weeks as lines of text, their totals, and the report file.
#pragma once

#include "base/modFile.h"
#include "history/modStudySum.h"

#include <vector>

/// One session of a day. Its texts are in the day's `texts`.
struct HistorySession
{
    StudySum sum;
    qsizetype nameAt; ///< where the start time, "hh:nn", ends and the file's name begins
    qsizetype end;    ///< where that ends
};

/// What was studied on one day. Its texts are one string, because a million sessions are possible, and freeing a string
/// for each would take longer than a frame.
struct HistoryDay
{
    QString dayText; ///< "yyyy/mm/dd", as recorded
    QDate day;       ///< invalid if that is not a valid date
    int headingLine; ///< number of the heading's line; the lines of the sessions follow
    StudySum sum = {};
    std::vector<HistorySession> sessions = {};
    QString texts = {}; ///< start time and file name of each session

    /// "hh:nn". @param number  of the session, from 0
    QStringView StartTime(size_t number) const;
    QStringView FileName(size_t number) const;
};

/// The history of one user over whole weeks, as far as it has been read. Its lines are a heading for each day, newest
/// first, followed by that day's sessions, earliest first. A line's text is made on request.
class History
{
  public:
    History() = default;

    /// @param weeks  1 or more; the span is 7 days per week and ends with endDate
    History(const QDate &endDate, int weeks) : m_endDate(endDate), m_weeks(weeks) {}

    /// Appends a session. Sessions must be appended in the order of the lines.
    void Append(const RecordedSession &session);

    /// Adds to the totals, which may differ from the sums of the lines; see TotalTime.
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

    /// 0 if there is no span.
    int Weeks() const
    {
        return m_weeks;
    }

    int LineCount() const
    {
        return m_days.empty() ? 0 : m_days.back().headingLine + 1 + int(m_days.back().sessions.size());
    }

    /// @param line  0 to LineCount() - 1
    QString Line(int line) const;

    /// Whether a line is the heading of a day.
    bool IsHeading(int line) const;

    /// Number of the last line of a session that started in a minute; -1 if there is none.
    int LineOfSession(const QDateTime &start) const;

    /// Number of the heading of the last day in a span; -1 if there is none.
    int HeadingIn(const DaySpan &days) const;

    /// The days with sessions, newest first.
    const std::vector<HistoryDay> &Days() const
    {
        return m_days;
    }

    /// "1時間 5分 9秒": the plain sum of all rows, which a session of negative duration reduces, but never below 0.
    QString TotalTime() const;

    /// Decimal.
    QString TotalAnswers() const;

  private:
    const HistoryDay &DayOfLine(int line) const;

    QDate m_endDate;
    int m_weeks = 0;
    std::vector<HistoryDay> m_days;
    qint64 m_totalSeconds = 0;
    qint64 m_totalAnswers = 0;
};

/// Reads the history of one user in slices, so that nothing has to wait for a long one.
class HistoryReader
{
  public:
    HistoryReader(StudyDatabase &database, const QString &userName) : m_database(database), m_userName(userName) {}

    /// Discards what was read and starts another history. @param weeks  1 or more
    void Begin(const QDate &endDate, int weeks);

    /// Reads until a deadline, but at least one day with sessions, and then the totals of what it has read. After a
    /// database fault the history is empty; the user has been told once, when the first statement failed.
    /// @return whether there is more to read
    bool GoOn(const QDeadlineTimer &until);

    /// What has been read so far.
    const History &Result() const
    {
        return m_history;
    }

    /// Last day that is still unread.
    const QDate &UnreadUpTo() const
    {
        return m_unread.last;
    }

    /// Whether all has been read; false after a fault.
    bool IsComplete() const
    {
        return m_unread.IsEmpty() && !m_hasFailed && m_history.Weeks() > 0;
    }

    /// Whether the database failed.
    bool HasFailed() const
    {
        return m_hasFailed;
    }

  private:
    StudyDatabase &m_database;
    QString m_userName;
    History m_history;
    DaySpan m_unread;
    bool m_hasFailed = false;
};

/// Longest span of a history, in weeks.
constexpr int MaxWeeks = 9999;

/// A number of weeks as the user types it: a whole number from 1 to MaxWeeks. @return 0 for any other text
int ReadWeeks(const QString &text);

/// A session as a line: start, duration, answers, file. Numbers too wide for their field lose their leading digits, so
/// that the columns stay aligned. A control character in the name becomes a blank, also one that was recorded.
/// @param startTime  "hh:nn:ss"; @param seconds  duration
QString HistoryLine(const QString &startTime, qint64 seconds, int answers, const QString &fileName);

/// The heading of a day: "2024/03/05(火)　25分 134問".
QString HistoryHeading(const HistoryDay &day);

/// The span as a sentence: "この1週間は 5日，2時間9分，680問"; one that does not end today names its last day.
QString HistorySentence(const History &history, const QDate &today);

/// Name of the report file. Its date is the day of writing rather than the end of the span, so that reports written on
/// different days never replace each other. Characters of the user name that are not allowed in file names become "_".
QString ReportFileName(const QString &userName, const QDate &today, int weeks);

/// The report: the history's lines and a line of totals, each ended by CR LF.
QString ReportText(const History &history);

/// Writes the report in code page 932, replacing an existing file. After a fault an existing file is unchanged.
FileFault WriteReport(const QString &path, const History &history);

/// Name of the file with the same sessions as a table.
QString TableFileName(const QString &userName, const QDate &today, int weeks);

/// The sessions as a table for spreadsheets, in the order of the lines: a heading, then a row for each session with
/// user, day, start, seconds, answers and file. UTF-8 with a byte order mark, fields as in an exported table.
QByteArray HistoryTable(const History &history, const QString &userName);
