// SPDX-FileCopyrightText: 2026 The Kotoban developers
// SPDX-License-Identifier: MIT

#include "files/modTakeFiles.h"

#include "base/modFile.h"
#include "platform/modReplaceFile.h"

#include <QDir>
#include <QFileInfo>

using namespace Qt::Literals::StringLiterals;

namespace {

constexpr qsizetype MaxShown = 5; // names or failures in one message

bool IsTextOrPicture(const QString &name)
{
    static const QStringList suffixes = {u"txt"_s, u"png"_s, u"jpg"_s, u"jpeg"_s, u"gif"_s, u"bmp"_s};
    return suffixes.contains(QFileInfo(name).suffix().toLower());
}

QString NameOf(const QString &path)
{
    return QFileInfo(path).fileName();
}

QString Indented(const QStringList &lines)
{
    QString text;
    for (const QString &line : lines.first(qMin(MaxShown, lines.size())))
        text += u"\r\n  "_s + line;
    if (lines.size() > MaxShown)
        text += u"\r\n  ほかに"_s + QString::number(lines.size() - MaxShown) + u"個"_s;
    return text;
}

QString IndentedNames(const QStringList &paths)
{
    QStringList names;
    for (const QString &path : paths)
        names += NameOf(path);
    return Indented(names);
}

} // namespace

bool IsTable(const QString &path)
{
    static const QStringList suffixes = {u"csv"_s, u"tsv"_s, u"tab"_s};
    return suffixes.contains(QFileInfo(path).suffix().toLower());
}

FilesToTake SortFilesToTake(const QStringList &paths, const QString &folder)
{
    const QString ownFolder = QFileInfo(folder).canonicalFilePath();
    FilesToTake files;
    QStringList seen; // in lower case, because some file systems ignore case
    for (const QString &path : paths) {
        const QFileInfo info(path);
        if (info.isDir() || !IsTextOrPicture(path)) {
            files.foreign += path;
            continue;
        }
        if (seen.contains(info.fileName().toLower()) || info.dir().canonicalPath() == ownFolder)
            continue;
        seen += info.fileName().toLower();
        (QFileInfo::exists(JoinPath(folder, info.fileName())) ? files.replaced : files.fresh) += path;
    }
    return files;
}

int TakeFiles(const QStringList &paths, const QString &folder, QStringList *failures)
{
    int copied = 0;
    for (const QString &path : paths) {
        QString reason;
        if (CopyWholeFile(path, JoinPath(folder, NameOf(path)), &reason))
            ++copied;
        else
            *failures += NameOf(path) + u"："_s + reason;
    }
    return copied;
}

QString ReplaceTakenQuestion(const QStringList &replaced)
{
    return u"学習ファイルのフォルダに，同じ名前のファイルがあります。"_s + IndentedNames(replaced) +
           u"\r\n\r\n置き換えますか？（「いいえ」を押すと，ないものだけをコピーします。）"_s;
}

QString TakenMessage(int copied, const QStringList &foreign, const QStringList &failures)
{
    QString message = copied > 0 ? QString::number(copied) + u"個のファイルを学習ファイルのフォルダにコピーしました。"_s
                                 : u"コピーしたファイルはありません。"_s;
    if (!foreign.isEmpty())
        message += u"\r\n\r\n学習ファイル（.txt）と画像（.png .jpg .jpeg .gif .bmp）ではないため，コピーしません。"_s +
                   IndentedNames(foreign);
    if (!failures.isEmpty())
        message += u"\r\n\r\nコピーできません。"_s + Indented(failures);
    return message;
}
