// SPDX-FileCopyrightText: 2026 The Kotoban developers
// SPDX-License-Identifier: MIT

// Makes a study file from a table: one line per row, with the cells of some columns in "[ ]". The cells are taken from
// the table, their characters converted (modConvertText), and lines made of them; whatever cannot be written is
// reported with its row number in the table. frmTable asks the questions.
#pragma once

#include "base/modFile.h"
#include "exchange/modConvertText.h"
#include "exchange/modTable.h"
#include "text/modReadText.h"

#include <QByteArray>
#include <QList>
#include <QString>

#include <limits>
#include <vector>

constexpr int PreviewRows = 20; // rows of a table, and lines of its study file, shown in the preview

/// Whether a column, numbered from 1, is hidden. @param isHidden  by column; columns past the end are shown
inline bool IsHidden(const QList<bool> &isHidden, int column)
{
    return isHidden.value(column - 1);
}

/// How the lines are made.
struct TableOptions
{
    QList<bool> isHidden;                    ///< see IsHidden
    QString between = QString(1, u'\u3000'); ///< inserted between cells; by default an ideographic space
    bool skipsFirstRow = false;
};

/// The columns hidden by default: the last with any text in the rows shown. Columns missing from the first row count
/// only if that has a single column, or if no other column has text, because a separator within a text also starts a
/// column. None if cells contain a cloze, which hides words by itself.
QList<bool> HiddenByDefault(const Table &table);

/// Cells as one text, to be converted as a whole.
struct TableCells
{
    QString text;                   ///< rows end with CR LF, cells are separated by TAB; no cell contains either
    std::vector<int> rowNumbers{0}; ///< by line of the text, from [1]: its row number in the table
    qsizetype bracketsWidened = 0;  ///< brackets in the answers of clozes, now full-width
};

/// The cells of all rows that have any text. Cells are trimmed; each run of line ends and tabs inside becomes a space.
/// A cloze in a shown column, "{{c1::answer}}" or "{{c1::answer::hint}}", becomes "[answer]".
/// @param maxRows  number of rows of the table to read at most
TableCells CellsOf(const Table &table, const TableOptions &options, int maxRows = std::numeric_limits<int>::max());

/// The lines of a study file.
struct TableStudyText
{
    QString text; ///< each line ends with CR LF
    int lines = 0;
    int blanks = 0;                ///< number of "[ ]"
    qsizetype bracketsWidened = 0; ///< brackets in cells, now full-width
    int longRows = 0;              ///< rows broken into several lines
    int unbreakableRow = 0;        ///< first row of the table whose line is too long and cannot be broken; 0 for none
    QString unbreakable;           ///< beginning of that line
};

/// Makes the lines. Cells of hidden columns are put in "[ ]"; empty cells are left out. Brackets in a hidden cell, or
/// unbalanced ones in a shown cell, become full-width; balanced ones in a shown cell are blanks marked by the author of
/// the table. A tab or a line end in the text between cells becomes a space.
/// Lines over the limit are broken at spaces and after punctuation, or failing that between columns.
TableStudyText StudyTextOf(const TableCells &cells, const TableOptions &options);

/// The first lines that StudyTextOf makes of the table's first rows, before character conversion.
QString PreviewText(const Table &table, const TableOptions &options);

/// Why no study file can be made yet: it would have no blank. Empty if it has some.
/// @param preview  from PreviewText; may contain blanks marked in the table itself
QString PreviewHint(const Table &table, const TableOptions &options, const QString &preview);

/// The name of a study file without ".txt", from typed text or the name of the table: surrounding spaces and ".txt" are
/// removed, and characters that a file name or the record of sessions cannot hold are replaced.
QString StudyFileTitle(const QString &typed);

/// Why no study file may have a name, for the user; empty if one may. @param title  as StudyFileTitle gives it
QString TitleRefusal(const QString &title);

/// Complete texts for the user, lines separated by CR LF.
QString UnwritableBetweenMessage(const ConvertedText &between);
QString NoBlanksMessage();
QString TableNotEncodedMessage(const TextRefusal &refusal); ///< of EncodeStudyText

/// @param cells  as before the conversion
QString TableAccentsQuestion(const TableCells &cells, const ConvertedText &converted);
QString UnwritableCellsMessage(const TableCells &cells, const ConvertedText &converted);
QString UnbreakableRowMessage(const TableStudyText &study);

/// @param path  of the existing file
QString ReplaceStudyFileQuestion(const QString &path);

/// @param keptPath  of the previous file; empty if there was none
QString StudyFileMadeMessage(const QString &fileName, const QString &keptPath, const Table &table,
                             const TableStudyText &study, const ConvertedText &converted);
