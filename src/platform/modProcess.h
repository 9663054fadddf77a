// SPDX-FileCopyrightText: 2026 The Kotoban developers
// SPDX-License-Identifier: MIT

// Starts programs: from Windows-style command lines, and the default programs of files and folders.
#pragma once

#include <QString>

#include <functional>
#include <initializer_list>

/// Told what the user has to install, as a sentence in Japanese.
using StartFailed = std::function<void(const QString &advice)>;

/// Starts a command line as a detached process, in a normal, focused window, without waiting for it. On systems other
/// than Windows "notepad.exe" stands for the desktop's own plain-text editor.
/// @param failed  called from the event loop if the desktop's own editor soon ends with an error
/// @return false if nothing could be started
[[nodiscard]] bool StartProcess(
    const QString &commandLine, const StartFailed &failed = [](const QString &) {});

/// Opens a file or folder as a double click on it would, in a normal window, without waiting.
/// @param workingFolder  working directory of the started program, where the system supports one
/// @param failed  called from the event loop if what was started soon ends with an error, which on Windows is known at
/// once
/// @return false if nothing could be started
[[nodiscard]] bool ShellOpen(const QString &path, const QString &workingFolder, const StartFailed &failed);

/// Full path of the program that StartProcess would start for a command line, with links not followed. Empty if there
/// is none, and for a "notepad.exe" that stands for the desktop's own editor.
QString ProgramOf(const QString &commandLine);

/// Full path of the first of some programs that is installed; empty if none is.
QString FirstInstalled(std::initializer_list<QString> names);

/// Whether a text names a program: an existing file, or a bare name found on the system's search path.
bool ProgramExists(const QString &name);
