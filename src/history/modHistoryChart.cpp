// SPDX-FileCopyrightText: 2026 The Kotoban developers
// SPDX-License-Identifier: MIT

#include "history/modHistoryChart.h"

std::vector<HistoryBar> HistoryBars(const History &history, int maxBars)
{
    const int dayCount = history.Weeks() * 7;
    const int barCount = qMin(dayCount, maxBars);
    std::vector<HistoryBar> bars(static_cast<size_t>(barCount));
    for (const HistoryDay &day : history.Days()) {
        const qint64 dayOfSpan = history.StartDate().daysTo(day.day);
        if (!day.day.isValid() || dayOfSpan < 0 || dayOfSpan >= dayCount)
            continue;
        HistoryBar &bar = bars[size_t(dayOfSpan * barCount / dayCount)];
        bar.seconds += day.seconds;
        bar.answers += day.answers;
    }
    return bars;
}
