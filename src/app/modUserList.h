// The file of the users' names: code page 932, one name a line, in the order in which they first came.
#pragma once

#include <QString>
#include <QStringList>

/// The names in the file, in file order; none when there is no file or it cannot be read.
QStringList ReadUserNames(const QString &path);

/// Adds a name at the end, as it stands. The file is made when there is none, and replaced at one stroke.
/// @return false when it could not be written; error then says why and the file is as before
bool AppendUserName(const QString &path, const QString &name, QString *error);

/// Whether a name is in a list, letter for letter, or would be once it has been through the file, which has "?" for
/// characters that its code page lacks.
bool IsUserListed(const QStringList &names, const QString &name);
