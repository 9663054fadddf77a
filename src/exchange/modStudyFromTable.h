// SPDX-FileCopyrightText: 2026 The Kotoban developers
// SPDX-License-Identifier: MIT

// Makes the text of a study file from a table: one line per row, with the cells of some columns in "[ ]". StudyFromText
// makes the file of it; frmTable asks the questions.
#pragma once

#include "exchange/modTable.h"

#include <QList>
#include <QString>
#include <QStringList>

#include <limits>
#include <utility>
#include <vector>

class QDeadlineTimer;

constexpr int PreviewRows = 20; // rows of a table, and lines of its study file, shown in the preview

/// What becomes of a column.
enum class ColumnUse
{
    Hide,  ///< its cells become blanks
    Show,  ///< they stand in the lines as they are
    Leave, ///< they are left out
};

/// A column of the table, numbered from 1.
struct TableColumn
{
    int column;
    ColumnUse use;

    bool operator==(const TableColumn &) const = default;
};

/// How the lines are made.
struct TableOptions
{
    QList<TableColumn> columns;              ///< in the order of the lines; columns that are missing follow, shown
    QString between = QString(1, u'\u3000'); ///< inserted between cells; by default an ideographic space
    bool skipsFirstRow = false;
};

/// The columns in their order, of which the last with any text in the rows shown is hidden. Columns missing from the
/// first row count only if that has a single column, or if no other column has text, because a separator within a text
/// also starts a column. None is hidden if cells contain a cloze, which hides words by itself.
QList<TableColumn> ColumnsByDefault(const Table &table);

/// Whether the first row looks like the heading of the rows shown: each cell is a usual heading, or a column has only
/// numbers below something else, or all is of one kind, Latin or Japanese, and a column below only of the other.
/// "English" beside "英語" is no heading, but a word and its meaning.
bool GuessHeading(const Table &table);

/// The lines of a study file, of any characters and length.
struct TableStudyText
{
    QString text;                  ///< each line ends with CR LF
    std::vector<int> rowNumbers;   ///< by line, from [0]: the number of its row in the table
    qsizetype bracketsWidened = 0; ///< brackets in cells, now full-width
};

/// Makes the lines of all rows that have any text, in slices. Cells are trimmed, and each run of line ends and tabs
/// inside becomes a space. Cells of hidden columns are put in "[ ]"; empty cells are left out. A cloze in a shown
/// column,
/// "{{c1::answer}}" or "{{c1::answer::hint}}", becomes "[answer]". Brackets in a hidden cell or in the answer of a
/// cloze, or unbalanced ones in a shown cell, become full-width; balanced ones in a shown cell are blanks marked by the
/// author of the table. A tab or a line end in the text between cells becomes a space.
class TableTextMaking
{
  public:
    /// @param table  must outlive this object; @param maxRows  number of its rows to read at most
    TableTextMaking(const Table &table, const TableOptions &options, int maxRows = std::numeric_limits<int>::max());

    /// Goes on until the deadline. @return whether there is more to do
    bool GoOn(const QDeadlineTimer &deadline);

    /// How much has been done, from 0 to 1.
    double Done() const;

    /// The lines, once they are complete.
    TableStudyText Take()
    {
        return std::move(m_study);
    }

  private:
    void AddRow(int row);

    const Table &m_table;
    TableOptions m_options;
    int m_lastRow;
    int m_nextRow;
    TableStudyText m_study;
};

/// The result of a whole TableTextMaking.
TableStudyText StudyTextOf(const Table &table, const TableOptions &options,
                           int maxRows = std::numeric_limits<int>::max());

/// The first lines of the study file made of the table's first rows, before character conversion, long lines broken.
QString PreviewText(const Table &table, const TableOptions &options);

/// Why no study file can be made yet: it would have no blank, or the text between cells cannot be written. Empty if one
/// can.
/// @param preview  from PreviewText; may contain blanks marked in the table itself
QString PreviewHint(const Table &table, const TableOptions &options, const QString &preview);

/// The name of a study file without ".txt", from typed text or the name of the table: surrounding spaces and ".txt" are
/// removed, and characters that a file name or the record of sessions cannot hold are replaced.
QString StudyFileTitle(const QString &typed);

/// Complete texts for the user, lines separated by CR LF.

/// Why no study file may have a name; empty if one may. @param title  as StudyFileTitle gives it
QString TitleRefusal(const QString &title);

/// @param path  of the existing file
QString ReplaceStudyFileQuestion(const QString &path);

/// What the report of a study file says about its table; may be empty.
QString TableRemarks(const Table &table, const TableStudyText &study);
