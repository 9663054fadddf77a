// SPDX-FileCopyrightText: 2026 The Kotoban developers
// SPDX-License-Identifier: MIT

// Reads tables that other programs write as text: rows of cells with a separator between them (CSV, TSV). Rows and
// columns are numbered from 1.
#pragma once

#include "exchange/modHtmlText.h"

#include <QSet>
#include <QString>
#include <QStringList>
#include <QStringView>

#include <limits>
#include <utility>
#include <vector>

class QDeadlineTimer;

/// The cells of a table: one contiguous text and the positions where cells end, so that a table may have millions of
/// cells.
class Table
{
  public:
    int RowCount() const
    {
        return int(m_rows.size());
    }

    /// Number of cells in the widest row.
    int ColumnCount() const
    {
        return m_columnCount;
    }

    /// Number of cells in a row, at least 1. Rows may differ.
    int CellCount(int row) const
    {
        return RowAt(row).cellCount;
    }

    /// A cell; empty if the row has none in that column. The view is valid until the table changes.
    QStringView Cell(int row, int column) const;

    /// The row's number as a spreadsheet would show it, which also counts header lines and the blank rows that are
    /// skipped here.
    int NumberOf(int row) const
    {
        return RowAt(row).number;
    }

    /// Number of rows that have more or fewer cells than the first one.
    int UnevenRows() const;

    /// Removes all rows and keeps their memory for others. Giving back that of a long table takes tens of milliseconds.
    void Clear();

  private:
    friend class TableReader;

    struct Row
    {
        qint32 firstCell; // index in m_cellEnds
        qint32 cellCount;
        qint32 number;
    };

    const Row &RowAt(int row) const
    {
        return m_rows[size_t(row) - 1];
    }

    QString m_text;
    std::vector<qint32> m_cellEnds; // positions in m_text; a cell starts where the previous one ends
    std::vector<Row> m_rows;
    int m_columnCount = 0;
};

/// How to read the rows of a text.
struct TableFormat
{
    QString separator;             ///< between two cells; empty while unknown
    bool isHtml = false;           ///< cells are HTML, to be converted to plain text
    bool isGuarded = true;         ///< cells may be as GuardedCell writes them
    QSet<int> leftOut{};           ///< columns to skip, by their numbers in the text
    qsizetype start = 0;           ///< position where the first row starts
    int firstNumber = 1;           ///< spreadsheet number of the first row, see Table::NumberOf
    PictureNameOf pictureNameOf{}; ///< if given, names the pictures of the cells
};

/// Reads rows in slices, as in RFC 4180, tolerating common deviations:
///
///     rows = *( row ( CR LF / LF / CR ) )       the last line ending may be missing
///     row  = cell *( separator cell )
///     cell = DQUOTE *( any character, DQUOTE twice ) DQUOTE *" "
///          / *( any character but the separator, CR and LF )
///
/// The apostrophe that GuardedCell puts before a formula is taken off again, once, if the cells may have one.
/// A cell with text after its closing quote ("Hi" she said) is of the second kind, whose quotes are literal. If the
/// separator is neither comma nor semicolon, so is a cell whose quote is never closed, or is closed only in a later
/// line after separators, all these lines having equally many. Blank rows are skipped.
class TableReader
{
  public:
    /// @param text  must outlive this object
    /// @param memory  a table whose rows are not needed
    TableReader(QStringView text, const TableFormat &format, Table memory = Table());

    /// Goes on until the deadline, or until the table has some rows. @return whether there is more to do
    bool GoOn(const QDeadlineTimer &deadline, int mostRows = std::numeric_limits<int>::max());

    /// How much has been read, from 0 to 1.
    double Done() const;

    /// The rows so far.
    const Table &Rows() const
    {
        return m_table;
    }

    Table Take()
    {
        return std::move(m_table);
    }

    /// 1-based number of the line on which a quoted cell begins that never ends; 0 if there is none. Counts the lines.
    int ErrorLine() const;

    /// Those of the separators that are guessed which occurred inside a quoted cell.
    const QStringList &QuotedSeparators() const
    {
        return m_quotedSeparators;
    }

  private:
    enum class Quoted
    {
        Ends,
        IsNone, ///< not a quoted cell: the quotes are text
        NeverEnds,
    };

    void ReadNextCell();
    bool ReadCell();
    Quoted ReadQuotedCell();
    Quoted TakeQuotedCell();
    bool HoldsWholeRows(qsizetype end) const;
    bool EndsCell(qsizetype at) const;
    void EndCell();
    void EndRow();

    QStringView m_source;
    TableFormat m_format;
    bool m_isCsv;
    QStringList m_quotedSeparators;
    qsizetype m_at;
    int m_number;     // of the row
    int m_column = 0; // of the last cell that was read of the row
    qsizetype m_rowStart = 0;
    qint32 m_firstCell = 0; // of the row
    bool m_isGood = true;   // whether all quoted cells end
    Table m_table;
};

/// The rows of a whole TableReader.
/// @return false if a quoted cell never ends; errorLine is then the 1-based line on which it begins, and the table is
/// empty
bool ReadTable(const QString &text, const TableFormat &format, Table *table, int *errorLine);

/// A cell as it is written to a table, which may come from a stranger's study file: an apostrophe is put before what a
/// spreadsheet could run, that is, a cell that begins with "=", or with + - @ TAB or CR and contains one of ( | !.
/// Apostrophes that already stand before such a beginning make no difference, so that ReadTable gives every cell back.
QString GuardedCell(QStringView cell);

/// A field in double quotes, those in it doubled.
QString Quoted(const QString &field);

/// Such a cell as a field of a table with commas, in quotes where it needs them. @param text  without line ends
QString CsvField(QStringView text);

/// Guesses from the first rows what separates the cells: tab, comma, semicolon, or a hyphen, an en dash or an em dash
/// between two spaces. Tab wins if all rows have the same number of tabs, as tabs do not occur in sentences, unless
/// another separator gives an even table with the tabs inside quotes. A text without any of them has a single column
/// and gets tab.
QString GuessSeparator(QStringView rows);
