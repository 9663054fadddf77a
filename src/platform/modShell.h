// Has the system open things with the programs that belong to them.
#pragma once

#include <QString>

/// Opens a file or folder as a double click on it would, in a normal window, without waiting.
/// @param workingFolder  current folder of the opened program, where the system knows such a folder
/// @return false when nothing could be started
bool ShellOpen(const QString &path, const QString &workingFolder);
