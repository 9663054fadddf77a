// The command line that opens a study file in the learner's text editor.
#pragma once

#include "platform/modSystemServices.h"

/// Command line that opens a file. hidemaru.exe, sakura.exe and terapad.exe, found anywhere in the editor's text in any
/// case and in this order, are given the line too; any other editor is given the file alone. The editor's text itself
/// is not quoted. The file is one argument, whatever its name.
/// @param line  1-based line to jump to
QString EditorCommandLine(const QString &editor, const QString &file, int line);

/// Opens a file in the editor without waiting for it; says so in a message box when the editor cannot be started.
void OpenInEditor(SystemServices &services, const QString &editor, const QString &file, int line);

/// Starts a command line without waiting for it; says so in a message box when it cannot be started.
void StartOrReport(SystemServices &services, const QString &commandLine);
