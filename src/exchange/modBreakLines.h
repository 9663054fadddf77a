// SPDX-FileCopyrightText: 2026 The Kotoban developers
// SPDX-License-Identifier: MIT

// Breaks lines that are too long for a study file at spaces and punctuation.
#pragma once

#include <QString>

struct BrokenLines
{
    int longLines = 0;        ///< number of lines over the limit
    int firstLong = 0;        ///< 1-based number of the first of them; 0 if there is none
    int firstUnbreakable = 0; ///< 1-based number of the first line that cannot be broken; 0 if all can
    QString text;             ///< text with all long lines broken; empty if one cannot be
};

/// Breaks each line over the limit into parts within the limit, each as long as possible: at a blank, which is removed,
/// or after one of "、。，．", but never between "[" and "]".
/// @param text  with CR LF line endings
/// @param maxLineBytes  in bytes of code page 932, a tab counting two
BrokenLines BreakLongLines(const QString &text, int maxLineBytes);
