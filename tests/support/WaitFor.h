// SPDX-FileCopyrightText: 2026 The Kotoban developers
// SPDX-License-Identifier: MIT

// Waiting for what events, timers or other processes bring about.
#pragma once

#include <QCoreApplication>
#include <QDeadlineTimer>
#include <QTimer>

#include <functional>

/// When to give up waiting: a time in which anything would happen on any machine, however busy. No test may fail
/// because a machine is slow.
constexpr int LongestWaitMs = 120'000;

/// Runs the event loop until a condition holds. Unlike QTest::qWaitFor() it does not sleep while there are events, so
/// that work in slices takes no longer than in the program.
inline bool WaitFor(const std::function<bool()> &isSo)
{
    const QDeadlineTimer longest(LongestWaitMs);
    QTimer looking; // for what comes without an event
    looking.start(10);
    while (!isSo()) {
        if (longest.hasExpired())
            return false;
        QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    }
    return true;
}
