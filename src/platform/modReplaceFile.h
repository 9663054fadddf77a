// Files that are replaced: the old one or the new one is there, whole, at every moment, also after a power cut.
#pragma once

#include <QByteArray>
#include <QString>

/// Replaces a regular file by the given bytes, or makes it. The file is written beside its place and renamed, so that
/// after a failure the old one is still there, whole. When it returns the new one is on the disk, under its name.
/// @return false on failure; error then holds the system's reason
bool ReplaceFile(const QString &path, const QByteArray &bytes, QString *error);

/// The first free name for what a file held: name.bak, .bak2, .bak3 ... A link that leads nowhere is not free: writing
/// would follow it.
QString FreeBackupPath(const QString &path);

/// Replaces a file as above, and keeps what it held under FreeBackupPath. That is on the disk before the file is
/// replaced.
/// @param keptPath  where that is; empty when there was no file
/// @param failedPath  on failure, which of the two could not be written
/// @return false on failure; error then holds the system's reason, and the folder is as it was
bool ReplaceAndKeep(const QString &path, const QByteArray &bytes, QString *keptPath, QString *failedPath,
                    QString *error);

/// Copies a regular file, over the one that may be there. When it returns the copy is on the disk, under its name.
/// @return false on failure; error then holds the system's reason, and the target is as it was
bool CopyWholeFile(const QString &source, const QString &target, QString *error);
