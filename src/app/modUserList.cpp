#include "app/modUserList.h"

#include "platform/modCodePage.h"
#include "platform/modFile.h"
#include "text/modReadText.h"

#include <QFileInfo>

QStringList ReadUserNames(const QString &path)
{
    QByteArray bytes;
    QString error;
    QStringList names;
    if (!ReadWholeFile(path, &bytes, &error))
        return names;
    StudyLines lines;
    ReadAllLines(bytes, ExpandTabs::No, &lines);
    for (int line = 1; line <= lines.Count(); ++line)
        names += lines.at1(line).toString();
    return names;
}

bool AppendUserName(const QString &path, const QString &name, QString *error)
{
    QByteArray bytes;
    // A list that is there but cannot be read must not be replaced by one of a single name.
    if (QFileInfo::exists(path) && !ReadWholeFile(path, &bytes, error))
        return false;
    if (!bytes.isEmpty() && !bytes.endsWith('\n') && !bytes.endsWith('\r'))
        bytes += "\r\n";
    return ReplaceFile(path, bytes + ToCodePage932(name) + "\r\n", error);
}

bool IsUserListed(const QStringList &names, const QString &name)
{
    return names.contains(name) || names.contains(FromCodePage932(ToCodePage932(name)));
}
