// SPDX-FileCopyrightText: 2026 The Kotoban developers
// SPDX-License-Identifier: MIT

#include "platform/modSound.h"

#include "platform/modProcess.h"

#include <QFileInfo>
#include <QProcess>

using namespace Qt::Literals::StringLiterals;

// A player process rather than a sound library: it starts quickly, never blocks the window's thread on a sound server
// and cannot crash the program.
void SoundPlayer::Play(const QString &path)
{
    m_running.reset();
    const QString player = FirstInstalled({u"paplay"_s, u"pw-play"_s, u"aplay"_s}); // sound servers before the device
    if (player.isEmpty() || !QFileInfo(path).isFile())
        return;
    const std::shared_ptr<QProcess> process(new QProcess, [](QProcess *running) {
        running->kill();
        running->waitForFinished(200);
        delete running;
    });
    process->setStandardInputFile(QProcess::nullDevice());
    process->setStandardOutputFile(QProcess::nullDevice());
    process->setStandardErrorFile(QProcess::nullDevice());
    process->start(player, {path});
    m_running = process;
}
