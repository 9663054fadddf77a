// SPDX-FileCopyrightText: 2026 The Kotoban developers
// SPDX-License-Identifier: MIT

// Copies files from elsewhere into the folder of study files: which ones belong there, and the messages about them.
#pragma once

#include <QString>
#include <QStringList>

class QDeadlineTimer;
class QFileInfo;

/// Files dropped on the list, as full paths, by what to do with them.
struct FilesToTake
{
    QStringList fresh;    ///< the folder has no file of that name
    QStringList replaced; ///< the folder has a file of that name
    QStringList tables;   ///< study files can be made from them
    QStringList foreign;  ///< neither text nor picture nor table
    QStringList tooLarge; ///< more than MaxFileBytes
    QStringList present;  ///< already in the folder
    QStringList twins;    ///< another file of that name comes before
    QStringList nested;   ///< folders in a dropped folder
    QStringList linked;   ///< links in a dropped folder to files in others
    QStringList declined; ///< the user does not want to replace the folder's files; SortFilesToTake leaves it empty

    /// Whether any of them will be neither copied nor made into a study file.
    bool LeavesOut() const;
};

/// Whether a file, by its name, is a table from which a study file can be made.
bool IsTable(const QString &path);

/// Whether a file is a link to one in another folder. @param canonicalFolder  that of the file, without links
bool LeadsElsewhere(const QFileInfo &file, const QString &canonicalFolder);

/// The names of files, as they appear in a message.
QStringList ShownNames(const QStringList &paths);

/// Sorts files by what to do with them. A folder stands for the files in it that are not hidden.
FilesToTake SortFilesToTake(const QStringList &paths, const QString &folder);

/// Whether the folder has a file already, byte for byte.
bool IsInFolder(const QString &path, const QString &folder);

/// Whether a file that is replaced is kept under a free name.
enum class OldFiles : bool
{
    Keep,
    Replace,
};

/// Copies files into the folder, one after another.
class FileTaking
{
  public:
    /// @param paths  of regular files with different names
    FileTaking(const QStringList &paths, const QString &folder, OldFiles oldFiles = OldFiles::Keep);

    /// Goes on until the deadline, but for one file at least.
    /// @return whether any are left
    bool GoOn(const QDeadlineTimer &deadline);

    /// Share of the files that have been copied or failed, from 0 to 1.
    double Done() const;

    const QStringList &Copied() const ///< names
    {
        return m_copied;
    }
    const QStringList &Kept() const ///< "name → new name of the old file"
    {
        return m_kept;
    }
    const QStringList &Failures() const ///< "name：reason"; what would have been replaced is unchanged
    {
        return m_failures;
    }
    QStringList Left() const ///< paths not yet looked at
    {
        return m_paths.sliced(m_next);
    }

  private:
    void Take(const QString &path);

    QStringList m_paths;
    QString m_folder;
    OldFiles m_oldFiles;
    qsizetype m_next = 0;
    QStringList m_copied;
    QStringList m_kept;
    QStringList m_failures;
};

/// Complete texts for the user, lines separated by CR LF. Of many names only the first are shown.
QString ReplaceTakenQuestion(const QStringList &replaced);

/// What has become of each file. If there are tables, it ends by asking whether to make study files from them.
QString TakenMessage(const FilesToTake &files, const FileTaking &taking);
