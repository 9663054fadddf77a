// SPDX-FileCopyrightText: 2026 The Kotoban developers
// SPDX-License-Identifier: MIT

#include "platform/modEndSignal.h"

#include <QSocketNotifier>

#include <csignal>
#include <fcntl.h>
#include <unistd.h>
#include <utility>

namespace {

constexpr int Signals[] = {SIGTERM, SIGHUP, SIGINT};

// A signal handler takes no context and may only make async-signal-safe calls: it writes one byte to this pipe, which
// the event loop reads.
int g_pipe[2] = {-1, -1};

// The first request starts an orderly shutdown, which something may hold up; a second of the same kind kills the
// process. SIGHUP is excepted: when a terminal closes, the shell and the kernel each send one in quick succession.
void Handle(int number)
{
    if (number != SIGHUP)
        std::signal(number, SIG_DFL);
    const char byte = 0;
    [[maybe_unused]] const ssize_t written = write(g_pipe[1], &byte, 1);
}

} // namespace

void EndSignal::TakeRequests()
{
    if (pipe2(g_pipe, O_CLOEXEC | O_NONBLOCK) != 0)
        return;
    auto *const notifier = new QSocketNotifier(g_pipe[0], QSocketNotifier::Read, this);
    connect(notifier, &QSocketNotifier::activated, this, [this, notifier] {
        notifier->setEnabled(false); // once is enough
        m_wasAsked = true;
        Q_EMIT Asked();
    });
    for (const int number : Signals)
        if (std::signal(number, Handle) == SIG_IGN)
            std::signal(number, SIG_IGN); // was ignored before, as under nohup
}

void EndSignal::RefuseRequests()
{
    for (const int number : Signals)
        if (std::signal(number, SIG_DFL) == SIG_IGN)
            std::signal(number, SIG_IGN);
    for (int &end : g_pipe)
        close(std::exchange(end, -1));
}
