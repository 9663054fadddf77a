// SPDX-FileCopyrightText: 2026 The Kotoban developers
// SPDX-License-Identifier: MIT

// Exports of a study file for other programs: as UTF-8 text, as Anki notes, and as a table of its blanks. Tabs are
// kept, although the page shows them as two spaces. Lines end with CR LF, in Anki notes with LF.
#pragma once

#include "text/modStudyLines.h"

#include <QByteArray>
#include <QString>

#include <functional>

class MarkList;

/// Whether to export a blank of the file, numbered from 1. An empty filter exports all.
using BlankFilter = std::function<bool(int blank)>;

enum class ExportKind
{
    Text,
    Anki,
    Csv,
};

/// The lines with their brackets, in UTF-8 with a byte-order mark. Without the mark, editors and our own conversion
/// back may take a short text for Shift_JIS or EUC.
QByteArray TextExport(const StudyLines &lines);

/// An import file for Anki: headers, then one note for each line that has a non-empty blank,
///     text {{c1::answer}} text {{c2::answer}} ...
/// numbered from 1 in each note. A field that Anki would misread is quoted. An empty blank stays "[]"; an unwanted one
/// becomes its answer as plain text.
QByteArray AnkiExport(const StudyLines &lines, const BlankFilter &isWanted = {});

/// A table with one row per blank, as in RFC 4180, in UTF-8 with a byte-order mark, without which Excel reads it as
/// Shift_JIS. Columns: line number from 1, text before the blank, its answer, text after it. The line's other blanks
/// keep their brackets, so that text before + "[" + answer + "]" + text after is the whole line. What a spreadsheet
/// could run has an apostrophe before it, see GuardedCell.
QByteArray CsvExport(const StudyLines &lines, const BlankFilter &isWanted = {});

/// Full path of an export: the study file's name without ".txt", plus "_UTF-8.txt", "_Anki.txt" or ".csv".
QString ExportPath(const QString &folder, const QString &studyFilePath, ExportKind kind);

/// Reads a study file and makes its export.
/// @param onlyHard  if given, notes and table hold only the blanks marked in it
/// @return false after a refusal, which message then holds: the file cannot be read, or has no blank to export
bool MakeExport(const QString &studyFilePath, ExportKind kind, QByteArray *bytes, QString *message,
                const MarkList *onlyHard = nullptr);

/// Writes an export, replacing an existing one.
/// @return false on failure; message then holds the complete text for the user, and an existing file is unchanged
bool WriteExport(const QString &exportPath, const QByteArray &bytes, QString *message);

/// Complete texts for the user, lines separated by CR LF.
QString NoBlankToExportMessage(const QString &fileTitle);
QString ReplaceExportQuestion(const QString &exportPath);

/// @param bytes  what was written; it has U+FFFD where bytes of the study file could not be decoded
QString ExportedMessage(const QString &exportPath, const QByteArray &bytes);
