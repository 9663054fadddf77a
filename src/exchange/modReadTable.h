// SPDX-FileCopyrightText: 2026 The Kotoban developers
// SPDX-License-Identifier: MIT

// Reads a table from the bytes of its file. Encoding and separator are detected unless the user sets them.
#pragma once

#include "exchange/modTable.h"
#include "text/modCharCode.h"

#include <QByteArray>
#include <QString>

#include <limits>
#include <optional>

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

/// The text of a table's file, which is decoded once, and its rows, which can be read again with other separators.
class TableSource
{
  public:
    /// Decodes the text and detects the format of the table. There are no rows yet.
    /// @param bytes  of the whole file; they own their data
    /// @param code  None to detect it; Utf16Le stands for UTF-16 in either byte order
    /// @param pictureNameOf  see TableFormat
    TableRefusal Decode(const QByteArray &bytes, CharCode code, const PictureNameOf &pictureNameOf = {});

    /// The encoding of the text.
    CharCode Code() const
    {
        return m_code;
    }

    /// The separator that was detected.
    const QString &FoundSeparator() const
    {
        return m_format.separator;
    }

    /// Begins to read the rows. @param separator  between two cells; empty for the one that was detected
    void Split(const QString &separator = QString());

    /// Goes on reading until the deadline, or until there are some rows. @return whether there is more to do
    bool GoOn(const QDeadlineTimer &deadline, int mostRows = std::numeric_limits<int>::max());

    /// How much has been read, from 0 to 1.
    double Done() const
    {
        return m_reader ? m_reader->Done() : 1;
    }

    /// Whether there is nothing more to do.
    bool IsRead() const
    {
        return m_isRead;
    }

    /// The rows so far; none if they are refused.
    const Table &Rows() const
    {
        return m_reader && !m_refusal ? m_reader->Rows() : m_none;
    }

    /// Why the table is refused; nothing more is read then.
    const TableRefusal &Refusal() const
    {
        return m_refusal;
    }

  private:
    QString m_text;
    CharCode m_code = CharCode::None;
    TableFormat m_format;
    std::optional<TableReader> m_reader;
    bool m_isText = false;
    bool m_isRead = true;
    TableRefusal m_refusal;
    Table m_none;
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
