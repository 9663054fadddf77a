// SPDX-FileCopyrightText: 2026 The Kotoban developers
// SPDX-License-Identifier: MIT

#include "base/modFile.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QFileInfo>

using namespace Qt::Literals::StringLiterals;

namespace {

/// Whether an existing folder is another one or below it. @param folder  canonical; empty if it does not exist
bool IsWithin(const QString &folder, const QString &other)
{
    const QString outer = QFileInfo(other).canonicalFilePath();
    return !folder.isEmpty() && !outer.isEmpty() && (folder == outer || folder.startsWith(outer + u'/'));
}

bool IsRegularOrMissing(const QString &path)
{
    const QFileInfo info(path);
    return info.isFile() || !info.exists();
}

FileFault NotRegular(const QString &path)
{
    return {path, u"通常のファイルではありません。"_s};
}

QString Megabytes(qint64 bytes)
{
    return QString::number(bytes / BytesPerMegabyte) + u"MB"_s;
}

} // namespace

FileFault FaultOf(const QFileDevice &file)
{
    return {file.fileName(), file.errorString()};
}

QString FaultMessage(const QString &heading, const FileFault &fault)
{
    return heading + u"\r\n  "_s + fault.path + u"\r\n  "_s + fault.reason;
}

QString JoinPath(const QString &folder, const QString &name)
{
    return QDir::toNativeSeparators(folder) + QDir::separator() + name;
}

FileFault OpenToRead(QFile *file)
{
    if (!IsRegularOrMissing(file->fileName()))
        return NotRegular(file->fileName());
    return file->open(QIODevice::ReadOnly) ? FileFault() : FaultOf(*file);
}

FileFault WriteRefusal(const QString &path)
{
    if (!IsRegularOrMissing(path))
        return NotRegular(path);
    QFileInfo file(path);
    if (!file.isSymLink())
        return {};
    constexpr int mostLinks = 40; // the end of a longer chain is not reached, and so refused
    for (int links = 0; file.isSymLink() && links < mostLinks; ++links)
        file.setFile(file.symLinkTarget());
    const QString folder = QFileInfo(file.path()).canonicalFilePath();
    if (!file.isSymLink() &&
        (IsWithin(folder, QFileInfo(path).path()) || IsWithin(folder, QCoreApplication::applicationDirPath())))
        return {};
    return {path, u"瞬記帳のフォルダの外を指すリンクなので，書き込みません。"_s};
}

FileFault ReadWholeFile(const QString &path, QByteArray *bytes, qint64 maxBytes)
{
    const FileFault tooLarge{path, Megabytes(maxBytes) + u"を超えるので，読み込みません。"_s};
    QFile file(path);
    bytes->resize(0); // unlike clear(), keeps the capacity that the caller may have reserved
    if (const FileFault fault = OpenToRead(&file))
        return fault;
    if (file.size() > maxBytes)
        return tooLarge;
    // The size is only a hint: the file may be growing, and some system files report 0 although they are not empty.
    bytes->resize(file.size());
    qsizetype done = 0;
    for (qint64 taken = 1; taken > 0 && done < bytes->size(); done += qMax(taken, qint64(0)))
        taken = file.read(bytes->data() + done, bytes->size() - done);
    bytes->truncate(done);
    constexpr qsizetype pieceBytes = 1 << 16;
    for (QByteArray more = file.read(pieceBytes); !more.isEmpty(); more = file.read(pieceBytes)) {
        *bytes += more;
        if (bytes->size() > maxBytes)
            break;
    }
    if (file.error() == QFileDevice::NoError && bytes->size() <= maxBytes)
        return {};
    const bool isTooLarge = bytes->size() > maxBytes;
    bytes->clear();
    return isTooLarge ? tooLarge : FaultOf(file);
}

FileFault SizeRefusal(const QString &path, const QByteArray &bytes, qint64 maxBytes)
{
    if (bytes.size() <= maxBytes)
        return {};
    return {path, Megabytes(maxBytes) + u"を超えるので，書き込みません。"_s};
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

QString NameInLine(const QString &name)
{
    QString inLine = name;
    for (QChar &character : inLine)
        if (character.category() == QChar::Other_Control)
            character = u' ';
    return inLine;
}
