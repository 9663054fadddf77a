// Reads a table from the bytes of its file: its character code and its separator are found out, unless the user knows
// better.
#pragma once

#include "settings/modCharCode.h"
#include "text/modTable.h"

#include <QByteArray>
#include <QString>

constexpr int MostColumns = 100;

/// How the bytes of a table are read.
struct TableReading
{
    CharCode code = CharCode::None; ///< None while it is to be found out; Utf16Le stands for both kinds of UTF-16
    QString separator;              ///< between two cells; empty while it is to be found out
};

/// Why a table is not read, for the user.
struct TableRefusal
{
    QString reason; ///< one sentence
    QString advice; ///< what to do about it, may be empty
};

/// Reads a table.
/// @param reading  what is given in it is kept to, what is not is found out and put there
/// @param bytes  of the whole file; they own their data
/// @return false when it is no text, has no rows, more than MostColumns columns or a quote that is
/// never closed; refusal then holds the reason, and the table is empty
bool ReadTableBytes(const QByteArray &bytes, TableReading *reading, Table *table, TableRefusal *refusal);

/// What the window calls a character code.
QString TableCodeName(CharCode code);

/// What the window calls a separator: those that are hard to see have names, others stand for themselves.
QString SeparatorName(const QString &separator);
QString SeparatorByName(const QString &name);

TableRefusal NoTextTable();
TableRefusal QuoteNeverClosed(int line); ///< by the line of the file that the cell begins on
TableRefusal EmptyTable();
TableRefusal TooManyColumns(int columns);

/// The whole text for the user, its lines separated by CR LF.
QString TableNotReadMessage(const QString &name, const TableRefusal &refusal);
