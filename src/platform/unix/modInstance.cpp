// SPDX-FileCopyrightText: 2026 The Kotoban developers
// SPDX-License-Identifier: MIT

#include "platform/modInstance.h"

#include <QFile>

#include <cerrno>
#include <fcntl.h>
#include <sys/file.h>
#include <unistd.h>

// The folder itself is locked. Started programs must not inherit the lock (an editor may outlive this program), hence
// O_CLOEXEC. On a file system without such locks another instance cannot be detected, and start-up continues.
InstanceMark::InstanceMark(const QString &applicationFolder)
{
    const int folder = open(QFile::encodeName(applicationFolder).constData(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    if (folder < 0)
        return;
    m_lock = std::shared_ptr<void>(nullptr, [folder](void *) { close(folder); });
    m_hasPrevious = flock(folder, LOCK_EX | LOCK_NB) != 0 && errno == EWOULDBLOCK;
}
