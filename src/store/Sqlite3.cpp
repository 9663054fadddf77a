// SPDX-FileCopyrightText: 2026 The Kotoban developers
// SPDX-License-Identifier: MIT

#include "store/Sqlite3.h"

#include <sqlite3.h>

void SQLite3Configure()
{
    // Only one thread uses SQLite, so it need not lock on every call.
    sqlite3_config(SQLITE_CONFIG_SINGLETHREAD);
}

int SQLite3Initialize()
{
    return sqlite3_initialize();
}

int SQLite3Open(const QString &path, sqlite3 **handle)
{
    return sqlite3_open16(path.utf16(), handle);
}

int SQLite3Close(sqlite3 *handle)
{
    return sqlite3_close(handle);
}

int SQLite3Prepare16V2(sqlite3 *handle, const QString &sql, sqlite3_stmt **statement)
{
    return sqlite3_prepare16_v2(handle, sql.utf16(), int(sql.size()) * 2, statement, nullptr);
}

int SQLite3Step(sqlite3_stmt *statement)
{
    return sqlite3_step(statement);
}

int SQLite3Finalize(sqlite3_stmt *statement)
{
    return sqlite3_finalize(statement);
}

int SQLite3ColumnCount(sqlite3_stmt *statement)
{
    return sqlite3_column_count(statement);
}

int SQLite3ColumnType(sqlite3_stmt *statement, int column)
{
    return sqlite3_column_type(statement, column);
}

QByteArrayView SQLite3ColumnName(sqlite3_stmt *statement, int column)
{
    return sqlite3_column_name(statement, column);
}

int SQLite3ColumnInt(sqlite3_stmt *statement, int column)
{
    return sqlite3_column_int(statement, column);
}

double SQLite3ColumnDouble(sqlite3_stmt *statement, int column)
{
    return sqlite3_column_double(statement, column);
}

QByteArrayView SQLite3ColumnText(sqlite3_stmt *statement, int column)
{
    return reinterpret_cast<const char *>(sqlite3_column_text(statement, column));
}
