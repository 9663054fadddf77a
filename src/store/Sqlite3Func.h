// SPDX-FileCopyrightText: 2026 The Kotoban developers
// SPDX-License-Identifier: MIT

// Access layer of the study database: runs statements with and without result rows, and returns rows as a text table.
// Every error is shown at once in a plain message box, except while a SilentFaults exists; callers only learn whether
// the call succeeded. There is one connection and one statement at a time; a locked database is an error, without
// retries.
#pragma once

#include "platform/modSystemServices.h"

#include <QString>
#include <QStringList>

#include <functional>
#include <vector>

struct sqlite3;
struct sqlite3_stmt;

/// Result of a query: row 0 is the header, the column names joined by TAB; rows 1..n are the values joined by TAB.
/// A query without result rows gives only row 0, which is then empty.
using ResultTable = std::vector<QString>;

class StudyDatabase
{
  public:
    /// @param services  shows the error messages
    explicit StudyDatabase(SystemServices &services);
    ~StudyDatabase();
    Q_DISABLE_COPY_MOVE(StudyDatabase)

    /// Opens a database, creating it if it does not exist.
    /// @return SQLite's result code, 0 on success; SQLITE_CANTOPEN if it or its journal or log is not a regular file
    int Open(const QString &path);

    /// Closes the connection; all statements fail from then on. Closing twice does nothing.
    void Close();

    /// Whether a readable database has no table or view with that name, ignoring case. False, without a message, for an
    /// unreadable one: the next statement reports that.
    bool LacksTable(const QString &name);

    /// Runs a statement that returns no rows. If the text contains several statements, only the first one is run.
    /// @param names  texts that were inserted into it between single quotes. If one contains "'" itself, which would
    ///   end the literal and turn the rest into SQL, the statement fails as if it could not be prepared.
    /// @return whether it succeeded and is on disk; if not, the database is unchanged and a message was shown
    bool SQLite3NonQuery(const QString &sql, const QStringList &names = {});

    /// Runs a statement that returns rows.
    /// @param table  the result; after an error, the rows read before it
    /// @param names  as above
    /// @return whether it succeeded; if not, a message was shown
    bool SQLite3Query(const QString &sql, ResultTable *table, const QStringList &names = {});

    /// Runs a statement as above, but passes its rows on instead of keeping them. It is finalized before this returns.
    /// @param take  gets the values of a row joined by TAB, must not run a statement itself, and returns whether it
    ///   wants another row; one that wants none does not make the statement fail
    bool SQLite3Query(const QString &sql, const std::function<bool(const QString &)> &take, const QStringList &names);

    /// One value of a result table, by column name.
    /// @param row  1..n
    /// @return empty for an empty row, and, after a message, if there is no such column
    QString SQLite3GetColumn(const ResultTable &table, int row, const QString &name);

  private:
    friend class SilentFaults;

    void MakePowerSafe();
    int Prepare(const QString &sql, const QStringList &names, sqlite3_stmt **statement);
    bool Query(const QString &sql, const QStringList &names, const std::function<bool(sqlite3_stmt *)> &take);
    void ShowFault(const QString &message);

    SystemServices &m_services;
    sqlite3 *m_handle = nullptr;
    bool m_isPowerSafe = false; ///< whether statements that succeed survive a power cut
    bool m_isSilent = false;
};

/// Suppresses a database's messages during its lifetime, for statements that the user did not ask for. Not to be
/// nested.
class SilentFaults
{
  public:
    explicit SilentFaults(StudyDatabase &database) : m_database(database)
    {
        m_database.m_isSilent = true;
    }
    ~SilentFaults()
    {
        m_database.m_isSilent = false;
    }
    Q_DISABLE_COPY_MOVE(SilentFaults)

  private:
    StudyDatabase &m_database;
};
