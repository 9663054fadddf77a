// Whole files, read and replaced at one stroke, and the joining of paths.
#pragma once

#include <QByteArray>
#include <QString>

/// Folder and name joined by the system's own separator.
QString JoinPath(const QString &folder, const QString &name);

/// Reads a whole file.
/// @return false when it cannot be read to its end; error then holds the system's reason and bytes is empty
bool ReadWholeFile(const QString &path, QByteArray *bytes, QString *error);

/// Replaces a file by the given bytes, or makes it. The file is written beside its place and renamed, so that after a
/// failure the old one is still there, whole.
/// @return false on failure; error then holds the system's reason
bool ReplaceFile(const QString &path, const QByteArray &bytes, QString *error);

/// A text as part of a file's name: every character that a file name cannot hold on one of the systems becomes "_", the
/// separators of paths among them.
QString FileNamePart(const QString &text);
