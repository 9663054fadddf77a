// SPDX-FileCopyrightText: 2026 The Kotoban developers
// SPDX-License-Identifier: MIT

#include "text/modTextDifference.h"

#include <algorithm>

TextDifference DifferenceOf(const QString &before, const QString &after)
{
    qsizetype offset = std::ranges::mismatch(before, after).in1 - before.begin();
    if (offset > 0 && before[offset - 1].isHighSurrogate())
        --offset;
    const qsizetype shortest = qMin(before.size(), after.size()) - offset;
    qsizetype same = 0; // at the end
    while (same < shortest && before[before.size() - 1 - same] == after[after.size() - 1 - same])
        ++same;
    if (same > 0 && before[before.size() - same].isLowSurrogate())
        --same;
    return {offset, before.sliced(offset, before.size() - offset - same),
            after.sliced(offset, after.size() - offset - same)};
}
