// SPDX-FileCopyrightText: 2026 The Kotoban developers
// SPDX-License-Identifier: MIT

#include "platform/unix/modWatchedStart.h"

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QProcess>

#include <unistd.h>

namespace {

class WatchedProcess : public QProcess
{
  public:
    using QProcess::QProcess;

    ~WatchedProcess() override
    {
        setProcessState(QProcess::NotRunning); // or QProcess would kill the program
    }
};

} // namespace

bool StartWatched(const QString &program, const QStringList &arguments, const QString &folder,
                  const std::function<void()> &failed)
{
    auto *const process = new WatchedProcess(QCoreApplication::instance());
    process->setStandardInputFile(QProcess::nullDevice());
    process->setProcessChannelMode(QProcess::ForwardedChannels);
    process->setWorkingDirectory(folder);
    process->setChildProcessModifier([] { setsid(); }); // a signal from the terminal is not meant for it
    QElapsedTimer sinceStart;
    sinceStart.start();
    QObject::connect(process, &QProcess::finished, process,
                     [process, failed, sinceStart](int status, QProcess::ExitStatus how) {
                         constexpr qint64 soonMs = 2000;
                         if ((status != 0 || how != QProcess::NormalExit) && !sinceStart.hasExpired(soonMs))
                             failed();
                         process->deleteLater();
                     });
    process->start(program, arguments);
    if (process->waitForStarted())
        return true;
    delete process;
    return false;
}
