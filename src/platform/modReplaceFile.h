// SPDX-FileCopyrightText: 2026 The Kotoban developers
// SPDX-License-Identifier: MIT

// Atomic file replacement: at every moment, and after a power cut, either the complete old file or the complete new
// one exists. Every file of the program but the run log and the database is written by these functions, so none is
// written where WriteRefusal forbids it.
#pragma once

#include "base/modFile.h"

#include <QByteArray>
#include <QFileDevice>
#include <QSaveFile>
#include <QString>

#include <optional>

/// A file that is created or replaced as a whole but written in pieces. They go to a temporary file beside it, which is
/// removed if it is not committed.
class FileReplacement
{
  public:
    /// @param permissions  of the new file; by default those of the old one or, without one, the usual ones
    explicit FileReplacement(const QString &path, std::optional<QFileDevice::Permissions> permissions = {});

    /// Appends a piece.
    /// @return false after a failure, which Commit reports; further pieces are ignored
    [[nodiscard]] bool Write(const QByteArray &piece);

    /// Gives the complete file its name and waits until it is on disk. Nothing may be written afterwards.
    /// @return the first fault since the beginning; the old file is then intact, and the temporary file is gone
    FileFault Commit();

  private:
    void GiveUp();

    std::optional<QSaveFile> m_file; // none after a failure
    FileFault m_fault;
};

/// When a file that was written survives a power cut.
enum class OnDisk
{
    AtOnce, ///< when the function returns
    Later,  ///< when the system has written it, which takes some seconds; before that some file systems may empty it
};

/// Creates or replaces a regular file. After a fault the old file is intact.
/// @param onDisk  Later takes no time, for what may be lost or is soon written again
FileFault ReplaceFile(const QString &path, const QByteArray &bytes, OnDisk onDisk = OnDisk::AtOnce);

/// The first unused backup name of a file: name.bak, name.bak2, name.bak3 ... A dangling link counts as used, because
/// writing would follow it.
QString FreeBackupPath(const QString &path);

/// Replaces a file as above, after copying the old one to FreeBackupPath. The backup is on disk before the file is
/// replaced.
/// @param keptPath  path of the backup; empty if there was no old file
/// @return the fault of either file, after which the folder is unchanged
FileFault ReplaceAndKeep(const QString &path, const QByteArray &bytes, QString *keptPath);

/// Copies a regular file, replacing the target if it exists. On success the copy is on disk under its name.
/// @param permissions  of the copy, from its first byte on; by default those of the old target or of any new file
/// @return the fault of either file, after which the target is unchanged
FileFault CopyWholeFile(const QString &source, const QString &target,
                        std::optional<QFileDevice::Permissions> permissions = std::nullopt);
