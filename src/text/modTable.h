// Tables that other programs write as text: rows of cells with a character between them (CSV, TSV). Rows and columns
// are numbered from 1.
#pragma once

#include <QList>
#include <QString>
#include <QStringView>

#include <vector>

/// The cells of a table: one contiguous text and where its cells end, so that a table of millions of cells is no
/// burden.
class Table
{
  public:
    int RowCount() const
    {
        return int(m_rows.size());
    }

    /// Cells of the widest row.
    int ColumnCount() const
    {
        return m_columnCount;
    }

    /// Cells of one row, at least 1: rows need not be alike.
    int CellCount(int row) const;

    /// A cell; empty where the row has none in that column. The view is valid until the table changes.
    QStringView Cell(int row, int column) const;

    /// The number by which a spreadsheet knows a row: blank rows, which are left out here, and header lines count too.
    int NumberOf(int row) const
    {
        return m_rows[size_t(row) - 1].number;
    }

    /// Rows that have more or fewer cells than the first one.
    int UnevenRows() const;

  private:
    friend class TableReader;

    struct Row
    {
        qint32 firstCell; // place in m_cellEnds
        qint32 number;
    };

    QString m_text;
    std::vector<qint32> m_cellEnds; // in m_text; a cell starts where the one before it ends
    std::vector<Row> m_rows;
    int m_columnCount = 0;
};

/// How the rows of a text are to be read.
struct TableFormat
{
    QString separator;    ///< between two cells; empty while it is unknown
    bool isHtml = false;  ///< cells are HTML and become plain text
    QList<int> leftOut{}; ///< columns that are not read, by their numbers in the text
    qsizetype start = 0;  ///< where the first row starts
    int firstNumber = 1;  ///< the number of the first row
};

/// Reads rows as RFC 4180 has them, and what people's programs make of it:
///
///     rows = *( row ( CR LF / LF / CR ) )       the end of the last may be missing
///     row  = cell *( separator cell )
///     cell = DQUOTE *( any character, DQUOTE twice ) DQUOTE *" "
///          / *( any character but the separator, CR and LF )
///
/// A cell that begins with a quote and goes on behind the closing one, "so" as a speaker is quoted, is of the second
/// kind, where the quotes stand for themselves. So is, unless comma or semicolon separate, one whose quote never
/// closes, or closes only behind lines that each have as many separators as the first. Rows of nothing but blanks are
/// left out.
/// @return false when a quoted cell never ends; errorLine is then the 1-based line of the text that it begins on, and
/// the table is empty
bool ReadTable(const QString &text, const TableFormat &format, Table *table, int *errorLine);

/// Which of tab, comma and semicolon stands between the cells of some rows, as far as the first of them tell. Tab wins
/// where all rows have as many, since it is in no sentence, unless another makes a table with tabs in its quotes; a
/// text without any of them has one column, and gets tab.
QChar GuessSeparator(QStringView rows);
