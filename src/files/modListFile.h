// Small text files in the application folder that the program keeps and a person may edit: one entry a line, its fields
// separated by tabs. They are written in UTF-8 with CR LF and read in whatever code an editor has left them.
#pragma once

#include <QString>
#include <QStringList>

/// A text as one field of an entry: tabs and line ends in it become spaces.
QString ListField(const QString &text);

/// Reads the lines of a list, without their ends; a missing file has none.
/// @return false when the file cannot be read, or not as text: it must not be replaced then. error holds the reason
bool ReadList(const QString &path, QStringList *lines, QString *error);

/// Replaces a list. @return false on failure; error then holds the system's reason, and the old file is still there,
/// whole
bool WriteList(const QString &path, const QStringList &lines, QString *error);
