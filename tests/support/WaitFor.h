// SPDX-FileCopyrightText: 2026 The Kotoban developers
// SPDX-License-Identifier: MIT

// Waiting for what events, timers or other processes bring about.
#pragma once

#include <QTest>

#include <functional>

/// Runs the event loop until a condition holds. Gives up only after a time in which it would hold on any machine,
/// however busy: no test may fail because a machine is slow.
inline bool WaitFor(const std::function<bool()> &isSo)
{
    return QTest::qWaitFor(isSo, 120'000);
}
