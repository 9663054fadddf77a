#include "platform/modFile.h"

#include "platform/modMemory.h"

#include <QDir>
#include <QFile>
#include <QSaveFile>

QString JoinPath(const QString &folder, const QString &name)
{
    return QDir::toNativeSeparators(folder) + QDir::separator() + name;
}

bool ReadWholeFile(const QString &path, QByteArray *bytes, QString *error)
{
    QFile file(path);
    bytes->clear();
    if (file.open(QIODevice::ReadOnly)) {
        // The size is only what the file had a moment ago, and nothing at all for what is no regular file.
        bytes->resize(file.size());
        PreferLargePages(bytes->data(), bytes->size());
        bytes->truncate(qMax(file.read(bytes->data(), bytes->size()), qint64(0)));
        *bytes += file.readAll();
    }
    if (file.error() == QFileDevice::NoError)
        return true;
    *error = file.errorString();
    bytes->clear();
    return false;
}

bool ReplaceFile(const QString &path, const QByteArray &bytes, QString *error)
{
    QSaveFile file(path);
    if (file.open(QIODevice::WriteOnly) && file.write(bytes) == bytes.size() && file.commit())
        return true;
    *error = file.errorString();
    return false;
}

QString FileNamePart(const QString &text)
{
    constexpr QStringView forbidden = u"\\/:*?\"<>|";
    QString name = text;
    for (QChar &character : name)
        if (character < u' ' || forbidden.contains(character))
            character = u'_';
    return name;
}
