#include "text/modReadText.h"

#include "platform/modCodePage.h"
#include "platform/modFile.h"
#include "settings/modCharCode.h"
#include "text/modCheckText.h"

using namespace Qt::Literals::StringLiterals;

namespace {

bool ReadAndCheck(const QString &path, int maxLineBytes, StudyLines *lines, QString *message, int *errorLine)
{
    *errorLine = 1;
    QByteArray bytes;
    QString reason;
    if (!ReadWholeFile(path, &bytes, &reason)) {
        *message = UnreadableFileMessage(GetFileTitle(path), reason);
        return false;
    }
    if (!CheckTextEncoding(path, bytes, message))
        return false;
    StudyLines rawLines;
    ReadAllLines(bytes, &rawLines);
    ExpandTabs(rawLines, lines);
    return CheckLineBytes(*lines, maxLineBytes, message, errorLine) && CheckBracketCount(*lines, message, errorLine) &&
           CheckBracketOrder(*lines, message, errorLine);
}

} // namespace

bool ReadTextFile(const QString &path, int maxLineBytes, StudyLines *lines, QString *message, int *errorLine)
{
    message->clear();
    lines->Clear();
    const bool isAccepted = ReadAndCheck(path, maxLineBytes, lines, message, errorLine);
    if (isAccepted)
        *errorLine = 0;
    else
        lines->Clear();
    return isAccepted;
}

bool CheckTextEncoding(const QString &path, const QByteArray &bytes, QString *message)
{
    const QString name = FileCharCodeName(bytes);
    if (name == u"ASCII" || name == u"SJIS")
        return true;
    *message = WrongCharCodeMessage(GetFileTitle(path), name);
    return false;
}

QString FileCharCodeName(const QByteArray &bytes)
{
    // The detection takes a character that ends with the last byte for a broken one, and a file may well end so.
    QByteArray withSpareByte = bytes;
    withSpareByte += '\0';
    return GetCharCodeName(withSpareByte);
}

void ReadAllLines(const QByteArray &bytes, StudyLines *lines)
{
    const QString text = FromCodePage932(bytes);
    lines->Clear();
    lines->Reserve(text.size());
    qsizetype start = 0;
    for (qsizetype i = 0; i < text.size(); ++i) {
        if (text[i] != u'\r' && text[i] != u'\n')
            continue;
        lines->Append(QStringView(text).sliced(start, i - start));
        if (text[i] == u'\r' && i + 1 < text.size() && text[i + 1] == u'\n')
            ++i;
        start = i + 1;
    }
    if (start < text.size())
        lines->Append(QStringView(text).sliced(start));
}

void ExpandTabs(const StudyLines &source, StudyLines *target)
{
    target->Clear();
    for (int line = 1; line <= source.Count(); ++line) {
        const QStringView text = source.at1(line);
        if (text.contains(u'\t'))
            target->Append(text.toString().replace(u'\t', u"  "_s));
        else
            target->Append(text);
    }
}

QString GetFileTitle(const QString &path)
{
    for (qsizetype i = path.size() - 2; i >= 0; --i) {
        if (path[i] == u'\\' || path[i] == u'/') {
            const QString name = path.mid(i + 1);
            return name.left(name.indexOf(u'.'));
        }
    }
    return QString();
}

QString WrongCharCodeMessage(const QString &fileTitle, const QString &codeName)
{
    return u"次のテキストファイルの文字コードはShift_JISではありません。\r\n    ファイル名＝"_s + fileTitle +
           u"\r\n    文字コード＝"_s + codeName +
           u"\r\n\r\nこのファイルをテキストエディタで開いて，ANSIまたはSJISで保存してから，\r\n"
           u"再度このファイルを選択してください。"_s;
}

QString UnreadableFileMessage(const QString &fileTitle, const QString &reason)
{
    return u"次のテキストファイルを読み込みできません。\r\n    ファイル名＝"_s + fileTitle + u"\r\n    理由＝"_s +
           reason;
}
