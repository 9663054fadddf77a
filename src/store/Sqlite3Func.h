// The study database: statements without and with rows, and the text table that rows come back in. Every fault is shown
// at once in a plain message box; callers only learn whether it worked. There is one connection, one statement at a
// time, and a locked database is not tried again.
#pragma once

#include "platform/modSystemServices.h"

#include <QString>
#include <QStringList>
#include <QVarLengthArray>

#include <vector>

struct sqlite3;
struct sqlite3_stmt;

/// Rows of a query: row 0 is the header, the column names joined by TAB; rows 1..n are the values joined by TAB.
/// Without rows there is only row 0, and it is empty.
using ResultTable = std::vector<QString>;

class StudyDatabase
{
  public:
    /// @param services  shows the faults
    explicit StudyDatabase(SystemServices &services);
    ~StudyDatabase();
    Q_DISABLE_COPY_MOVE(StudyDatabase)

    /// @return SQLite's result code, 0 on success; SQLITE_CANTOPEN where it or what lies beside it is no regular
    /// file
    int Open(const QString &path);

    /// Closes the connection. Statements fail from then on. Closing twice does nothing.
    void Close();

    /// Whether a database that can be read has no table or view of that name, in letters of either case. Nothing is
    /// shown: the next statement tells of a database that cannot be read.
    bool LacksTable(const QString &name);

    /// Runs a statement that returns no rows. Of a text with several statements only the first is looked at.
    /// @param names  texts that were put into it between single quotes. One that holds a "'" itself would end there,
    ///   and what follows it would be read as SQL: such a statement counts as one that cannot be prepared.
    /// @return whether it was carried out, and is on the disk for good; if not, the database is as before and the
    /// learner has been told
    bool SQLite3NonQuery(const QString &sql, const QStringList &names = {});

    /// Runs a statement that returns rows.
    /// @param names  as above
    /// @param table  the rows up to a fault, if there is one; the learner has then been told
    /// @return whether there was no fault
    bool SQLite3Query(const QString &sql, ResultTable *table, const QStringList &names = {});

    /// One value of a result table by the name of its column.
    /// @param row  1..n for a value
    /// @return empty, after a message, when the table has no such column; empty too for an empty row
    QString SQLite3GetColumn(const ResultTable &table, int row, const QString &name);

    /// The place of a column in a result table, 0 for the first. For many rows this and FieldOf are quicker than the
    /// above.
    /// @return -1, after the same message, when the table has no such column
    int FindColumn(const ResultTable &table, QStringView name);

  private:
    void MakePowerSafe();
    int Prepare(const QString &sql, const QStringList &names, sqlite3_stmt **statement);

    SystemServices &m_services;
    sqlite3 *m_handle = nullptr;
    bool m_isPowerSafe = false; ///< a statement that was carried out outlives a power cut
};

/// The values of one row of a result table, which must outlive this.
class RowValues
{
  public:
    RowValues(const ResultTable &table, int row);

    /// @param column  as FindColumn gives it @return empty for column -1, and in an empty row
    QStringView operator[](int column) const
    {
        return column >= 0 && column < m_values.size() ? m_values[column] : QStringView();
    }

  private:
    QVarLengthArray<QStringView, 8> m_values;
};
