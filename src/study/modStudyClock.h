// SPDX-FileCopyrightText: 2026 The Kotoban developers
// SPDX-License-Identifier: MIT

// The study clock: how long a file has been open, shown in steps of ten seconds.
#pragma once

#include <QDateTime>

#include <optional>

struct ElapsedTime
{
    qint64 minutes;
    qint64 seconds; ///< 0, 10, ... 50
};

/// What the clock shows at a tick, or nothing if it does not change: between multiples of ten seconds, or when the
/// system clock has been set back before the start.
std::optional<ElapsedTime> ClockTick(const QDateTime &start, const QDateTime &now);
