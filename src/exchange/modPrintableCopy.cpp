// SPDX-FileCopyrightText: 2026 The Kotoban developers
// SPDX-License-Identifier: MIT

#include "exchange/modPrintableCopy.h"

#include "base/modCodePage.h"
#include "base/modFile.h"
#include "platform/modReplaceFile.h"
#include "text/modCheckText.h"
#include "text/modReadText.h"

#include <QDateTime>
#include <QFileInfo>

using namespace Qt::Literals::StringLiterals;

namespace {

QString FileNameLine(const QString &path)
{
    return u"\r\n    ファイル名＝"_s + QFileInfo(path).fileName();
}

/// Where an outdated copy is kept.
QString KeptPath(const QString &copyPath)
{
    return copyPath + u".bak"_s;
}

/// Makes the bytes of a study file's copy. @return false after a refusal, which message then holds
bool MakeCopy(const QString &studyFilePath, QByteArray *bytes, QString *message)
{
    StudyLines lines;
    const TextRefusal refusal = ReadStudyText(studyFilePath, MaxLineBytes, &lines);
    *message = refusal.message;
    if (refusal.fault != TextFault::None)
        return false;
    for (int line = 1; line <= lines.Count(); ++line) {
        *bytes += ToCodePage932(PrintableLine(lines.at1(line)));
        *bytes += "\r\n";
    }
    return true;
}

} // namespace

QString PrintableLine(QStringView line)
{
    QString printable = line.toString();
    bool isInBlank = false;
    for (QChar &character : printable) {
        if (character == u'[' || character == u']')
            isInBlank = character == u'[';
        else if (isInBlank)
            character = IsDoubleByte(character) ? u'＿' : u'_';
    }
    return printable;
}

QString PrintableCopyPath(const QString &folder, const QString &studyFilePath)
{
    return JoinPath(folder, GetFileTitle(studyFilePath) + u"_印刷用.txt"_s);
}

OldCopy JudgeOldCopy(const QString &studyFilePath, const QString &copyPath)
{
    const QFileInfo copy(copyPath);
    QByteArray present;
    QByteArray made;
    QString message;
    if (!copy.isFile() || !MakeCopy(studyFilePath, &made, &message))
        return OldCopy::Replaceable; // if it cannot be made or replaced, writing will say so
    if (!ReadWholeFile(copyPath, &present, &message))
        return OldCopy::Unreadable;
    if (present == made)
        return OldCopy::Replaceable;
    return copy.lastModified() > QFileInfo(studyFilePath).lastModified() ? OldCopy::Edited : OldCopy::Outdated;
}

bool WritePrintableCopy(const QString &studyFilePath, const QString &copyPath, QString *message, OldCopy oldCopy)
{
    QByteArray bytes;
    if (!MakeCopy(studyFilePath, &bytes, message))
        return false;
    QString reason;
    QString path = KeptPath(copyPath);
    if (oldCopy != OldCopy::Outdated || CopyWholeFile(copyPath, path, &reason)) {
        path = copyPath;
        if (ReplaceFile(path, bytes, &reason))
            return true;
    }
    *message = u"印刷用ファイルを書き込めません。\r\n  "_s + path + u"\r\n  "_s + reason;
    return false;
}

QString ReplaceCopyQuestion(const QString &copyPath, OldCopy oldCopy)
{
    if (oldCopy == OldCopy::Unreadable)
        return u"次の印刷用ファイルは読めないため，変更されているかどうか分かりません。"_s + FileNameLine(copyPath) +
               u"\r\n\r\nその内容を捨てて，作り直しますか？"_s;
    return u"次の印刷用ファイルは，作った後で変更されています。"_s + FileNameLine(copyPath) +
           u"\r\n\r\n変更した内容を捨てて，作り直しますか？"_s;
}

QString CopyMadeMessage(const QString &copyPath, OldCopy oldCopy)
{
    const QString kept = oldCopy == OldCopy::Outdated
                             ? QString(u"\r\n    前の印刷用ファイル＝"_s + QFileInfo(KeptPath(copyPath)).fileName())
                             : QString();
    return u"印刷用ファイルを作りました。"_s + FileNameLine(copyPath) + kept + u"\r\n\r\nこのファイルを開きますか？"_s;
}
