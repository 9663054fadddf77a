// SPDX-FileCopyrightText: 2026 The Kotoban developers
// SPDX-License-Identifier: MIT

#include "platform/modEndSignal.h"

#include <QCoreApplication>
#include <QSocketNotifier>
#include <QThread>

#include <csignal>
#include <fcntl.h>
#include <unistd.h>
#include <utility>

namespace {

constexpr int Signals[] = {SIGTERM, SIGHUP, SIGINT};

// A signal handler takes no context and may only make async-signal-safe calls: it writes one byte to a pipe, which the
// event loop reads. This is the end for writing.
int g_writeEnd = -1;

// What else gets the messages that Qt prints.
QtMessageHandler g_otherHandler = nullptr;

// The first request starts an orderly shutdown, which something may hold up; a second of the same kind kills the
// process. SIGHUP is excepted: when a terminal closes, the shell and the kernel each send one in quick succession.
void Handle(int number)
{
    if (number != SIGHUP)
        std::signal(number, SIG_DFL);
    const char byte = 0;
    [[maybe_unused]] const ssize_t written = write(g_writeEnd, &byte, 1);
}

/// Sets the handler of all signals, except those that are ignored, as under nohup.
void SetHandler(void (*handler)(int))
{
    for (const int number : Signals)
        if (std::signal(number, handler) == SIG_IGN)
            std::signal(number, SIG_IGN);
}

} // namespace

std::shared_ptr<void> EndSignal::HandleSignals()
{
    int ends[2];
    if (pipe2(ends, O_CLOEXEC | O_NONBLOCK) != 0)
        return nullptr;
    g_writeEnd = ends[1];
    auto *const notifier = new QSocketNotifier(ends[0], QSocketNotifier::Read, this);
    connect(notifier, &QSocketNotifier::activated, this, [this, notifier] {
        notifier->setEnabled(false); // once is enough
        m_wasAsked = true;
        Q_EMIT Asked();
    });
    SetHandler(Handle);
    // When the compositor is gone, Qt's Wayland client says only this, in any of its threads, and then calls _exit(),
    // after which no exit handler runs.
    g_otherHandler = qInstallMessageHandler(nullptr); // before another thread needs it
    qInstallMessageHandler([](QtMsgType type, const QMessageLogContext &context, const QString &text) {
        if (text.startsWith(u"The Wayland connection ")) {
            const bool isMainThread = QThread::currentThread() == qApp->thread();
            QMetaObject::invokeMethod(qApp, RunExitHook,
                                      isMainThread ? Qt::DirectConnection : Qt::BlockingQueuedConnection);
        }
        g_otherHandler(type, context, text);
    });
    return std::shared_ptr<void>(notifier, [readEnd = ends[0]](QSocketNotifier *reader) {
        qInstallMessageHandler(g_otherHandler);
        SetHandler(SIG_DFL);
        delete reader; // before what it reads is closed
        close(readEnd);
        close(std::exchange(g_writeEnd, -1));
    });
}
