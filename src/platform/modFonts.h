// SPDX-FileCopyrightText: 2026 The Kotoban developers
// SPDX-License-Identifier: MIT

// What differs between systems about fonts.
#pragma once

#include <QString>

/// What to do on this system if it has no Japanese fixed-pitch font: in Japanese and, as that may be unreadable without
/// a font, also in English.
QString FontAdvice();

/// Whether a family that Qt gives as the desktop's is one; if the desktop names none, Qt may make up a name.
bool IsNamedByDesktop(QStringView family);
