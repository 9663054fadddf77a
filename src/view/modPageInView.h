// The page of a file as the window shows it: which lines are in view, and how far it can scroll. Lines and rows are
// numbered from 1.
#pragma once

#include "view/modPageLayout.h"

struct PageInView
{
    int topLine = 1;        ///< line in the first row: the scroll bar's value
    int lastLine = 0;       ///< last line that has a row of its own; 0 without a text
    int lineCount = 0;      ///< lines of the file
    int pageSize = 1;       ///< lines that a page turn goes on by
    int maximum = 1;        ///< the greatest top line: the scroll bar's maximum
    bool canScroll = false; ///< whether the scroll bar is shown and enabled

    /// Whether a line is in view; line 0, which is none, never is.
    bool Holds(int line) const
    {
        return topLine <= line && line <= lastLine;
    }
};

/// The page of a file of so many lines with a given one in its first row, or the last one possible.
PageInView PageAt(int topLine, int lineCount, const PageLayout &layout);
