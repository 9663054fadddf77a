#include "platform/modFolderNames.h"

#include <QFile>
#include <QStringDecoder>

#include <dirent.h>

int CountUnshowableNames(const QString &folder, const QByteArray &ending)
{
    DIR *const entries = opendir(QFile::encodeName(folder).constData());
    if (!entries)
        return 0;
    int count = 0;
    while (const dirent *const entry = readdir(entries)) {
        const QByteArray name(entry->d_name);
        QStringDecoder decoder(QStringDecoder::System);
        const QString shown = decoder(name);
        if ((decoder.hasError() || QFile::encodeName(shown) != name) && name.toLower().endsWith(ending))
            ++count;
    }
    closedir(entries);
    return count;
}
