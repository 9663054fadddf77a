// A study file for other programs: as text in UTF-8, as notes for Anki, and as a table of its blanks. Its tabs are
// kept, which on the page become two spaces; a line always ends with CR LF, in the notes with LF.
#pragma once

#include "text/modStudyLines.h"

#include <QByteArray>
#include <QString>

#include <functional>

class MarkList;

/// Whether a blank of the file, from 1, is written; all are without it.
using BlankFilter = std::function<bool(int blank)>;

enum class ExportKind
{
    Text,
    Anki,
    Csv,
};

/// The lines with their brackets, in UTF-8 with a byte-order mark. With it every editor, and our own conversion on the
/// way back, knows what it reads; without it a short text in UTF-8 may well be taken for Shift_JIS or EUC.
QByteArray TextExport(const StudyLines &lines);

/// An import file for Anki: headers, then one note a line of the file that has a blank with something in it,
///     text {{c1::answer}} text {{c2::answer}} ...
/// numbered from 1 in each. A field is quoted where Anki would take it for something else. An empty blank stays "[]",
/// and the answer of one that is not wanted stands as text.
QByteArray AnkiExport(const StudyLines &lines, const BlankFilter &isWanted = {});

/// A table with one row a blank, by RFC 4180, in UTF-8 with the byte-order mark without which Excel reads it as
/// Shift_JIS. Columns: number of the line from 1, the text before the blank, its answer, the text behind it; the other
/// blanks of the line stand in the texts with their brackets, so that text, "[", answer, "]" and text are the line.
QByteArray CsvExport(const StudyLines &lines, const BlankFilter &isWanted = {});

/// Full path of an export: the study file's name without ".txt", and "_UTF-8.txt", "_Anki.txt" or ".csv".
QString ExportPath(const QString &folder, const QString &studyFilePath, ExportKind kind);

/// Reads a study file and makes what is to be written.
/// @param onlyHard  notes and table hold only the blanks that are marked in it; without it all
/// @return false after a refusal, which message then holds: the reader's, or that there is no blank to write
bool MakeExport(const QString &studyFilePath, ExportKind kind, QByteArray *bytes, QString *message,
                const MarkList *onlyHard = nullptr);

/// Writes an export; one that is there already is replaced.
/// @return false on failure; message then holds the whole of it for the user, and what was there is still there
bool WriteExport(const QString &exportPath, const QByteArray &bytes, QString *message);

/// The texts for the user, whole, their lines separated by CR LF.
QString NoBlankToExportMessage(const QString &fileTitle);
QString ReplaceExportQuestion(const QString &exportPath);

/// @param bytes  what was written; bytes of the study file that are no character have become U+FFFD in it
QString ExportedMessage(const QString &exportPath, const QByteArray &bytes);
