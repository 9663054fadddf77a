// SPDX-FileCopyrightText: 2026 The Kotoban developers
// SPDX-License-Identifier: MIT

#include "platform/modReplaceFile.h"

#include "base/modFile.h"
#include "platform/modFolderSync.h"

#include <QFile>
#include <QFileInfo>

namespace {

constexpr qsizetype PieceBytes = 1 << 20; // bytes copied at a time

} // namespace

FileReplacement::FileReplacement(const QString &path, std::optional<QFileDevice::Permissions> permissions)
{
    if (!MayWrite(path, &m_error))
        return;
    m_file.emplace(path);
    if (!m_file->open(QIODevice::WriteOnly))
        GiveUp();
    else if (permissions)
        m_file->setPermissions(*permissions); // where the file system has none, the file is as good without
}

bool FileReplacement::Write(const QByteArray &piece)
{
    if (m_file && m_file->write(piece) != piece.size())
        GiveUp();
    return m_file.has_value();
}

// QSaveFile::commit ignores a failed flush of its buffer and, on a full disk, would replace the old file by a truncated
// one; hence the explicit flush. It syncs the file before the rename but not the folder, without which a power cut
// could undo the rename.
bool FileReplacement::Commit(QString *error)
{
    if (m_file && !(m_file->flush() && m_file->commit()))
        GiveUp();
    if (m_file)
        SyncFolder(QFileInfo(m_file->fileName()).path());
    *error = m_error;
    return m_error.isEmpty();
}

/// Removes the temporary file.
void FileReplacement::GiveUp()
{
    m_error = m_file->errorString();
    m_file.reset();
}

bool ReplaceFile(const QString &path, const QByteArray &bytes, QString *error)
{
    FileReplacement file(path);
    file.Write(bytes);
    return file.Commit(error);
}

bool CopyWholeFile(const QString &source, const QString &target, QString *error,
                   std::optional<QFileDevice::Permissions> permissions)
{
    if (!IsRegularOrMissing(source, error))
        return false;
    QFile in(source);
    if (!in.open(QIODevice::ReadOnly)) {
        *error = in.errorString();
        return false;
    }
    FileReplacement out(target, permissions);
    QByteArray piece = in.read(PieceBytes);
    while (!piece.isEmpty() && out.Write(piece))
        piece = in.read(PieceBytes);
    if (in.error() == QFileDevice::NoError)
        return out.Commit(error);
    *error = in.errorString();
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
    if (!MayWrite(path, error))
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
