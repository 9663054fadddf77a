// SPDX-FileCopyrightText: 2026 The Kotoban developers
// SPDX-License-Identifier: MIT

// Copies a database that is not open, together with what a crash may have left beside it.
#pragma once

#include <QString>

/// Copies a database to a path that does not exist yet. A rollback journal or write-ahead log that a crash has left
/// beside it is part of it; the copy is a single file that needs neither, in journal mode "delete". A file that is not
/// a database is copied as is. The source is only read.
/// @param target  full path; leftovers of interrupted copies in its folder are removed
/// @return false on failure; error then holds the reason, and no partial copy is left
bool CopyDatabase(const QString &source, const QString &target, QString *error);
