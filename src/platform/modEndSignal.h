// SPDX-FileCopyrightText: 2026 The Kotoban developers
// SPDX-License-Identifier: MIT

// Termination that does not come from the user: logout, shutdown, a signal, loss of the display. Where the window
// system delivers it as a request to close the windows, there is nothing to do here.
#pragma once

#include <QObject>

#include <functional>
#include <memory>

class EndSignal : public QObject
{
    Q_OBJECT

  public:
    /// Handles termination requests from now on. Where they are signals, a second one of the same kind, SIGHUP
    /// excepted, kills the process at once. Only one such object may exist at a time.
    EndSignal();
    ~EndSignal() override;

    bool WasAsked() const
    {
        return m_wasAsked;
    }

    /// Sets a callback for a process that exits without a request while this object lives, as Qt does when the display
    /// is gone. It must not touch any window. An empty function removes it.
    void SetExitHook(const std::function<void()> &hook);

  Q_SIGNALS:
    /// Termination was requested. Emitted once, from the event loop of this object's thread.
    void Asked();

  private:
    static void RunExitHook();

    /// Begins to handle signals, and the loss of a display after which no exit handler runs.
    /// @return what ends that when it is destroyed; null where requests are no signals
    std::shared_ptr<void> HandleSignals();

    bool m_wasAsked = false;
    std::function<void()> m_exitHook;
    std::shared_ptr<void> m_handling;
};
