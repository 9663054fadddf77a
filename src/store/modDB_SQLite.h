// SPDX-FileCopyrightText: 2026 The Kotoban developers
// SPDX-License-Identifier: MIT

// Record of study sessions: table t_kotoban, one row per session, identified by start date, user name and start time. A
// row is inserted when a session begins and completed with the end time and the number of answers when it ends.
//
// Names are inserted into the statements unescaped. A statement with a name that contains "'" is rejected with the
// message of the access layer, so that the name can neither end its literal nor affect other rows.
#pragma once

#include "store/Sqlite3Func.h"

#include <QDate>

#include <array>

class QDeadlineTimer;

/// A span of whole days.
struct DaySpan
{
    QDate first;
    QDate last;

    /// Whether there is no day in it, as in a default one.
    bool IsEmpty() const
    {
        return !last.isValid() || last < first;
    }
};

/// A session with at least one answer, as recorded. The texts are valid only while the session is being passed on.
struct RecordedSession
{
    QStringView day;       ///< "yyyy/mm/dd"
    QStringView startTime; ///< "hh:nn:ss"
    QStringView fileName;
    QStringView end; ///< "yyyy/mm/dd hh:nn:ss"
    int answers = 0;
};

/// The statements that create the table and its index for the history, in the order in which to run them. Dates and
/// times are local, in the forms "yyyy/mm/dd" and "hh:nn:ss" (nn: minutes), so that their text order is their order in
/// time. dt_end ("yyyy/mm/dd hh:nn:ss") and num_answer, the number of answers shown, are null until the session ends.
inline constexpr std::array<QStringView, 2> KotobanSchema{
    u"create table t_kotoban (ymd_sta text, user_name text, hms_sta text, file_name text, dt_end text, "
    u"num_answer integer)",
    u"create index if not exists i_kotoban_user_start on t_kotoban (user_name, ymd_sta, hms_sta)",
};

/// Creates the table in a database that lacks it. @return whether it succeeded; if not, a message was shown
[[nodiscard]] bool DBCreateKotoban(StudyDatabase &database);

/// The same in an empty database that nobody uses yet, see NewDatabase: without a journal, waiting for the disk once.
/// After a failure the database is to be thrown away.
[[nodiscard]] bool DBFillNewKotoban(StudyDatabase &database);

/// Creates the index in a database that has the table but lacks the index, such as one of another program. The history
/// is only faster with it: where it cannot be created, as in a database that is locked or read-only, nothing is shown.
void DBIndexKotoban(StudyDatabase &database);

/// Inserts a session's row: its start date and time, the user and the title of the file.
void DBInsRecKotoban(StudyDatabase &database, const QDateTime &sessionStart, const QString &userName,
                     const QString &fileName);

/// Completes a session's row with the current time as its end and the number of answers shown. Does nothing if there is
/// no such row. @return whether the statement succeeded
bool DBUpdRecKotoban(StudyDatabase &database, const SystemServices &clock, const QDateTime &sessionStart,
                     const QString &userName, int answerCount);

/// Queries a user's sessions that have at least one answer, over a span of whole days.
/// @param endDate, dayCount  the span: dayCount days, ending with endDate
/// @param table  columns ymd_sta, hms_sta, file_name, dt_end, num_answer; only an empty row 0 if there are no sessions
/// @param ascending  whether the oldest day comes first; within a day the earliest session always does
/// @return whether the query succeeded, even without rows; if not, a message was shown
bool DBSelRecKotoban(StudyDatabase &database, const QDate &endDate, int dayCount, const QString &userName,
                     ResultTable *table, bool ascending);

/// Reads those sessions of a user in the same order, newest day first, as far as the time allows: whole days until a
/// deadline, but at least one that has sessions. No statement is left open in between.
/// @param unread  the days to read; afterwards those that are left, which are none once all is read
/// @param take  gets each session; must not run a statement
/// @return false after a fault, with a message; then unread is unchanged, and some of its sessions were passed on
bool DBSelRecKotoban(StudyDatabase &database, const QString &userName, const QDeadlineTimer &until, DaySpan *unread,
                     const std::function<void(const RecordedSession &)> &take);

/// Seconds studied in those sessions. A session past midnight counts entirely for the day on which it started.
/// @param isRead  receives whether the query succeeded; if not, a message was shown, and the sum is incomplete
qint64 DBSumTimeKotoban(StudyDatabase &database, const QDate &endDate, int dayCount, const QString &userName,
                        bool *isRead = nullptr);

/// Number of answers shown in those sessions; 0 if there are none.
/// @param isRead  as above
int DBSumAnsKotoban(StudyDatabase &database, const QDate &endDate, int dayCount, const QString &userName,
                    bool *isRead = nullptr);

/// Seconds from the start of a session to its end, each as stored; 0 if either is not a valid date and time.
/// @param day, startTime  "yyyy/mm/dd", "hh:nn:ss"
/// @param end  "yyyy/mm/dd hh:nn:ss"
qint64 SecondsBetween(QStringView day, QStringView startTime, QStringView end);

/// The complete statements that the functions above run.
QString InsertStatement(const QDateTime &sessionStart, const QString &userName, const QString &fileName);
QString UpdateStatement(const QDateTime &now, const QDateTime &sessionStart, const QString &userName, int answerCount);
QString SelectStatement(const QDate &endDate, int dayCount, const QString &userName, bool ascending);
QString SumTimeStatement(const QDate &endDate, int dayCount, const QString &userName);
QString SumAnswersStatement(const QDate &endDate, int dayCount, const QString &userName);
