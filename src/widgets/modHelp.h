// SPDX-FileCopyrightText: 2026 The Kotoban developers
// SPDX-License-Identifier: MIT

// Which page of the help is about which window, and opening it.
#pragma once

#include "platform/modSystemServices.h"

/// File name of the page about a window, or a part of one, by its object name; empty if it has no page of its own.
QString HelpPageOf(QStringView objectName);

/// Opens a page of the help without waiting; shows a message if it is missing or cannot be opened.
/// @param page  file name in the folder "htm"
void ShowHelp(SystemServices &services, const QString &applicationFolder, const QString &page);
