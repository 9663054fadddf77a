#include "platform/modFile.h"

#include "platform/modFolderSync.h"
#include "platform/modMemory.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QSaveFile>

using namespace Qt::Literals::StringLiterals;

namespace {

constexpr qsizetype PieceBytes = 1 << 20; // that are read and written at a time

/// Puts what was written in its place. QSaveFile takes no notice when the last of it does not fit on the disk and would
/// put what is there of it in the place of the whole file, so that is written first. It syncs the file before it
/// renames it, but not the folder, without which a power cut would take the rename back.
bool Commit(QSaveFile *file)
{
    if (!file->flush() || !file->commit())
        return false;
    SyncFolder(QFileInfo(file->fileName()).path());
    return true;
}

} // namespace

QString JoinPath(const QString &folder, const QString &name)
{
    return QDir::toNativeSeparators(folder) + QDir::separator() + name;
}

bool IsRegularOrMissing(const QString &path, QString *error)
{
    const QFileInfo info(path);
    if (info.isFile() || !info.exists())
        return true;
    *error = u"通常のファイルではありません。"_s;
    return false;
}

bool ReadWholeFile(const QString &path, QByteArray *bytes, QString *error, const std::function<void()> &whileReading)
{
    QFile file(path);
    bytes->clear();
    error->clear();
    if (!IsRegularOrMissing(path, error))
        return false;
    if (!file.open(QIODevice::ReadOnly)) {
        *error = file.errorString();
        return false;
    }
    if (file.size() > MostFileBytes) {
        *error = u"ファイルが大きすぎます。"_s;
        return false;
    }
    // The size is only what the file had a moment ago, and 0 for some files of the system that are not empty.
    bytes->resize(file.size());
    PreferLargePages(bytes->data(), bytes->size());
    qsizetype done = 0;
    for (qint64 taken = 1; taken > 0 && done < bytes->size(); done += qMax(taken, qint64(0))) {
        taken = file.read(bytes->data() + done, qMin(PieceBytes, bytes->size() - done));
        if (whileReading)
            whileReading();
    }
    bytes->truncate(done);
    for (QByteArray more = file.read(PieceBytes); !more.isEmpty(); more = file.read(PieceBytes)) {
        *bytes += more;
        if (bytes->size() > MostFileBytes)
            break;
    }
    if (file.error() == QFileDevice::NoError && bytes->size() <= MostFileBytes)
        return true;
    *error = bytes->size() > MostFileBytes ? u"ファイルが大きすぎます。"_s : file.errorString();
    bytes->clear();
    return false;
}

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

bool CopyWholeFile(const QString &source, const QString &target, QString *error)
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

QString FileNamePart(const QString &text)
{
    constexpr QStringView forbidden = u"\\/:*?\"<>|";
    QString name = text;
    for (QChar &character : name)
        if (character < u' ' || forbidden.contains(character))
            character = u'_';
    return name;
}
