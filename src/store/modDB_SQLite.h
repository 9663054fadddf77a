// The record of study sessions: table t_kotoban, one row a session, keyed by start date, user name and start time. A
// row is inserted when the study of a file begins and completed with its end and its answers when it ends.
//
// Names go into the statements as they stand. A statement with a name that holds a "'" fails with the message of the
// access layer, and nothing else happens; that is meant.
#pragma once

#include "store/Sqlite3Func.h"

/// The statements that make the table and the index that serves the history, in their order.
extern const QStringList KotobanSchema;

/// Makes the table in a database that lacks it. @return whether it is there; if not, the learner has been told
bool DBCreateKotoban(StudyDatabase &database);

/// Inserts a session's row: its start date and time, the user and the file's title.
void DBInsRecKotoban(StudyDatabase &database, const QDateTime &sessionStart, const QString &userName,
                     const QString &fileName);

/// Completes a session's row with its end, which is now, and the number of answers shown. Without such a row nothing
/// happens.
void DBUpdRecKotoban(StudyDatabase &database, const SystemServices &clock, const QDateTime &sessionStart,
                     const QString &userName, int answerCount);

/// Sessions in which something was answered, of one user over whole days.
/// @param endDate, dayCount  the span: dayCount days, the last of them endDate
/// @param table  columns ymd_sta, hms_sta, file_name, dt_end, num_answer; only an empty row 0 when there are none
/// @param ascending  whether the days run oldest first; within a day the sessions always run earliest first
/// @return whether the query was carried out, with rows or without; if not, the learner has been told
bool DBSelRecKotoban(StudyDatabase &database, const QDate &endDate, int dayCount, const QString &userName,
                     ResultTable *table, bool ascending);

/// Seconds studied in those sessions. One that goes past midnight counts whole for the day of its start.
qint64 DBSumTimeKotoban(StudyDatabase &database, const QDate &endDate, int dayCount, const QString &userName);

/// Answers shown in those sessions; 0 when there are none.
int DBSumAnsKotoban(StudyDatabase &database, const QDate &endDate, int dayCount, const QString &userName);

/// Seconds from a session's start to its end, each as stored; 0 when one of them is no date and time.
/// @param day, startTime  "yyyy/mm/dd", "hh:nn:ss"
/// @param end  "yyyy/mm/dd hh:nn:ss"
qint64 SecondsBetween(QStringView day, QStringView startTime, QStringView end);

/// The statements, whole, as the functions above run them.
QString InsertStatement(const QDateTime &sessionStart, const QString &userName, const QString &fileName);
QString UpdateStatement(const QDateTime &now, const QDateTime &sessionStart, const QString &userName, int answerCount);
QString SelectStatement(const QDate &endDate, int dayCount, const QString &userName, bool ascending);
QString SumTimeStatement(const QDate &endDate, int dayCount, const QString &userName);
QString SumAnswersStatement(const QDate &endDate, int dayCount, const QString &userName);
