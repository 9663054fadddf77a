// SPDX-FileCopyrightText: 2026 The Kotoban developers
// SPDX-License-Identifier: MIT

#include "platform/modFolderNames.h"

#include <QDirIterator>

// Windows file names are UTF-16, as Qt's are, so none is unshowable.
FolderNames ListFolder(const QString &folder, QLatin1StringView ending)
{
    FolderNames found;
    for (QDirIterator files(folder, QDir::Files | QDir::System); files.hasNext();) {
        files.next();
        if (const QString name = files.fileName(); name.endsWith(ending, Qt::CaseInsensitive))
            found.names += name;
    }
    return found;
}
