// Names of files that the system has but cannot show: bytes that are no text in the encoding of file names, as archives
// from other systems leave them. Qt leaves such files out of every list, and nothing could open them.
#pragma once

#include <QByteArray>
#include <QString>

/// How many files of a folder, 0 for one that cannot be read, have a name that is no text.
/// @param ending  counts only names that end so, in letters of either case; ASCII
int CountUnshowableNames(const QString &folder, const QByteArray &ending);
