#include "platform/modInstance.h"

#include <QCryptographicHash>

#include <windows.h>

using namespace Qt::Literals::StringLiterals;

// The name of a mutex cannot hold a path, so the folder goes in as a hash; Windows paths ignore case.
InstanceMark::InstanceMark(const QString &applicationFolder)
{
    const QByteArray hash =
        QCryptographicHash::hash(applicationFolder.toCaseFolded().toUtf8(), QCryptographicHash::Sha1).toHex();
    const QString name = u"Local\\Kotoban-"_s + QString::fromLatin1(hash);
    m_handle = reinterpret_cast<intptr_t>(CreateMutexW(nullptr, FALSE, reinterpret_cast<LPCWSTR>(name.utf16())));
    m_hasPrevious = GetLastError() == ERROR_ALREADY_EXISTS;
}

InstanceMark::~InstanceMark()
{
    if (m_handle != 0)
        CloseHandle(reinterpret_cast<HANDLE>(m_handle));
}
