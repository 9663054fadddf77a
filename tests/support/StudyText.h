// Study texts for tests, read as a file of the same lines is.
#pragma once

#include "base/modCodePage.h"
#include "text/modReadText.h"

#include <QStringList>

inline StudyLines LinesOf(const QStringList &texts)
{
    StudyLines lines;
    QByteArray bytes;
    for (const QString &text : texts)
        bytes += ToCodePage932(text) + "\r\n";
    ReadAllLines(bytes, ExpandTabs::No, &lines);
    return lines;
}
