// SPDX-FileCopyrightText: 2026 The Kotoban developers
// SPDX-License-Identifier: MIT

// Reading whole files, joining paths and making file names.
#pragma once

#include <QByteArray>
#include <QString>

/// Joins folder and name with the system's path separator.
QString JoinPath(const QString &folder, const QString &name);

/// Whether a path may be opened as a file: following links, it is a regular file or does not exist. Anything else must
/// not even be opened: a FIFO may block forever, a device may never end, and neither may be replaced.
/// @return false for anything else; error then holds the reason
bool IsRegularOrMissing(const QString &path, QString *error);

/// Whether a path may be created or changed as a file: it may be opened, and if it is a link, then one to a file in the
/// folder of the link, in the application folder (that of the executable), or below. In a folder that comes from
/// somewhere else, any other link would make the program write to a file elsewhere, even a new one. A linked folder is
/// allowed, because users keep study files and records where they like.
/// @return false if it must not be written; error then holds the reason
bool MayWrite(const QString &path, QString *error);

/// Largest file that is read. All files are text typed by people; a study file of a million lines has half this size.
/// The window is blocked while a file is read, and the limit keeps that short.
constexpr qint64 MaxFileMegabytes = 64;
constexpr qint64 MaxFileBytes = MaxFileMegabytes * 1024 * 1024;

/// Reads a whole regular file.
/// @return false if it is larger than MaxFileBytes or cannot be read completely; error then holds the reason and
/// bytes is empty
bool ReadWholeFile(const QString &path, QByteArray *bytes, QString *error);

/// Makes a text usable in a file name: every character that is invalid in file names on any supported system, path
/// separators included, becomes "_".
QString FileNamePart(const QString &text);

/// A name as part of a line: each control character, which a file name may contain on systems other than Windows,
/// becomes one blank.
QString NameInLine(const QString &name);
