// Which days of a study history go into which bar of its chart.
#pragma once

#include "files/modHistory.h"

/// What was studied on the days of one bar.
struct HistoryBar
{
    qint64 seconds = 0;
    qint64 answers = 0;
};

/// The span of a history as bars of equally many days, or nearly so, oldest first: one bar a day, or one for several
/// days where there is no room for that many bars. A day outside the span or without a valid date is in no bar.
/// @param mostBars  bars that there is room for, 1 or more
std::vector<HistoryBar> HistoryBars(const History &history, int mostBars);
