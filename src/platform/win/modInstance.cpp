// SPDX-FileCopyrightText: 2026 The Kotoban developers
// SPDX-License-Identifier: MIT

#include "platform/modInstance.h"

#include <utility>
#include <windows.h>

using namespace Qt::Literals::StringLiterals;

namespace {

void Close(HANDLE handle)
{
    if (handle)
        CloseHandle(handle);
}

/// Volume serial number and file index of a folder, which do not depend on how its path is spelled: in another case, by
/// its short name, through another drive letter. Empty if the file system does not provide them.
QString FolderNumber(const QString &folder)
{
    const HANDLE handle = CreateFileW(reinterpret_cast<LPCWSTR>(folder.utf16()), 0,
                                      FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE, nullptr, OPEN_EXISTING,
                                      FILE_FLAG_BACKUP_SEMANTICS, nullptr);
    if (handle == INVALID_HANDLE_VALUE)
        return QString();
    BY_HANDLE_FILE_INFORMATION information = {};
    const bool isKnown = GetFileInformationByHandle(handle, &information);
    CloseHandle(handle);
    const quint64 index = quint64(information.nFileIndexHigh) << 32 | information.nFileIndexLow;
    return isKnown ? QString::number(information.dwVolumeSerialNumber, 16) + u'-' + QString::number(index, 16)
                   : QString();
}

} // namespace

// The lock is a machine-wide named mutex, which disappears with the last process that has it open. Without a folder
// number to name it by, another instance cannot be detected, and start-up continues.
InstanceMark::InstanceMark(const QString &applicationFolder)
{
    const QString number = FolderNumber(applicationFolder);
    if (number.isEmpty())
        return;
    const QString name = u"Global\\Kotoban-"_s + number;
    std::shared_ptr<void> mutex(CreateMutexW(nullptr, FALSE, reinterpret_cast<LPCWSTR>(name.utf16())), Close);
    // Access is denied if the other instance runs as administrator or in another user's session.
    const DWORD error = GetLastError();
    m_hasPrevious = error == ERROR_ALREADY_EXISTS || error == ERROR_ACCESS_DENIED;
    // A refused instance must not keep the mutex alive after the first one has ended.
    if (!m_hasPrevious)
        m_lock = std::move(mutex);
}
