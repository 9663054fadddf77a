// SPDX-FileCopyrightText: 2026 The Kotoban developers
// SPDX-License-Identifier: MIT

// Lists the files of a folder. On Unix a file name may not be valid text in the encoding of file names, as when an
// archive comes from another system; such a file cannot be opened by the name that Qt makes of it, and Qt's own listing
// does not tell it from others.
#pragma once

#include <QStringList>

struct FolderNames
{
    QStringList names;  ///< unordered
    int unshowable = 0; ///< number of names that are not valid text; these are not in names
};

/// Lists everything in a folder except subfolders and hidden entries. A folder that cannot be read counts as empty.
/// @param ending  ASCII suffix of the names to list, compared case-insensitively
FolderNames ListFolder(const QString &folder, QLatin1StringView ending);
