#include "files/modPrintableCopy.h"

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

/// The bytes of a study file's copy, or its reader's refusal.
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

bool WritePrintableCopy(const QString &studyFilePath, const QString &copyPath, QString *message)
{
    QByteArray bytes;
    if (!MakeCopy(studyFilePath, &bytes, message))
        return false;
    QString reason;
    if (ReplaceFile(copyPath, bytes, &reason))
        return true;
    *message = u"印刷用ファイルを書き込めません。\r\n  "_s + copyPath + u"\r\n  "_s + reason;
    return false;
}

bool IsCopyEdited(const QString &studyFilePath, const QString &copyPath)
{
    if (QFileInfo(copyPath).lastModified() <= QFileInfo(studyFilePath).lastModified())
        return false;
    QByteArray present;
    QByteArray made;
    QString message;
    return ReadWholeFile(copyPath, &present, &message) && MakeCopy(studyFilePath, &made, &message) && present != made;
}

QString ReplaceCopyQuestion(const QString &copyPath)
{
    return u"次の印刷用ファイルは，作った後で変更されています。"_s + FileNameLine(copyPath) +
           u"\r\n\r\n変更した内容を捨てて，作り直しますか？"_s;
}

QString CopyMadeMessage(const QString &copyPath)
{
    return u"印刷用ファイルを作りました。"_s + FileNameLine(copyPath) + u"\r\n\r\nこのファイルを開きますか？"_s;
}
