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

/// Opens a file in the editor without waiting for it; shows a message if the editor cannot be started.
void OpenInEditor(SystemServices &services, const QString &editor, const QString &file, int line);

/// Starts a command line without waiting for it; shows a message if it cannot be started.
void StartOrReport(SystemServices &services, const QString &commandLine);
