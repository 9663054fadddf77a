// SPDX-FileCopyrightText: 2026 The Kotoban developers
// SPDX-License-Identifier: MIT

// The file with the users' names: code page 932, one name per line, in the order in which they were added.
#pragma once

#include "base/modFile.h"

#include <QString>
#include <QStringList>

/// Largest list that is read and written.
constexpr qint64 MaxUserListBytes = 1 * BytesPerMegabyte;

/// The names in file order; empty if the file does not exist, is larger than MaxUserListBytes or cannot be read.
QStringList ReadUserNames(const QString &path);

/// Appends a name exactly as given, creating the file if necessary. The file is replaced atomically; after a fault it
/// is unchanged. A list that cannot be read, or would have more than MaxUserListBytes, is left alone.
FileFault AppendUserName(const QString &path, const QString &name);

/// Whether a name is in the list, also if only with "?" for characters that the file cannot store: version 1.0.0
/// accepted such names, and their records have them as they were typed.
bool IsUserListed(const QStringList &names, const QString &name);

/// The characters of a name that the file cannot store, each once: those outside code page 932, as in CharactersLost,
/// then control characters, including line feeds, by code point ("U+000A"). Empty for a name that can be stored.
QStringList CharactersNotForNames(const QString &name);
