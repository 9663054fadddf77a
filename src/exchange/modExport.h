// SPDX-FileCopyrightText: 2026 The Kotoban developers
// SPDX-License-Identifier: MIT

// Exports of a study file for other programs: as UTF-8 text, as Anki notes, and as a table of its blanks. Tabs are
// kept, although the page shows them as two spaces. Lines end with CR LF, in Anki notes with LF.
#pragma once

#include "exchange/modPieceFile.h"
#include "text/modReadText.h"

#include <QByteArray>
#include <QString>

#include <optional>
#include <vector>

class MarkList;

/// The blanks of the file to export, ascending; all if not given.
using WantedBlanks = std::optional<std::vector<int>>;

enum class ExportKind
{
    /// The lines with their brackets, in UTF-8 with a byte-order mark. Without the mark, editors and our own conversion
    /// back may take a short text for Shift_JIS or EUC.
    Text,

    /// An import file for Anki: headers, then one note for each line that has a non-empty blank,
    ///     text {{c1::answer}} text {{c2::answer}} ...
    /// numbered from 1 in each note. A field that Anki would misread is quoted. An empty blank stays "[]"; an unwanted
    /// one becomes its answer as plain text.
    Anki,

    /// A table with one row per blank, as in RFC 4180, in UTF-8 with a byte-order mark, without which Excel reads it as
    /// Shift_JIS. Columns: line number from 1, text before the blank, its answer, text after it. The line's other
    /// blanks keep their brackets, so that text before + "[" + answer + "]" + text after is the whole line.
    /// What a spreadsheet could run has an apostrophe before it, see GuardedCell.
    Csv,
};

/// The export of a study file in pieces.
class StudyExport : public PieceMaker
{
  public:
    /// Reads a study file, once: what is exported is what was checked.
    /// @param onlyHard  if given, notes and table hold only the blanks marked in it
    TextRefusal Read(const QString &studyFilePath, ExportKind kind, const MarkList *onlyHard = nullptr);

    /// Whether there are notes or rows, for which the file must have a wanted blank. Called before the first Next.
    bool HasContent() const;

    bool Next(QByteArray *piece) override;
    double Done() const override
    {
        return m_parts.Done();
    }

    /// Number of U+FFFD in the pieces so far, where bytes of the study file could not be decoded.
    qsizetype Undecodable() const
    {
        return m_undecodable;
    }

  private:
    StudyParts m_parts;
    ExportKind m_kind = ExportKind::Text;
    WantedBlanks m_wanted;
    bool m_hasBegun = false;
    int m_linesBefore = 0; // number of lines before the next part
    int m_blanksBefore = 0;
    qsizetype m_undecodable = 0;
};

/// Full path of an export: the study file's name without ".txt", plus "_UTF-8.txt", "_Anki.txt" or ".csv".
QString ExportPath(const QString &folder, const QString &studyFilePath, ExportKind kind);

/// Complete texts for the user, lines separated by CR LF.
QString NoBlankToExportMessage(const QString &fileTitle);
QString ReplaceExportQuestion(const QString &exportPath);

/// The same about the exports of several files, of which those that do not exist yet are written in any case.
/// @param names  of those that exist
QString ReplaceExportsQuestion(const QStringList &names);

/// @param undecodable  number of U+FFFD in the export
QString ExportedMessage(const QString &exportPath, qsizetype undecodable);
