// SPDX-FileCopyrightText: 2026 The Kotoban developers
// SPDX-License-Identifier: MIT

// Database files that are not open: writes one that appears only once it is complete, and copies one together with what
// a crash may have left beside it.
#pragma once

#include "base/modFile.h"

#include <QString>

/// Whether a path has no file, or one of 0 bytes, which contains nothing that could be lost.
bool LacksDatabase(const QString &path);

/// A database that is written under a temporary name and renamed once it is complete. At every moment, and after a
/// power cut, there is either no database of its name or the complete one.
class NewDatabase
{
  public:
    /// Removes leftovers of interrupted writes from the folder. @param target  full path, for which LacksDatabase
    explicit NewDatabase(const QString &target);

    /// Removes what is not finished.
    ~NewDatabase();
    Q_DISABLE_COPY_MOVE(NewDatabase)

    /// Where to write, sync and close it.
    const QString &Path() const
    {
        return m_path;
    }

    /// Gives it its name, and removes journals and logs beside it, which belong to a database that is gone.
    FileFault Finish();

  private:
    QString m_target;
    QString m_folder;
    QString m_path;
};

/// Copies a database to a path that does not exist yet. A rollback journal or write-ahead log that a crash has left
/// beside it is part of it; the copy is a single file that needs neither, in journal mode "delete". A file that is not
/// a database is copied as is. The source is only read, and the copy has its permissions. After a fault no partial copy
/// is left.
/// @param target  full path; leftovers of interrupted copies in its folder are removed
FileFault CopyDatabase(const QString &source, const QString &target);
