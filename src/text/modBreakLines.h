// Breaks lines that are too long for a study file at places where a reader would.
#pragma once

#include <QString>

struct BrokenLines
{
    int longLines = 0;        ///< lines over the limit
    int firstLong = 0;        ///< 1-based, 0 when there is none
    int firstUnbreakable = 0; ///< 1-based line that has no place to break it; 0 when all have
    QString text;             ///< with all long lines broken; empty when one cannot be
};

/// Breaks each line over the limit into parts within it, as late as possible: at a blank, which goes, or behind one of
/// "、。，．", never between "[" and "]".
/// @param text  with CR LF at the ends of its lines
/// @param maxLineBytes  in bytes of code page 932, a tab counting two
BrokenLines BreakLongLines(const QString &text, int maxLineBytes);
