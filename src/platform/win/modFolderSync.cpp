// SPDX-FileCopyrightText: 2026 The Kotoban developers
// SPDX-License-Identifier: MIT

#include "platform/modFolderSync.h"

#include <QDir>

#include <windows.h>

void SyncFolder(const QString &folder)
{
    // Opening a folder needs FILE_FLAG_BACKUP_SEMANTICS, and flushing it needs write access.
    const QString path = QDir::toNativeSeparators(folder);
    const HANDLE handle = CreateFileW(reinterpret_cast<LPCWSTR>(path.utf16()), GENERIC_WRITE,
                                      FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE, nullptr, OPEN_EXISTING,
                                      FILE_FLAG_BACKUP_SEMANTICS, nullptr);
    if (handle == INVALID_HANDLE_VALUE)
        return;
    FlushFileBuffers(handle);
    CloseHandle(handle);
}
