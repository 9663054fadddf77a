// SPDX-FileCopyrightText: 2026 The Kotoban developers
// SPDX-License-Identifier: MIT

#include "store/Sqlite3Func.h"

#include "base/modFile.h"
#include "store/Sqlite3.h"

#include <QVarLengthArray>

#include <sqlite3.h>

using namespace Qt::Literals::StringLiterals;

namespace {

/// Buffer for building a row in UTF-8.
using RowBytes = QVarLengthArray<char, 256>;

void Append(QByteArrayView text, RowBytes *row)
{
    row->append(text.data(), text.size());
}

/// Appends a value of the current row. Integers are truncated to 32 bits, which are enough for a number of answers and
/// for the sum of those of all sessions.
void AppendValue(sqlite3_stmt *statement, int column, RowBytes *row)
{
    switch (SQLite3ColumnType(statement, column)) {
    case SQLITE_INTEGER:
        Append(QByteArray::number(SQLite3ColumnInt(statement, column)), row);
        break;
    case SQLITE_FLOAT:
        Append(QByteArray::number(SQLite3ColumnDouble(statement, column), 'g', 15), row);
        break;
    case SQLITE_TEXT:
    case SQLITE_BLOB:
        Append(SQLite3ColumnText(statement, column), row);
        break;
    default:
        break;
    }
}

void AppendName(sqlite3_stmt *statement, int column, RowBytes *row)
{
    Append(SQLite3ColumnName(statement, column), row);
}

/// Calls append for each column of the current row and joins the results by TAB.
QString JoinColumns(sqlite3_stmt *statement, void (*append)(sqlite3_stmt *, int, RowBytes *))
{
    RowBytes row;
    const int columns = SQLite3ColumnCount(statement);
    for (int column = 0; column < columns; ++column) {
        if (column > 0)
            row.push_back('\t');
        append(statement, column, &row);
    }
    return QString::fromUtf8(row.data(), row.size());
}

} // namespace

StudyDatabase::StudyDatabase(SystemServices &services) : m_services(services) {}

StudyDatabase::~StudyDatabase()
{
    Close();
}

int StudyDatabase::Open(const QString &path)
{
    m_isPowerSafe = false;
    // SQLite also opens the journal and log files beside a database.
    for (const QStringView ending : {u"", u"-journal", u"-wal", u"-shm"})
        if (WriteRefusal(path + ending))
            return SQLITE_CANTOPEN;
    return SQLite3Open(path, &m_handle);
}

void StudyDatabase::Close()
{
    SQLite3Close(m_handle);
    m_handle = nullptr;
}

/// Makes SQLite also sync the folder after a commit removes its journal; a journal that reappeared after a power cut
/// would roll back a completed session. The pragma reads the database, so it fails while that is locked or corrupt; it
/// is then retried before the next statement, which reports the fault.
void StudyDatabase::MakePowerSafe()
{
    if (m_isPowerSafe)
        return;
    SQLite3Statement statement;
    m_isPowerSafe = SQLite3Prepare16V2(m_handle, u"pragma synchronous=extra"_s, statement.Address()) == SQLITE_OK &&
                    SQLite3Step(statement) == SQLITE_DONE;
}

int StudyDatabase::Prepare(const QString &sql, const QStringList &names, sqlite3_stmt **statement)
{
    for (const QString &name : names)
        if (name.contains(u'\''))
            return SQLITE_ERROR;
    MakePowerSafe();
    return SQLite3Prepare16V2(m_handle, sql, statement);
}

void StudyDatabase::ShowFault(const QString &message)
{
    if (!m_isSilent)
        m_services.ShowMessage(message);
}

bool StudyDatabase::LacksTable(const QString &name)
{
    SQLite3Statement statement;
    const QString sql = u"select count(*) from sqlite_master where name = '"_s + name + u"' collate nocase"_s;
    const bool lacksIt = Prepare(sql, {name}, statement.Address()) == SQLITE_OK &&
                         SQLite3Step(statement) == SQLITE_ROW && SQLite3ColumnInt(statement, 0) == 0;
    return lacksIt;
}

bool StudyDatabase::SQLite3NonQuery(const QString &sql, const QStringList &names)
{
    SQLite3Statement statement;
    if (Prepare(sql, names, statement.Address()) == SQLITE_OK) {
        const int result = SQLite3Step(statement);
        if (result == SQLITE_BUSY)
            ShowFault(u"The database file is locked"_s);
        if (statement.Finalize() == SQLITE_OK && result == SQLITE_DONE)
            return true;
    }
    ShowFault(u"Err:SQLite3 NonQuery"_s);
    return false;
}

bool StudyDatabase::Query(const QString &sql, const QStringList &names, const std::function<bool(sqlite3_stmt *)> &take)
{
    SQLite3Statement statement;
    Prepare(sql, names, statement.Address());
    int result = SQLite3Step(statement);
    while (result == SQLITE_ROW && take(statement))
        result = SQLite3Step(statement);
    const bool isRead = result == SQLITE_DONE || result == SQLITE_ROW;
    if (!isRead)
        ShowFault(sql + u"\r\nSQLite3Step returned "_s + QString::number(result));
    const int finalized = statement.Finalize();
    if (finalized != SQLITE_OK)
        ShowFault(u"Err:SQLite3 Query ErrCode="_s + QString::number(finalized));
    return isRead && finalized == SQLITE_OK;
}

bool StudyDatabase::SQLite3Query(const QString &sql, ResultTable *table, const QStringList &names)
{
    table->assign(1, QString());
    return Query(sql, names, [table](sqlite3_stmt *row) {
        if (table->size() == 1)
            table->front() = JoinColumns(row, AppendName);
        table->push_back(JoinColumns(row, AppendValue));
        return true;
    });
}

bool StudyDatabase::SQLite3Query(const QString &sql, const std::function<bool(const QString &)> &take,
                                 const QStringList &names)
{
    return Query(sql, names, [&take](sqlite3_stmt *row) { return take(JoinColumns(row, AppendValue)); });
}

QString StudyDatabase::SQLite3GetColumn(const ResultTable &table, int row, const QString &name)
{
    const QStringList names = table.front().split(u'\t');
    const qsizetype column = names.indexOf(name);
    if (column >= 0)
        return table[size_t(row)].section(u'\t', column, column);
    ShowFault(u"Error!\r\n  Cannot find col["_s + name + u"]\r\n  cols=["_s + names.join(u"]  cols=["_s) + u']');
    return QString();
}
