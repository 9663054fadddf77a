// SPDX-FileCopyrightText: 2026 The Kotoban developers
// SPDX-License-Identifier: MIT

// Opens files and folders with their default programs.
#pragma once

#include <QString>

/// Opens a file or folder as a double click on it would, in a normal window, without waiting.
/// @param workingFolder  working directory of the started program, where the system supports one
/// @return false if nothing could be started
[[nodiscard]] bool ShellOpen(const QString &path, const QString &workingFolder);
