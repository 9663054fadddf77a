// SPDX-FileCopyrightText: 2026 The Kotoban developers
// SPDX-License-Identifier: MIT

// What other people need of some study files: the files themselves with the pictures that they refer to, and nothing
// that was made beside them.
#pragma once

#include "files/modTakeFiles.h"

#include <QSet>
#include <QString>
#include <QStringList>

#include <memory>

class PictureFolder;
class QDeadlineTimer;

/// Files to be handed out.
struct HandOut
{
    QStringList paths;   ///< study files, then their pictures, each once
    QStringList others;  ///< names of printable copies and of the note of hard words, which are left out
    QStringList refused; ///< "name：remark" for files that cannot be opened, and so are left out
    QStringList missing; ///< "name 3行目：｢図｣" for references to pictures that do not exist
    QStringList linked;  ///< names of pictures that are links to other folders, and so are left out
};

/// Finds them, one study file after another.
class HandOutSearch
{
  public:
    /// @param paths  of study files in one folder
    /// @param others  see HandOut
    HandOutSearch(const QStringList &paths, const QStringList &others);
    ~HandOutSearch();

    /// Goes on until the deadline, but for one file at least.
    /// @return whether any are left
    bool GoOn(const QDeadlineTimer &deadline);

    /// Share of the study files that have been read, from 0 to 1.
    double Done() const;

    /// The result, once GoOn has nothing more to do.
    HandOut Take() const;

  private:
    void Add(const QString &path);
    void AddPicture(const QString &path);

    QStringList m_paths;
    qsizetype m_next = 0;
    QString m_canonical; // path of the folder
    std::unique_ptr<PictureFolder> m_folder;
    HandOut m_found;
    QStringList m_pictures;
    QSet<QString> m_seen; // pictures
};

/// Complete texts for the user, lines separated by CR LF.

/// Why nothing can be handed out.
QString NothingToHandOutMessage(const HandOut &handOut);

/// @param replaced  paths of files of which the folder has others under the same name
QString ReplaceHandedOutQuestion(const QStringList &replaced);

QString HandedOutMessage(const HandOut &handOut, const FilesToTake &files, const FileTaking &taking);
