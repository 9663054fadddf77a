// SPDX-FileCopyrightText: 2026 The Kotoban developers
// SPDX-License-Identifier: MIT

// The blanks that a user has marked as hard, in the list "ListMark.txt". An entry identifies its blank by the text of
// the line, not by the line number, so that a mark survives lines inserted above it and moves with its line:
//
//     user TAB title of the study file TAB line, with its brackets TAB number of the blank in the line [TAB occurrence]
//
// The occurrence, 2 or more, distinguishes lines with identical text.
#pragma once

#include "records/modListFile.h"
#include "text/modDisplayText.h"

#include <QHash>

#include <vector>

/// Largest list that is read and written. No mark is ever dropped to stay within it.
constexpr qint64 MaxMarkListBytes = 16 * BytesPerMegabyte;

/// A blank of a text that a list entry marks.
struct MarkedBlank
{
    int blank;
    qsizetype entry; ///< its index among the entries, from 0
};

class MarkList
{
  public:
    /// @param path  of the list, which all users share
    MarkList(const QString &path, const QString &userName);

    /// The marked blanks of a text, ascending. Entries that match no blank in it are ignored.
    /// @param title  of the study file, as GetFileTitle gives it
    std::vector<int> Find(const QString &title, const DisplayText &text) const;

    /// List entries for some blanks of a text. @param blanks  ascending
    QStringList Entries(const QString &title, const DisplayText &text, const std::vector<int> &blanks) const;

    /// The blanks of a text that list entries mark, ascending.
    std::vector<int> FindIn(const QStringList &entries, const DisplayText &text) const;

    /// The same with the entries. A blank that several entries mark is there several times.
    std::vector<MarkedBlank> Locate(const QStringList &entries, const DisplayText &text) const;

    /// The list entries of all study files by title, each in the form that Entries gives it.
    QHash<QString, QStringList> EntriesByTitle() const;

    /// Whether the list has entries for a study file, which need not match any of its blanks.
    bool HasEntries(const QString &title) const;

    /// Makes some blanks the marked ones of a text. Entries that match none of its blanks stay: they belong to another
    /// file with the same title, or to a line that is gone and may come back. See ListFile::Change.
    /// @param blanks  ascending
    FileFault Write(const QString &title, const DisplayText &text, const std::vector<int> &blanks) const;

    /// Removes and adds entries of any study files, as EntriesByTitle gives them. See ListFile::Change.
    FileFault Change(const QStringList &removed, const QStringList &added) const
    {
        return m_list.Change(removed, added);
    }

  private:
    /// Entries split into their fields; empty for one that is none.
    std::vector<QStringList> Fields(const QStringList &entries) const;

    ListFile m_list;
    QString m_userName;
};

/// The message when only the marked blanks of a study file are wanted and it has none.
QString NoHardBlankMessage(const QString &fileTitle);
