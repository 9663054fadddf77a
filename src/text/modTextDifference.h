// SPDX-FileCopyrightText: 2026 The Kotoban developers
// SPDX-License-Identifier: MIT

// The one range in which two texts differ.
#pragma once

#include <QString>

/// Where two texts differ: from a 0-based offset on, the one has the first part and the other the second in its place.
struct TextDifference
{
    qsizetype offset = 0;
    QString before{};
    QString after{};
};

/// The shortest single difference of two texts in which surrogate pairs stay whole.
TextDifference DifferenceOf(const QString &before, const QString &after);
