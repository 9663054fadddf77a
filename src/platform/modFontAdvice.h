// SPDX-FileCopyrightText: 2026 The Kotoban developers
// SPDX-License-Identifier: MIT

// Tells the user how to install a font for the page.
#pragma once

#include <QString>

/// What to do on this system if it has no Japanese fixed-pitch font: in Japanese and, as that may be unreadable without
/// a font, also in English.
QString FontAdvice();
