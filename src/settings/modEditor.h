// SPDX-FileCopyrightText: 2026 The Kotoban developers
// SPDX-License-Identifier: MIT

// Opens study files in the user's text editor.
#pragma once

#include "platform/modSystemServices.h"

/// The command line that opens a file. If the editor setting contains hidemaru.exe, sakura.exe or terapad.exe, tried in
/// this order and ignoring case, the editor is also told the line; any other editor gets only the file. The editor
/// setting itself is not quoted. The file is a single argument, whatever its name.
/// @param line  1-based line to jump to
QString EditorCommandLine(const QString &editor, const QString &file, int line);

/// The editor to start, and the folder whose data it must not come from.
struct Editor
{
    QString program; ///< as in the settings
    QString applicationFolder;
};

/// Why a command line must not be started, as the complete message for the user; empty if it may be. A settings file of
/// unknown origin would otherwise have a study file executed, or run as a script. Refused are
/// - programs in the folders of the application folder that hold data: txt, db, db_backup, rec, wav, htm, log;
/// - shells: sh, ash, bash, dash, ksh, mksh, zsh, csh, tcsh, fish, busybox, cmd, powershell, pwsh;
/// - script hosts: python, perl, tclsh, wish, node, ruby, php, lua, osascript, wscript, cscript, mshta, rundll32;
/// - programs that start another: env, nohup, setsid, nice, timeout, xargs, stdbuf.
/// - paths longer than LongestProgramPath, which cannot be judged.
/// The names with or without a version and ".exe". Any other program may be started, whatever it does with the file.
/// All but the last by the path and name as written and by those behind a link.
QString EditorRefusal(const QString &commandLine, const QString &applicationFolder);

/// Opens a file in the editor without waiting for it; shows a message if the editor is refused or cannot be started.
void OpenInEditor(SystemServices &services, const Editor &editor, const QString &file, int line);

/// Starts the editor without a file and without waiting for it; shows a message if it is refused or cannot be started.
void TryEditor(SystemServices &services, const Editor &editor);
