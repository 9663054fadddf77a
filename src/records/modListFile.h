// SPDX-FileCopyrightText: 2026 The Kotoban developers
// SPDX-License-Identifier: MIT

// Small text files in the application folder that the program maintains and users may edit: one entry per line, its
// fields separated by tabs. They are written in UTF-8 with CR LF. What is not valid UTF-8 is read in the encoding that
// is detected, because an editor may have saved another one.
#pragma once

#include "base/modFile.h"

#include <QString>
#include <QStringList>

/// A text as a field of an entry: its tabs and line ends become spaces.
QString ListField(const QString &text);

/// Reads the lines of a list, without line ends; a missing file has none.
/// @param maxBytes  size of the largest file to read, whole megabytes
/// @return a fault if the file is larger, cannot be read or is not text; it must not be replaced then
FileFault ReadList(const QString &path, QStringList *lines, qint64 maxBytes);

/// Size of some lines in the file, in bytes.
qint64 ListBytes(const QStringList &lines);

/// Replaces a list atomically. After a fault, as when the list would be larger than maxBytes, the old file is
/// unchanged.
FileFault WriteList(const QString &path, const QStringList &lines, qint64 maxBytes);
