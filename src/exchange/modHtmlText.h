// SPDX-FileCopyrightText: 2026 The Kotoban developers
// SPDX-License-Identifier: MIT

// Plain text of HTML fragments, as exported by flash-card programs.
#pragma once

#include <QString>
#include <QStringView>

/// Strips an HTML fragment to plain text. Tags that start a new line, block or cell become a space, and so do CR and
/// LF; all other tags are removed. Common named entities and all numeric ones are decoded. "[sound:…]", by which cards
/// refer to a recording, is removed. Everything else is kept as is.
QString TextOfHtml(QStringView html);
