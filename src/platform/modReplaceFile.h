// Files that are replaced: the old one or the new one is there, whole, at every moment, also after a power cut.
#pragma once

#include <QByteArray>
#include <QString>

/// Replaces a regular file by the given bytes, or makes it. The file is written beside its place and renamed, so that
/// after a failure the old one is still there, whole. When it returns the new one is on the disk, under its name.
/// @return false on failure; error then holds the system's reason
bool ReplaceFile(const QString &path, const QByteArray &bytes, QString *error);

/// Copies a regular file, over the one that may be there. When it returns the copy is on the disk, under its name.
/// @return false on failure; error then holds the system's reason, and the target is as it was
bool CopyWholeFile(const QString &source, const QString &target, QString *error);
