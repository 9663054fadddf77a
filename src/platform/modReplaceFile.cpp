// SPDX-FileCopyrightText: 2026 The Kotoban developers
// SPDX-License-Identifier: MIT

#include "platform/modReplaceFile.h"

#include "base/modFile.h"
#include "platform/modFolderSync.h"

#include <QFile>
#include <QFileInfo>
#include <QSaveFile>

namespace {

constexpr qsizetype PieceBytes = 1 << 20; // bytes copied at a time

/// Moves the written file into place. QSaveFile::commit ignores a failed flush of its buffer and, on a full disk, would
/// replace the old file by a truncated one; hence the explicit flush. It syncs the file before the rename but not the
/// folder, without which a power cut could undo the rename.
bool Commit(QSaveFile *file)
{
    if (!file->flush() || !file->commit())
        return false;
    SyncFolder(QFileInfo(file->fileName()).path());
    return true;
}

} // namespace

bool ReplaceFile(const QString &path, const QByteArray &bytes, QString *error)
{
    if (!IsRegularOrMissing(path, error))
        return false;
    QSaveFile file(path);
    if (file.open(QIODevice::WriteOnly) && file.write(bytes) == bytes.size() && Commit(&file))
        return true;
    *error = file.errorString();
    return false;
}

bool CopyWholeFile(const QString &source, const QString &target, QString *error,
                   std::optional<QFileDevice::Permissions> permissions)
{
    if (!IsRegularOrMissing(source, error) || !IsRegularOrMissing(target, error))
        return false;
    QFile in(source);
    if (!in.open(QIODevice::ReadOnly)) {
        *error = in.errorString();
        return false;
    }
    QSaveFile out(target);
    bool isGood = out.open(QIODevice::WriteOnly);
    if (isGood && permissions)
        out.setPermissions(*permissions); // where the file system has none, the copy is as good without
    for (QByteArray piece = in.read(PieceBytes); isGood && !piece.isEmpty(); piece = in.read(PieceBytes))
        isGood = out.write(piece) == piece.size();
    if (in.error() != QFileDevice::NoError) {
        *error = in.errorString();
        return false;
    }
    if (isGood && Commit(&out))
        return true;
    *error = out.errorString();
    return false;
}

QString FreeBackupPath(const QString &path)
{
    QString backup = path + QStringLiteral(".bak");
    for (int number = 2; QFileInfo::exists(backup) || QFileInfo(backup).isSymLink(); ++number)
        backup = path + QStringLiteral(".bak") + QString::number(number);
    return backup;
}

bool ReplaceAndKeep(const QString &path, const QByteArray &bytes, QString *keptPath, QString *failedPath,
                    QString *error)
{
    *failedPath = path;
    keptPath->clear();
    if (!IsRegularOrMissing(path, error))
        return false;
    if (QFileInfo::exists(path)) {
        *keptPath = FreeBackupPath(path);
        if (!CopyWholeFile(path, *keptPath, error)) {
            *failedPath = *keptPath;
            return false;
        }
    }
    if (ReplaceFile(path, bytes, error))
        return true;
    if (!keptPath->isEmpty())
        QFile::remove(*keptPath);
    return false;
}
