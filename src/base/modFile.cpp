// SPDX-FileCopyrightText: 2026 The Kotoban developers
// SPDX-License-Identifier: MIT

#include "base/modFile.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

#include <algorithm>
#include <filesystem>
#include <system_error>

using namespace Qt::Literals::StringLiterals;

namespace {

/// Where a link leads, as it is written in the link if the library can tell.
std::filesystem::path TargetOf(const QFileInfo &link)
{
    std::error_code fault;
    const std::filesystem::path target = std::filesystem::read_symlink(link.filesystemFilePath(), fault);
    return fault ? QFileInfo(link.symLinkTarget()).filesystemFilePath() : target;
}

/// Whether a path is a link that leads to anything but a file in its own folder. What ".." behind another link means
/// differs: the system goes up from where that link leads, Qt shortens the path as written. So ".." is out, too.
bool LeadsElsewhere(const QString &path)
{
    std::error_code fault;
    QFileInfo file(path);
    constexpr int mostLinks = 40; // the end of a longer chain is not reached
    for (int links = 0; links < mostLinks && file.isSymLink(); ++links) {
        const std::filesystem::path link = std::filesystem::absolute(file.filesystemFilePath(), fault);
        const std::filesystem::path target = link.parent_path() / TargetOf(file);
        if (std::ranges::find(target, "..") != target.end() ||
            !std::filesystem::equivalent(target.parent_path(), link.parent_path(), fault))
            return true;
        file.setFile(target);
    }
    return file.isSymLink();
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

/// Whether a character ends a line or turns the direction of the text after it.
bool DisturbsLine(QChar character)
{
    constexpr QStringView others =
        u"\u061C\u200E\u200F\u2028\u2029\u202A\u202B\u202C\u202D\u202E\u2066\u2067\u2068\u2069";
    return character.category() == QChar::Other_Control || others.contains(character);
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
    if (LeadsElsewhere(path))
        return {path, u"ほかのフォルダを指すリンクなので，書き込みません。"_s};
    return {};
}

FileFault ReadWholeFile(const QString &path, QByteArray *bytes, qint64 maxBytes)
{
    FileFault tooLarge{path, Megabytes(maxBytes) + u"を超えるので，読み込みません。"_s};
    QFile file(path);
    bytes->resize(0); // unlike clear(), keeps the capacity that the caller may have reserved
    if (FileFault fault = OpenToRead(&file))
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
        if (DisturbsLine(character))
            character = u' ';
    return inLine;
}
