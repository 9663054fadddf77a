// SPDX-FileCopyrightText: 2026 The Kotoban developers
// SPDX-License-Identifier: MIT

// Breaks lines that are too long for a study file.
#pragma once

#include <QString>

struct BrokenLines
{
    int longLines = 0;     ///< number of lines over the limit
    int firstLong = 0;     ///< 1-based number of the first of them; 0 if there is none
    int broken = 0;        ///< number of lines that could be broken
    int firstUnbroken = 0; ///< 1-based number, in the result, of the first line that could not; 0 if there is none
    QString text;          ///< the text with all these lines broken
};

/// Breaks each line over the limit into parts within the limit, each as long as possible: at a blank, which is removed,
/// or after one of "、。，．", or where there is neither, before "[" or after "]"; but never between "[" and "]". A
/// line without enough such places stays whole.
/// @param text  with CR LF line endings
/// @param maxLineBytes  in bytes of code page 932, a tab counting two
BrokenLines BreakLongLines(const QString &text, int maxLineBytes);
