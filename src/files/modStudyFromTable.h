// Makes a study file from a table: a line a row, with the cells of some columns in "[ ]". First the cells are taken
// from the table, then their characters are converted (modConvertText), then lines are made of them; whatever cannot be
// written as it is, is told with the number of its row in the table. The asking is frmTable's.
#pragma once

#include "text/modConvertText.h"
#include "text/modTable.h"

#include <QByteArray>
#include <QList>
#include <QString>

#include <limits>
#include <vector>

constexpr int PreviewRows = 20; // of a table, and lines of its study file, that are shown

/// How the lines are made.
struct TableOptions
{
    QList<bool> isHidden;                    ///< by column, from the first; columns behind the end are shown
    QString between = QString(1, u'\u3000'); ///< stands between two cells, first an ideographic space
    bool skipsFirstRow = false;
};

/// The columns that are hidden unless the user wants others: the last with any text in the rows that are shown. Columns
/// that the first row lacks count only where that has a single one, or where no other has text: a separator in the text
/// of one row makes a column too. None where cells hold a cloze, which hides words by itself.
QList<bool> HiddenAtFirst(const Table &table);

/// Cells as one text that can be converted as a whole.
struct TableCells
{
    QString text;                  ///< rows end with CR LF, and TAB stands between cells, of which none holds either
    std::vector<int> rowNumbers;   ///< by line of the text, the row in the table
    qsizetype bracketsWidened = 0; ///< brackets that were in answers of a cloze
};

/// The cells of the rows that have any text. Blanks at the ends of a cell go; line ends and tabs within become a blank.
/// A cloze in a shown column, "{{c1::answer}}" or "{{c1::answer::hint}}", becomes "[answer]".
/// @param mostRows  of the table that are looked at
TableCells CellsOf(const Table &table, const TableOptions &options, int mostRows = std::numeric_limits<int>::max());

/// The lines of a study file.
struct TableStudyText
{
    QString text; ///< CR LF behind each line
    int lines = 0;
    int blanks = 0;                ///< "[ ]" in them
    qsizetype bracketsWidened = 0; ///< brackets that were in cells, and are full-width now
    int longRows = 0;              ///< that became several lines
    int unbreakableRow = 0;        ///< row of the table whose line is too long and has no place to break it; 0 for none
    QString unbreakable;           ///< the beginning of that line
};

/// Makes the lines. Cells of hidden columns stand in "[ ]", empty cells are left out. Brackets within a hidden cell, or
/// in a shown one where they do not pair, become full-width; those that pair are blanks that the table's writer marked.
/// A tab or a line end between cells becomes a blank.
/// Lines over the limit are broken at blanks and behind stops, or else between columns.
TableStudyText StudyTextOf(const TableCells &cells, const TableOptions &options);

/// The first lines as StudyTextOf makes them of the table's first rows, before their characters are converted.
QString PreviewText(const Table &table, const TableOptions &options);

/// What keeps a study file from being made: that it would hold no blank. Empty when there are some.
/// @param preview  as PreviewText has it, where blanks may be marked already
QString PreviewHint(const Table &table, const TableOptions &options, const QString &preview);

/// The lines as bytes of a study file.
/// @return false when it would be refused as a whole, or holds nothing to learn; message then holds the whole of it for
/// the user
bool EncodeStudyText(const TableStudyText &study, QByteArray *bytes, QString *message);

/// Writes the study file. One that is there already is first kept under a free name.
/// @param keptName  name of the old file now; empty when there was none
/// @return false on failure; message then holds the whole of it for the user, and the folder is as it was
bool WriteStudyFile(const QString &path, const QByteArray &bytes, QString *keptName, QString *message);

/// A name for a study file without its ".txt", from what was typed or from the name of the table: blanks at its
/// ends and ".txt" go, and what a file's name or the record of sessions cannot hold is replaced.
QString StudyFileTitle(const QString &typed);

/// @param title  as StudyFileTitle gives it
/// @return false when no study file can have that name; message then holds the reason
bool CheckStudyFileTitle(const QString &title, QString *message);

/// @param between  becomes what code page 932 has of it
/// @return false when that lacks a character of it; message then holds the whole of it for the user
bool ConvertBetween(QString *between, QString *message);

/// The texts for the user, whole, their lines separated by CR LF.

/// @param cells  as they were before the conversion
QString TableAccentsQuestion(const TableCells &cells, const ConvertedText &converted);
QString UnwritableCellsMessage(const TableCells &cells, const ConvertedText &converted);
QString UnbreakableRowMessage(const TableStudyText &study);

/// @param path  of the file that is there
QString ReplaceStudyFileQuestion(const QString &path);
QString StudyFileNotWrittenMessage(const QString &path, const QString &reason);

/// @param keptName  of the file that was there before, empty when there was none
QString StudyFileMadeMessage(const QString &fileName, const QString &keptName, const Table &table,
                             const TableStudyText &study, const ConvertedText &converted);
