// SPDX-FileCopyrightText: 2026 The Kotoban developers
// SPDX-License-Identifier: MIT

// Database files that are not open: writes one that appears only once it is complete, and copies one together with what
// a crash may have left beside it.
#pragma once

#include <QString>

#include <functional>

/// Whether a path has no file, or one of 0 bytes, which contains nothing that could be lost.
bool LacksDatabase(const QString &path);

/// Writes a database under a temporary name and renames it once it is complete. At every moment, and after a power cut,
/// there is either no database of that name or the complete one.
/// @param target  full path, for which LacksDatabase; leftovers of interrupted writes in its folder are removed, and so
///   are journals and logs beside it, which belong to a database that is gone
/// @param write  writes, syncs and closes a database at the path that it is given; returns whether it succeeded
/// @return false on failure, which leaves nothing; error then holds the reason, or is empty if write has not set it
bool WriteDatabase(const QString &target, const std::function<bool(const QString &)> &write, QString *error);

/// Copies a database to a path that does not exist yet. A rollback journal or write-ahead log that a crash has left
/// beside it is part of it; the copy is a single file that needs neither, in journal mode "delete". A file that is not
/// a database is copied as is. The source is only read, and the copy has its permissions.
/// @param target  full path; leftovers of interrupted copies in its folder are removed
/// @return false on failure; error then holds the reason, and no partial copy is left
bool CopyDatabase(const QString &source, const QString &target, QString *error);
