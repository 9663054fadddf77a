// SPDX-FileCopyrightText: 2026 The Kotoban developers
// SPDX-License-Identifier: MIT

// The font of everything but the page.
#pragma once

#include <QFont>

/// The desktop's font with a Japanese family after its own, so that kanji have their Japanese shapes in every locale. A
/// family that has Japanese characters is the only one, and so is the Japanese one if the desktop names none: of a font
/// with several families Qt looks up all for each script, and asks the system for further ones at once.
QFont WindowFont(const QFont &desktop);
