// SPDX-FileCopyrightText: 2026 The Kotoban developers
// SPDX-License-Identifier: MIT

// Reading any text as a table, writing its cells and reading them back, and making a study file from them.
#include "exchange/modStudyFromTable.h"
#include "exchange/modStudyFromText.h"
#include "exchange/modTableFormat.h"
#include "input.h"
#include "require.h"
#include "text/modCheckText.h"
#include "text/modDecodeText.h"
#include "text/modReadText.h"

#include <QDeadlineTimer>

using namespace Qt::Literals::StringLiterals;

namespace {

/// The table as CSV according to RFC 4180, with all cells quoted and formulas guarded.
QString Written(const Table &table, const QString &separator)
{
    QString text;
    for (int row = 1; row <= table.RowCount(); ++row) {
        for (int column = 1; column <= table.CellCount(row); ++column) {
            if (column > 1)
                text += separator;
            text += u'"' + GuardedCell(table.Cell(row, column)).replace(u'"', QStringLiteral("\"\"")) + u'"';
        }
        text += QStringLiteral("\r\n");
    }
    return text;
}

void CheckRoundTrip(const Table &table, const QString &separator)
{
    Table again;
    int errorLine = 0;
    Require(ReadTable(Written(table, separator), TableFormat{.separator = separator}, &again, &errorLine));
    Require(again.RowCount() == table.RowCount() && again.ColumnCount() == table.ColumnCount());
    for (int row = 1; row <= table.RowCount(); ++row) {
        Require(again.CellCount(row) == table.CellCount(row));
        for (int column = 1; column <= table.CellCount(row); ++column)
            Require(again.Cell(row, column) == table.Cell(row, column));
    }
}

/// Reading in slices, or first some rows, gives the same rows.
void CheckSlices(const QString &text, const TableFormat &format, const Table &table)
{
    TableReader reader(text, format);
    for (int rows = 1; reader.GoOn(QDeadlineTimer(0), rows) || (reader.Done() < 1 && rows <= table.RowCount()); ++rows)
        Require(reader.Rows().RowCount() <= rows);
    const Table sliced = reader.Take();
    Require(sliced.RowCount() == table.RowCount() && sliced.ColumnCount() == table.ColumnCount());
    for (int row = 1; row <= table.RowCount(); ++row)
        Require(sliced.CellCount(row) == table.CellCount(row) && sliced.Cell(row, 1) == table.Cell(row, 1));
}

/// Number of characters that a reader must not drop: all except quotes, apostrophes, separators and white space.
qsizetype KeptCharacters(QStringView text, const QString &separator)
{
    qsizetype count = 0;
    for (const QChar character : text)
        count += character != u'"' && character != u'\'' && !separator.contains(character) && !character.isSpace();
    return count;
}

/// No text of the source is lost, unless the format removes some on purpose.
void CheckKeepsAll(const QString &text, const TableFormat &format, const Table &table)
{
    if (format.isHtml || format.pictureNameOf || !format.leftOut.isEmpty())
        return;
    qsizetype count = 0;
    for (int row = 1; row <= table.RowCount(); ++row)
        for (int column = 1; column <= table.CellCount(row); ++column)
            count += KeptCharacters(table.Cell(row, column), format.separator);
    Require(count == KeptCharacters(QStringView(text).sliced(format.start), format.separator));
}

/// The generated study file is accepted by the reader unless it was refused or a line could not be broken.
void CheckStudyText(const Table &table, const TableOptions &options)
{
    static const FuzzFile file(QStringLiteral("study.txt"));
    GuessHeading(table);
    PreviewHint(table, options, PreviewText(table, options));
    const TableStudyText study = StudyTextOf(table, options);
    Require(study.text.count(u"\r\n") == qsizetype(study.rowNumbers.size()));
    StudyFromText made(study.text, study.rowNumbers);
    const QDeadlineTimer forever(QDeadlineTimer::Forever);
    made.GoOn(forever);
    made.Make(ChoicesFor(made.Faults()));
    made.GoOn(forever);
    QByteArray bytes;
    if (const TextRefusal refusal = made.Encode(&bytes)) {
        Require(!refusal.message.isEmpty());
        return;
    }
    file.Write(bytes);
    StudyLines lines;
    const TextRefusal refusal = ReadStudyText(file.Path(), MaxLineBytes, &lines);
    Require(refusal.fault == TextFault::None || refusal.fault == TextFault::LineTooLong);
    Require(refusal || lines.Count() >= int(study.rowNumbers.size()));
    Require(made.Report(QString(), QString(), QString()).contains(u"このままでは開けません"_s) == bool(refusal));
}

} // namespace

// Input: a byte for the encoding and for skipping the first row, a byte for the use of the columns, the text between
// columns up to a zero byte, the file.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    FuzzInput input(data, size);
    TableOptions options;
    const int first = input.TakeByte();
    options.skipsFirstRow = first >= 128;
    const int hidden = input.TakeByte();
    for (int column = 0; column < 4; ++column) // in backward order, if the first use says so
        options.columns.insert(hidden % 4 == 1 ? 0 : column, {column + 1, ColumnUse((hidden >> 2 * column) % 4 % 3)});
    options.between = QString::fromUtf8(input.TakeText());
    const QString text = DecodeText(input.TakeRest(), CharCode(first % 10));

    TableFormat format = DetectTableFormat(text, hidden % 4 == 3 && hidden >= 128 ? options.between : QString());
    if (first % 3 == 1)
        format.pictureNameOf = [](const QString &name) { return name.left(name.size() % 2); };
    Table table;
    int errorLine = 0;
    if (!ReadTable(text, format, &table, &errorLine)) {
        Require(errorLine >= 1 && table.RowCount() == 0);
        return 0;
    }
    CheckSlices(text, format, table);
    // Only comma and semicolon round-trip all cells: with others, a quoted cell that contains whole rows is not one.
    CheckRoundTrip(table, format.separator == u';' ? u";"_s : u","_s);
    CheckKeepsAll(text, format, table);
    CheckStudyText(table, options);
    return 0;
}
