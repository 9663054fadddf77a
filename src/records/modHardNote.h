// SPDX-FileCopyrightText: 2026 The Kotoban developers
// SPDX-License-Identifier: MIT

// The note of hard words: a study file that the program makes from all lines of a user's study files with blanks marked
// as hard. There is one for all users, made anew for whoever opens it. What is marked in it is marked in the list of
// marks under the file and line that it comes from.
//
//     note = file { empty line, file }
//     file = "■ " name of the study file, { marked line }
//
// In a marked line only the hard blanks are in brackets; of the others the text is left.
#pragma once

#include "records/modMarkList.h"

#include <QByteArray>

#include <map>

class QDeadlineTimer;

/// Title of the note, and the name of its row in the list of files. Names of study files have an ending.
constexpr QStringView HardNoteTitle = u"苦手帳";

/// Full path of the note. @param reportFolder  "rec" in the application folder
QString HardNotePath(const QString &reportFolder);

/// Whether a path is that of the note. A study file of this name, which is in another folder, is not.
bool IsHardNotePath(const QString &path);

/// The folder with the pictures of a study file: its own, or that of all study files for the note.
QString PictureFolderOf(const QString &studyFilePath);

class HardNote
{
  public:
    /// Where a line comes from.
    struct Source
    {
        QString path; ///< of the study file
        int line;
    };

    /// @param studyFiles  full paths of all study files, in the order of the note. Those without marks are not read.
    HardNote(const MarkList &marks, const QStringList &studyFiles);

    /// Reads study files until the deadline, but at least one. @return whether there are more to read
    bool GoOn(const QDeadlineTimer &deadline);

    /// Share of the files that are read, from 0 to 1.
    double Done() const;

    /// Replaces the file of the note: code page 932 with CR LF. This and the following are for when all files are read.
    /// After a fault an earlier note is unchanged.
    FileFault Write(const QString &path) const;

    int BlankCount() const
    {
        return int(m_entries.size());
    }

    /// The list entry of a blank of the note, 1..BlankCount().
    const QString &EntryOf(int blank) const
    {
        return m_entries[blank - 1];
    }

    /// Number of marks whose file or line is gone or cannot be read.
    int MissingCount() const;

    /// Where a line of the note comes from: a heading and the empty line above it from the line below. An empty path
    /// for a line that the note does not have.
    Source SourceOf(int line) const;

  private:
    void Add(const QString &path);
    void AddLine(const QString &line, int lineInFile);

    MarkList m_marks;
    QHash<QString, QStringList> m_wanted; // entries not found so far, by title
    QStringList m_paths;                  // of the files to read
    qsizetype m_read = 0;                 // number of files read
    QByteArray m_bytes;
    QStringList m_entries;
    std::vector<int> m_lines;        // by line of the note, from 0: line in its file
    std::map<int, QString> m_starts; // path of the file whose part of the note starts with a line, from 1
};

/// Complete texts for the user, lines separated by CR LF. @param missing  HardNote::MissingCount, > 0 in the notice
QString NothingHardMessage(int missing); ///< the note would have no blanks
QString MissingHardNotice(int missing);
