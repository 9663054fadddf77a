// SPDX-FileCopyrightText: 2026 The Kotoban developers
// SPDX-License-Identifier: MIT

#include "platform/modFolderNames.h"

#include <QFile>
#include <QFileInfo>
#include <QStringDecoder>

#include <dirent.h>

namespace {

bool IsFolder(const QString &folder, const dirent &entry)
{
    // Not every file system reports the type, and a link may point to a folder.
    const bool mustAsk = entry.d_type == DT_LNK || entry.d_type == DT_UNKNOWN;
    return mustAsk ? QFileInfo(folder + u'/' + QFile::decodeName(entry.d_name)).isDir() : entry.d_type == DT_DIR;
}

} // namespace

FolderNames ListFolder(const QString &folder, QLatin1StringView ending)
{
    FolderNames found;
    DIR *const entries = opendir(QFile::encodeName(folder).constData());
    if (!entries)
        return found;
    while (const dirent *const entry = readdir(entries)) {
        const QByteArrayView bytes(entry->d_name);
        if (bytes.startsWith('.') || !QLatin1StringView(bytes).endsWith(ending, Qt::CaseInsensitive) ||
            IsFolder(folder, *entry))
            continue;
        QStringDecoder decoder(QStringDecoder::System);
        const QString name = decoder(bytes);
        if (decoder.hasError() || QFile::encodeName(name) != bytes)
            ++found.unshowable;
        else
            found.names += name;
    }
    closedir(entries);
    return found;
}
