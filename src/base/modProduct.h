// SPDX-FileCopyrightText: 2026 The Kotoban developers
// SPDX-License-Identifier: MIT

// The program's name and version.
#pragma once

#include <QString>

/// Product name, used as the title of message boxes and the first word of window titles.
QString ProductName();

/// "major.minor.revision" in plain decimal, e.g. "1.2.35".
QString VersionText();
