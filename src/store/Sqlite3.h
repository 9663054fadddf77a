// One wrapper for each SQLite call that the program uses. Arguments and results are passed through unchanged; result
// codes are those of the SQLite C interface (0 SQLITE_OK, 5 SQLITE_BUSY, 100 SQLITE_ROW, 101 SQLITE_DONE ...).
#pragma once

#include <QString>

#include <utility>

struct sqlite3;
struct sqlite3_stmt;

/// Makes the library ready. @return 0 on success, else SQLite's result code; a second call does nothing
int SQLite3Initialize();

/// Opens a database by its path, or makes an empty one where there is none.
int SQLite3Open(const QString &path, sqlite3 **handle);

int SQLite3Close(sqlite3 *handle);

int SQLite3Prepare16V2(sqlite3 *handle, const QString &sql, sqlite3_stmt **statement);

int SQLite3Step(sqlite3_stmt *statement);

int SQLite3Finalize(sqlite3_stmt *statement);

int SQLite3ColumnCount(sqlite3_stmt *statement);

/// Storage class of a value in the present row: 1 INTEGER, 2 FLOAT, 3 TEXT, 4 BLOB, 5 NULL. Columns are numbered from
/// 0.
int SQLite3ColumnType(sqlite3_stmt *statement, int column);

/// In UTF-8, until the statement is finalized.
QByteArrayView SQLite3ColumnName(sqlite3_stmt *statement, int column);

int SQLite3ColumnInt(sqlite3_stmt *statement, int column);

double SQLite3ColumnDouble(sqlite3_stmt *statement, int column);

/// In UTF-8, up to its first NUL, until the next step.
QByteArrayView SQLite3ColumnText(sqlite3_stmt *statement, int column);

/// A statement that is finalized at the end of its scope at the latest.
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

    /// For SQLite3Prepare16V2, once.
    sqlite3_stmt **Address()
    {
        return &m_statement;
    }

    /// @return SQLite's result code: 0, or that of the last step where it failed; 0 when called again
    int Finalize()
    {
        return SQLite3Finalize(std::exchange(m_statement, nullptr));
    }

  private:
    sqlite3_stmt *m_statement = nullptr;
};
