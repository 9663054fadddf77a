// SPDX-FileCopyrightText: 2026 The Kotoban developers
// SPDX-License-Identifier: MIT

// Waiting for what events, timers or other processes bring about.
#pragma once

#include <QTest>

#include <functional>

/// When to give up waiting: a time in which anything would happen on any machine, however busy. No test may fail
/// because a machine is slow.
constexpr int LongestWaitMs = 120'000;

/// Runs the event loop until a condition holds.
inline bool WaitFor(const std::function<bool()> &isSo)
{
    return QTest::qWaitFor(isSo, LongestWaitMs);
}
