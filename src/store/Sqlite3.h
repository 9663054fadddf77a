// One wrapper for each SQLite call that the program uses. Arguments and results are passed through unchanged; result
// codes are those of the SQLite C interface (0 SQLITE_OK, 5 SQLITE_BUSY, 100 SQLITE_ROW, 101 SQLITE_DONE ...).
#pragma once

#include <QString>

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

QString SQLite3ColumnName(sqlite3_stmt *statement, int column);

int SQLite3ColumnInt(sqlite3_stmt *statement, int column);

double SQLite3ColumnDouble(sqlite3_stmt *statement, int column);

QString SQLite3ColumnText(sqlite3_stmt *statement, int column);
