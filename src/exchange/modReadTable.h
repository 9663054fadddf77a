// SPDX-FileCopyrightText: 2026 The Kotoban developers
// SPDX-License-Identifier: MIT

// Reads a table from the bytes of its file. Encoding and separator are detected unless the user sets them.
#pragma once

#include "exchange/modTable.h"
#include "text/modCharCode.h"

#include <QByteArray>
#include <QString>

constexpr int MaxColumns = 100;

/// How to read the bytes of a table.
struct TableReading
{
    CharCode code = CharCode::None; ///< None to detect it; Utf16Le stands for UTF-16 in either byte order
    QString separator;              ///< between two cells; empty to detect it
};

/// Why a table cannot be read, for the user; true if it cannot.
struct [[nodiscard]] TableRefusal
{
    QString reason{}; ///< one sentence; empty if the table could be read
    QString advice{}; ///< what to do about it; may be empty

    explicit operator bool() const
    {
        return !reason.isEmpty();
    }
};

/// Reads a table, which is refused if the file is not text, or has no rows, more than MaxColumns columns or an unclosed
/// quote.
/// @param bytes  of the whole file; they own their data
/// @param reading  settings to use; those left open are detected and filled in
/// @param table  empty after a refusal
TableRefusal ReadTableBytes(const QByteArray &bytes, TableReading *reading, Table *table);

/// Display name of an encoding.
QString TableCodeName(CharCode code);

/// Display name of a separator: ones that are hard to see have names, all others are shown as they are.
QString SeparatorName(const QString &separator);
QString SeparatorByName(const QString &name);

TableRefusal NoTextTable();
TableRefusal QuoteNeverClosed(int line); ///< line of the file on which the cell begins
TableRefusal EmptyTable();
TableRefusal TooManyColumns(int columns);

/// Complete text for the user, lines separated by CR LF.
QString TableNotReadMessage(const QString &name, const TableRefusal &refusal);
