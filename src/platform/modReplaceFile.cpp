// SPDX-FileCopyrightText: 2026 The Kotoban developers
// SPDX-License-Identifier: MIT

#include "platform/modReplaceFile.h"

#include "platform/modFolderSync.h"

#include <QFile>
#include <QFileInfo>

#include <filesystem>
#include <system_error>
#include <tuple>

namespace {

constexpr qsizetype PieceBytes = 1 << 20; // bytes copied at a time

} // namespace

FileReplacement::FileReplacement(const QString &path, std::optional<QFileDevice::Permissions> permissions)
    : m_fault(WriteRefusal(path))
{
    if (m_fault)
        return;
    m_file.emplace(path);
    if (!m_file->open(QIODevice::WriteOnly))
        GiveUp();
    else if (permissions)
        m_file->setPermissions(*permissions); // where the file system has none, the file is as good without
}

bool FileReplacement::Write(const QByteArray &piece)
{
    // Where the disk becomes full, a part is written without a fault; only the rest fails, with the reason.
    for (qint64 written = 0; m_file && written < piece.size();) {
        const qint64 more = m_file->write(piece.constData() + written, piece.size() - written);
        if (more > 0)
            written += more;
        else
            GiveUp();
    }
    return m_file.has_value();
}

// QSaveFile::commit ignores a failed flush of its buffer and, on a full disk, would replace the old file by a truncated
// one; hence the explicit flush, and a second one, which tells why if the first wrote a part. It syncs the file before
// the rename but not the folder, without which a power cut could undo the rename.
FileFault FileReplacement::Commit()
{
    if (m_file && !((m_file->flush() || m_file->flush()) && m_file->commit()))
        GiveUp();
    if (m_file)
        SyncFolder(QFileInfo(m_file->fileName()).path());
    return m_fault;
}

/// Removes the temporary file.
void FileReplacement::GiveUp()
{
    m_fault = FaultOf(*m_file);
    m_file.reset();
}

namespace {

/// Replaces a file without syncing, as QSaveFile always does.
FileFault ReplaceUnsynced(const QString &path, const QByteArray &bytes)
{
    if (FileFault fault = WriteRefusal(path))
        return fault;
    QFile made(path + QStringLiteral(".new"));
    if (FileFault fault = WriteRefusal(made.fileName()))
        return fault;
    if (!made.open(QIODevice::WriteOnly | QIODevice::Truncate))
        return FaultOf(made);
    if (QFile::exists(path))
        made.setPermissions(QFile::permissions(path));
    FileFault fault;
    if (made.write(bytes) != bytes.size() || !made.flush())
        fault = FaultOf(made);
    made.close();
    std::error_code error;
    if (!fault)
        std::filesystem::rename(made.filesystemFileName(), QFile(path).filesystemFileName(), error);
    if (error)
        fault = {path, QString::fromLocal8Bit(error.message())};
    if (fault)
        made.remove();
    return fault;
}

/// Whether a path leads elsewhere or to a file that must stay.
bool NeedsCare(const QString &path)
{
    const QFileInfo file(path);
    return file.isSymLink() || (file.exists() && !file.isWritable());
}

} // namespace

FileFault ReplaceFile(const QString &path, const QByteArray &bytes, OnDisk onDisk)
{
    if (onDisk == OnDisk::Later && !NeedsCare(path))
        return ReplaceUnsynced(path, bytes);
    FileReplacement file(path);
    std::ignore = file.Write(bytes); // Commit reports a failure
    return file.Commit();
}

FileFault CopyWholeFile(const QString &source, const QString &target,
                        std::optional<QFileDevice::Permissions> permissions)
{
    QFile in(source);
    if (FileFault fault = OpenToRead(&in))
        return fault;
    FileReplacement out(target, permissions);
    QByteArray piece = in.read(PieceBytes);
    while (!piece.isEmpty() && out.Write(piece))
        piece = in.read(PieceBytes);
    return in.error() == QFileDevice::NoError ? out.Commit() : FaultOf(in);
}

QString FreeBackupPath(const QString &path)
{
    QString backup = path + QStringLiteral(".bak");
    for (int number = 2; QFileInfo::exists(backup) || QFileInfo(backup).isSymLink(); ++number)
        backup = path + QStringLiteral(".bak") + QString::number(number);
    return backup;
}

FileFault ReplaceAndKeep(const QString &path, const QByteArray &bytes, QString *keptPath)
{
    keptPath->clear();
    if (FileFault fault = WriteRefusal(path))
        return fault;
    if (QFileInfo::exists(path)) {
        *keptPath = FreeBackupPath(path);
        if (FileFault fault = CopyWholeFile(path, *keptPath))
            return fault;
    }
    FileFault fault = ReplaceFile(path, bytes);
    if (fault && !keptPath->isEmpty())
        QFile::remove(*keptPath);
    return fault;
}
