// Starts a program from a command line as Windows reads one.
#pragma once

#include <QString>

/// Starts a command line as a process of its own, in a normal, focused window, without waiting for it. Elsewhere than
/// on Windows "notepad.exe" stands for the desktop's own plain-text editor.
/// @return false when nothing could be started
bool StartProcess(const QString &commandLine);

/// Whether a text names a program: a file that exists, or a bare name that the system finds on its search path.
bool ProgramExists(const QString &name);
