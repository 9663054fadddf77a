#include "platform/modFile.h"

#include "platform/modMemory.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QSaveFile>

namespace {

/// Puts what was written in its place. QSaveFile takes no notice when the last of it does not fit on the disk and would
/// put what is there of it in the place of the whole file, so that is written first.
bool Commit(QSaveFile *file)
{
    return file->flush() && file->commit();
}

} // namespace

QString JoinPath(const QString &folder, const QString &name)
{
    return QDir::toNativeSeparators(folder) + QDir::separator() + name;
}

bool ReadWholeFile(const QString &path, QByteArray *bytes, QString *error)
{
    QFile file(path);
    bytes->clear();
    if (file.open(QIODevice::ReadOnly)) {
        // The size is only what the file had a moment ago, and nothing at all for what is no regular file.
        bytes->resize(file.size());
        PreferLargePages(bytes->data(), bytes->size());
        bytes->truncate(qMax(file.read(bytes->data(), bytes->size()), qint64(0)));
        *bytes += file.readAll();
    }
    if (file.error() == QFileDevice::NoError)
        return true;
    *error = file.errorString();
    bytes->clear();
    return false;
}

bool ReplaceFile(const QString &path, const QByteArray &bytes, QString *error)
{
    QSaveFile file(path);
    if (file.open(QIODevice::WriteOnly) && file.write(bytes) == bytes.size() && Commit(&file))
        return true;
    *error = file.errorString();
    return false;
}

bool CopyWholeFile(const QString &source, const QString &target, QString *error)
{
    const QDir folder = QFileInfo(target).dir();
    // What a process that was ended in the middle of it has left.
    for (const QString &name : folder.entryList(QDir::Files | QDir::Hidden))
        if (name.startsWith(UnfinishedCopy))
            QFile::remove(folder.filePath(name));

    QFile in(source);
    if (!in.open(QIODevice::ReadOnly)) {
        *error = in.errorString();
        return false;
    }
    QSaveFile out(folder.filePath(UnfinishedCopy.toString()));
    constexpr qint64 pieceSize = 1 << 20;
    bool isGood = out.open(QIODevice::WriteOnly);
    for (QByteArray piece = in.read(pieceSize); isGood && !piece.isEmpty(); piece = in.read(pieceSize))
        isGood = out.write(piece) == piece.size();
    if (in.error() != QFileDevice::NoError) {
        *error = in.errorString();
        return false;
    }
    if (!isGood || !Commit(&out)) {
        *error = out.errorString();
        return false;
    }
    QFile copy(out.fileName());
    if (copy.rename(target))
        return true;
    *error = copy.errorString();
    copy.remove();
    return false;
}

QString FileNamePart(const QString &text)
{
    constexpr QStringView forbidden = u"\\/:*?\"<>|";
    QString name = text;
    for (QChar &character : name)
        if (character < u' ' || forbidden.contains(character))
            character = u'_';
    return name;
}
