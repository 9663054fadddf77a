#include "files/modListFile.h"

#include "base/modFile.h"
#include "platform/modReplaceFile.h"
#include "text/modDecodeText.h"

using namespace Qt::Literals::StringLiterals;

QString ListField(const QString &text)
{
    QString field = text;
    for (QChar &character : field)
        if (character == u'\t' || character == u'\r' || character == u'\n')
            character = u' ';
    return field;
}

QStringList ReadList(const QString &path)
{
    QByteArray bytes;
    QString error;
    if (!ReadWholeFile(path, &bytes, &error) || bytes.isEmpty())
        return {};
    QStringList lines = DecodeText(bytes, DetectCharCode(WholeFile(bytes))).remove(u'\r').split(u'\n');
    if (lines.last().isEmpty())
        lines.removeLast();
    return lines;
}

bool WriteList(const QString &path, const QStringList &lines, QString *error)
{
    QString text;
    for (const QString &line : lines)
        text += line + u"\r\n"_s;
    return ReplaceFile(path, text.toUtf8(), error);
}
