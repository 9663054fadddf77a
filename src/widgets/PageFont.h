// SPDX-FileCopyrightText: 2026 The Kotoban developers
// SPDX-License-Identifier: MIT

// The font in which columns of Japanese text line up.
#pragma once

#include <QFont>

/// MS Gothic if available, else IPAGothic, else a fixed-pitch Japanese font of the system. Of a family with regional
/// variants the one for Japan is preferred, because it has the Japanese shapes of the kanji.
QFont PageFont();

/// Whether there is such a font. If not, a fixed-pitch font for another script is used, and the system substitutes the
/// characters it lacks.
bool HasPageFont();
