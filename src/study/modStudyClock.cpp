// SPDX-FileCopyrightText: 2026 The Kotoban developers
// SPDX-License-Identifier: MIT

#include "study/modStudyClock.h"

std::optional<ElapsedTime> ClockTick(const QDateTime &start, const QDateTime &now)
{
    const qint64 total = now.toSecsSinceEpoch() - start.toSecsSinceEpoch();
    const qint64 seconds = total % 60;
    if (total < 0 || seconds % 10 != 0)
        return std::nullopt;
    return ElapsedTime{total / 60, seconds};
}
