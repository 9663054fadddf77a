// SPDX-FileCopyrightText: 2026 The Kotoban developers
// SPDX-License-Identifier: MIT

// Small text files in the application folder that the program maintains and users may edit: one entry per line, its
// fields separated by tabs. They are written in UTF-8 with CR LF. What is not valid UTF-8 is read in the encoding that
// is detected, because an editor may have saved another one. Lines that are no entries are kept.
#pragma once

#include "base/modFile.h"

#include <QString>
#include <QStringList>

#include <span>

/// A text as a field of an entry: its tabs and line ends become spaces.
QString ListField(const QString &text);

/// Reads the lines of a list, without line ends; a missing file has none.
/// @param maxBytes  size of the largest file to read, whole megabytes
/// @return a fault if the file is larger, cannot be read or is not text; it must not be replaced then
FileFault ReadList(const QString &path, QStringList *lines, qint64 maxBytes);

struct EntryField
{
    bool isNumber = false;  ///< whole, at least 1
    QStringView ifAbsent{}; ///< value of a field at the end that may be left out; null if it may not
};

struct ListFormat
{
    std::span<const EntryField> fields; ///< of an entry, in their order
    qint64 maxBytes;                    ///< of the largest file that is read and written, whole megabytes
    bool dropsOldest;                   ///< whether the first entries make room in a full list; otherwise it is refused
};

class ListFile
{
  public:
    ListFile(const QString &path, const ListFormat &format);

    /// The lines whose entries begin with some fields, but have more, in their order; none if the list cannot be
    /// read.
    QStringList Lines(const QStringList &begin) const;

    /// All fields of a line's entry; empty if it is no entry.
    QStringList Entry(const QString &line) const;

    /// The line of an entry. @param entry  all its fields
    QString Line(QStringList entry) const;

    /// Replaces the entries that begin with some fields by others at the end, atomically. All other lines stay as they
    /// are. After a fault, as when the list cannot be read or would become too large, it is unchanged.
    /// @param lines  as Line makes them
    FileFault Replace(const QStringList &begin, const QStringList &lines) const;

    /// Removes some entries wherever they are, and adds others at the end unless they are there. Otherwise the same.
    /// @param removed, added  lines as Line makes them
    FileFault Change(const QStringList &removed, const QStringList &added) const;

  private:
    FileFault Write(QStringList kept, const QStringList &added) const;

    QString m_path;
    ListFormat m_format;
};
