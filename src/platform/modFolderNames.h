// The names of files in a folder, read faster than Qt does, which asks for more than names. On Unix a file may have a
// name that cannot be shown: bytes that are no text in the encoding of file names, as archives from other systems leave
// them. Nothing could open it by what Qt makes of its name.
#pragma once

#include <QStringList>

struct FolderNames
{
    QStringList names;  ///< in no order
    int unshowable = 0; ///< names that are no text, and so are not among those
};

/// Lists what lies in a folder, but for folders and what is hidden. A folder that cannot be read holds nothing.
/// @param ending  only names that end so, in letters of either case; ASCII
FolderNames ListFolder(const QString &folder, QLatin1StringView ending);
