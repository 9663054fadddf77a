// SPDX-FileCopyrightText: 2026 The Kotoban developers
// SPDX-License-Identifier: MIT

// The font of everything but the page.
#pragma once

#include <QFont>

/// The desktop's font. Unless its family has Japanese characters, a Japanese one is added, so that kanji have their
/// Japanese shapes in every locale; if the desktop names no family, the Japanese one is the only one. One is enough
/// where it has all characters, and of a font with several Qt looks up all of them for each script.
QFont WindowFont(const QFont &desktop);
