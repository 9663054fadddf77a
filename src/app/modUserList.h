// The file of the users' names: code page 932, one name a line, in the order in which they first came.
#pragma once

#include <QString>
#include <QStringList>

/// The names in the file, in file order; none when there is no file or it cannot be read.
QStringList ReadUserNames(const QString &path);

/// Adds a name at the end, as it stands. The file is made when there is none, and replaced at one stroke.
/// @return false when it could not be written; error then says why and the file is as before
bool AppendUserName(const QString &path, const QString &name, QString *error);

/// What of a name cannot go through the file and come back, each character once: those that code page 932 lacks, as
/// they are, and control characters, a line feed among them, by their number ("U+000A"). Empty for a name that can be
/// listed.
QStringList CharactersNotForNames(const QString &name);
