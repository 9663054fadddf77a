// Whole files are read here, and paths joined.
#pragma once

#include <QByteArray>
#include <QString>

/// Folder and name joined by the system's own separator.
QString JoinPath(const QString &folder, const QString &name);

/// Whether a path may be opened as a file: it leads, through links too, to a regular file or to nothing. Anything else
/// is left alone before it is opened: a FIFO may keep the caller waiting for ever, a device may never end, and neither
/// is to be replaced.
/// @return false for anything else; error then holds the reason
bool IsRegularOrMissing(const QString &path, QString *error);

/// Largest file that is read. All of them are texts that a person types; a study file of a million lines has half of
/// it. The window waits while a file is read, and this keeps the wait short.
constexpr qint64 MostFileMegabytes = 64;
constexpr qint64 MostFileBytes = MostFileMegabytes * 1024 * 1024;

/// Reads a whole file, which has to be a regular one.
/// @return false when it is larger than MostFileBytes or cannot be read to its end; error then holds the reason and
/// bytes is empty
bool ReadWholeFile(const QString &path, QByteArray *bytes, QString *error);

/// A text as part of a file's name: every character that a file name cannot hold on one of the systems becomes "_", the
/// separators of paths among them.
QString FileNamePart(const QString &text);
