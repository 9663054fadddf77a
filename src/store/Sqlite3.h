// SPDX-FileCopyrightText: 2026 The Kotoban developers
// SPDX-License-Identifier: MIT

// One wrapper per SQLite function that the program uses. Arguments and results are passed through unchanged; result
// codes are those of the SQLite C interface (0 SQLITE_OK, 5 SQLITE_BUSY, 100 SQLITE_ROW, 101 SQLITE_DONE ...).
#pragma once

#include <QString>

#include <utility>

struct sqlite3;
struct sqlite3_stmt;

/// Configures SQLite for a program with one thread. Must come before every other use of SQLite, later it has no effect.
void SQLite3Configure();

/// Initializes SQLite; further calls do nothing. @return 0 on success, else SQLite's result code
int SQLite3Initialize();

/// Opens a database, creating an empty one if it does not exist.
int SQLite3Open(const QString &path, sqlite3 **handle);

int SQLite3Close(sqlite3 *handle);

int SQLite3Prepare16V2(sqlite3 *handle, const QString &sql, sqlite3_stmt **statement);

int SQLite3Step(sqlite3_stmt *statement);

int SQLite3Finalize(sqlite3_stmt *statement);

int SQLite3ColumnCount(sqlite3_stmt *statement);

/// Storage class of a value in the current row: 1 INTEGER, 2 FLOAT, 3 TEXT, 4 BLOB, 5 NULL. Columns are numbered from
/// 0.
int SQLite3ColumnType(sqlite3_stmt *statement, int column);

/// UTF-8, valid until the statement is finalized.
QByteArrayView SQLite3ColumnName(sqlite3_stmt *statement, int column);

int SQLite3ColumnInt(sqlite3_stmt *statement, int column);

double SQLite3ColumnDouble(sqlite3_stmt *statement, int column);

/// UTF-8, up to the first NUL, valid until the next step.
QByteArrayView SQLite3ColumnText(sqlite3_stmt *statement, int column);

/// Owns a statement and finalizes it at the end of its scope.
class SQLite3Statement
{
  public:
    SQLite3Statement() = default;
    ~SQLite3Statement()
    {
        Finalize();
    }
    Q_DISABLE_COPY_MOVE(SQLite3Statement)

    operator sqlite3_stmt *() const
    {
        return m_statement;
    }

    /// Output argument for SQLite3Prepare16V2; use once.
    sqlite3_stmt **Address()
    {
        return &m_statement;
    }

    /// @return 0, or SQLite's result code of the last step if that failed; 0 if called again
    int Finalize()
    {
        return SQLite3Finalize(std::exchange(m_statement, nullptr));
    }

  private:
    sqlite3_stmt *m_statement = nullptr;
};
