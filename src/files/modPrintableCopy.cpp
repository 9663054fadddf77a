#include "files/modPrintableCopy.h"

#include "base/modCodePage.h"
#include "base/modFile.h"
#include "platform/modReplaceFile.h"
#include "text/modCheckText.h"
#include "text/modReadText.h"

using namespace Qt::Literals::StringLiterals;

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
    StudyLines lines;
    const TextRefusal refusal = ReadStudyText(studyFilePath, MaxLineBytes, &lines);
    *message = refusal.message;
    if (refusal.fault != TextFault::None)
        return false;
    QByteArray bytes;
    for (int line = 1; line <= lines.Count(); ++line) {
        bytes += ToCodePage932(PrintableLine(lines.at1(line)));
        bytes += "\r\n";
    }
    QString reason;
    if (ReplaceFile(copyPath, bytes, &reason))
        return true;
    *message = u"印刷用ファイルを書き込めません。\r\n  "_s + copyPath + u"\r\n  "_s + reason;
    return false;
}
