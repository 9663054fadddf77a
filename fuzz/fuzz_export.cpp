// SPDX-FileCopyrightText: 2026 The Kotoban developers
// SPDX-License-Identifier: MIT

// The exports of any study file, read back: every line comes back from the text, every blank with its line from the
// table, and every line with a blank from the notes.
#include "exchange/modStudyFromTable.h"
#include "exchange/modTableFormat.h"
#include "input.h"
#include "require.h"
#include "support/Pieces.h"
#include "text/modCheckText.h"
#include "text/modDecodeText.h"

using namespace Qt::Literals::StringLiterals;

namespace {

/// The bytes of an export; nothing if the file is refused or has no blank to export.
std::optional<QByteArray> Made(const QString &path, ExportKind kind)
{
    StudyExport made;
    if (const TextRefusal refusal = made.Read(path, kind)) {
        Require(!refusal.message.isEmpty());
        return std::nullopt;
    }
    if (!made.HasContent())
        return std::nullopt;
    QByteArray all = AllPieces(made);
    Require(all.count("\xEF\xBF\xBD") == made.Undecodable());
    return all;
}

Table TableOf(const QByteArray &bytes, const QString &separator)
{
    const QString text = DecodeText(bytes, CharCode::Utf8);
    Table table;
    int errorLine = 0;
    Require(ReadTable(text, DetectTableFormat(text, separator), &table, &errorLine));
    return table;
}

void CheckText(const StudyLines &lines, const QByteArray &bytes)
{
    QString expected;
    for (int line = 1; line <= lines.Count(); ++line)
        expected += lines.at1(line) + u"\r\n"_s;
    Require(bytes.startsWith("\xEF\xBB\xBF") && DecodeText(bytes, CharCode::Utf8) == expected);
}

void CheckTable(const StudyLines &lines, const QByteArray &bytes)
{
    const Table table = TableOf(bytes, u","_s);
    Require(table.ColumnCount() == 4 && table.UnevenRows() == 0 && table.RowCount() == lines.BlankCount() + 1);
    for (int row = 2; row <= table.RowCount(); ++row) {
        const QString line =
            table.Cell(row, 2).toString() + u'[' + table.Cell(row, 3).toString() + u']' + table.Cell(row, 4).toString();
        Require(line == lines.at1(table.Cell(row, 1).toInt()));
    }
}

/// Blanks in a row are compared as one, because a cell of a table cannot have tabs.
void CheckNotes(const StudyLines &lines, const QByteArray &bytes)
{
    QStringList expected;
    for (int line = 1; line <= lines.Count(); ++line)
        if (const QString text = lines.at1(line).toString(); QString(text).remove(u"[]"_s).contains(u'['))
            expected += text.simplified();
    QStringList notes = StudyTextOf(TableOf(bytes, QString()), TableOptions()).text.split(u"\r\n"_s);
    Require(notes.takeLast().isEmpty());
    for (QString &note : notes)
        note = note.simplified();
    Require(notes == expected);
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    static const FuzzFile file(QStringLiteral("study.txt"));
    const QByteArray study = FuzzInput(data, size).TakeRest();
    file.Write(study);
    StudyLines lines;
    ReadAllLines(study, ExpandTabs::No, &lines);
    if (const auto text = Made(file.Path(), ExportKind::Text))
        CheckText(lines, *text);
    if (const auto table = Made(file.Path(), ExportKind::Csv))
        CheckTable(lines, *table);
    if (const auto notes = Made(file.Path(), ExportKind::Anki))
        CheckNotes(lines, *notes);
    return 0;
}
