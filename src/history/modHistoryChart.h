// SPDX-FileCopyrightText: 2026 The Kotoban developers
// SPDX-License-Identifier: MIT

// Groups the days of a study history into the bars of its chart.
#pragma once

#include "history/modHistory.h"

/// What was studied on the days of one bar.
struct HistoryBar
{
    qint64 seconds = 0;
    qint64 answers = 0;
};

/// The span of a history as bars, oldest first: one per day, or one per several days when there are more days than
/// bars fit. All bars cover the same number of days, give or take one. Days outside the span or without a valid date
/// are left out.
/// @param maxBars  number of bars that fit, 1 or more
std::vector<HistoryBar> HistoryBars(const History &history, int maxBars);
