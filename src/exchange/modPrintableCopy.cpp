// SPDX-FileCopyrightText: 2026 The Kotoban developers
// SPDX-License-Identifier: MIT

#include "exchange/modPrintableCopy.h"

#include "base/modCodePage.h"
#include "platform/modFolderNames.h"
#include "platform/modReplaceFile.h"
#include "text/modCheckText.h"

#include <QDateTime>
#include <QDeadlineTimer>
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

/// The first names of other study files beside a study file whose copies would have the same path.
QStringList OtherSources(const QString &studyFilePath, const QString &copyPath)
{
    constexpr qsizetype most = 3;
    const QFileInfo file(studyFilePath);
    QStringList others;
    for (const QString &name : ListFolder(file.path(), ".txt"_L1).names)
        if (name != file.fileName() &&
            PrintableCopyPath(QFileInfo(copyPath).path(), JoinPath(file.path(), name)) == copyPath)
            others += NameInLine(name);
    others.sort();
    if (others.size() > most) {
        others.resize(most);
        others.last() += u" …"_s;
    }
    return others;
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

TextRefusal PrintableCopy::Read(const QString &studyFilePath)
{
    m_bytes.clear();
    return m_parts.Read(studyFilePath, MaxLineBytes);
}

bool PrintableCopy::GoOn(const QDeadlineTimer &deadline)
{
    StudyLines lines;
    while (m_parts.Next(ExpandTabs::Yes, &lines)) {
        for (int line = 1; line <= lines.Count(); ++line)
            m_bytes += ToCodePage932(PrintableLine(lines.at1(line))) + "\r\n";
        if (deadline.hasExpired())
            return true;
    }
    return false;
}

OldCopy JudgeOldCopy(const QByteArray &bytes, const QString &studyFilePath, const QString &copyPath)
{
    const QFileInfo copy(copyPath);
    QByteArray present;
    if (!copy.isFile())
        return OldCopy::Replaceable; // if it cannot be replaced, writing will say so
    if (ReadWholeFile(copyPath, &present))
        return OldCopy::Unreadable;
    if (present == bytes)
        return OldCopy::Replaceable;
    return copy.lastModified() > QFileInfo(studyFilePath).lastModified() ? OldCopy::Edited : OldCopy::Outdated;
}

FileFault WritePrintableCopy(const QByteArray &bytes, const QString &copyPath, OldCopy oldCopy)
{
    if (oldCopy == OldCopy::Outdated)
        if (FileFault fault = CopyWholeFile(copyPath, KeptPath(copyPath)))
            return fault;
    return ReplaceFile(copyPath, bytes);
}

QString ReplaceCopyQuestion(const QString &studyFilePath, const QString &copyPath, OldCopy oldCopy)
{
    if (oldCopy == OldCopy::Unreadable)
        return u"次の印刷用ファイルは読めないため，変更されているかどうか分かりません。"_s + FileNameLine(copyPath) +
               u"\r\n\r\nその内容を捨てて，作り直しますか？"_s;
    const QStringList others = OtherSources(studyFilePath, copyPath);
    if (others.isEmpty())
        return u"次の印刷用ファイルは，作った後で変更されています。"_s + FileNameLine(copyPath) +
               u"\r\n\r\n変更した内容を捨てて，作り直しますか？"_s;
    return u"次の印刷用ファイルは，作った後で変更されたか，ほかの学習ファイルから作られています。"_s +
           FileNameLine(copyPath) + u"\r\n    選んだ学習ファイル＝"_s + QFileInfo(studyFilePath).fileName() +
           u"\r\n    ほかの学習ファイル＝"_s + others.join(u"，"_s) +
           u"\r\n\r\n今の内容を捨てて，選んだ学習ファイルから作り直しますか？"_s;
}

QString CopyMadeMessage(const QString &copyPath, OldCopy oldCopy)
{
    const QString kept = oldCopy == OldCopy::Outdated
                             ? QString(u"\r\n    前の印刷用ファイル＝"_s + QFileInfo(KeptPath(copyPath)).fileName())
                             : QString();
    return u"印刷用ファイルを作りました。"_s + FileNameLine(copyPath) + kept + u"\r\n\r\nこのファイルを開きますか？"_s;
}
