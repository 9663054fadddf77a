// SPDX-FileCopyrightText: 2026 The Kotoban developers
// SPDX-License-Identifier: MIT

// Syncs folders to disk. Creating, renaming or removing a file survives a power cut only once its folder is synced;
// syncing the file itself covers only its contents.
#pragma once

#include <QString>

/// Waits until a folder's entries are on disk. Does nothing where the file system or the permissions do not allow it:
/// the change itself has been made, and nothing could make it safer.
void SyncFolder(const QString &folder);
