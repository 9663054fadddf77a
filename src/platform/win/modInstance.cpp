#include "platform/modInstance.h"

#include <windows.h>

using namespace Qt::Literals::StringLiterals;

namespace {

/// The number of a folder on its volume, which is the same however its path is spelt: in another case, by its short
/// name, through another drive letter. Empty when the file system cannot tell it.
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

// A named mutex of the whole machine, which goes with the last process that has it open. Where the folder has no number
// to name it by, the start goes on.
InstanceMark::InstanceMark(const QString &applicationFolder) : m_handle(0)
{
    const QString number = FolderNumber(applicationFolder);
    if (number.isEmpty())
        return;
    const QString name = u"Global\\Kotoban-"_s + number;
    const HANDLE mutex = CreateMutexW(nullptr, FALSE, reinterpret_cast<LPCWSTR>(name.utf16()));
    // Access is denied to the mutex of an instance that runs as administrator or in the session of another user.
    const DWORD error = GetLastError();
    m_hasPrevious = error == ERROR_ALREADY_EXISTS || error == ERROR_ACCESS_DENIED;
    // An instance that is refused must not hold the mutex of the one that ends meanwhile.
    if (m_hasPrevious && mutex)
        CloseHandle(mutex);
    else
        m_handle = reinterpret_cast<intptr_t>(mutex);
}

InstanceMark::~InstanceMark()
{
    if (m_handle != 0)
        CloseHandle(reinterpret_cast<HANDLE>(m_handle));
}
