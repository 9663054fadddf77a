// SPDX-FileCopyrightText: 2026 The Kotoban developers
// SPDX-License-Identifier: MIT

#include "platform/modSound.h"

#include <QFileInfo>
#include <QProcess>
#include <QStandardPaths>

using namespace Qt::Literals::StringLiterals;

namespace {

/// An installed command-line player, sound servers before the bare device; empty if there is none.
QString FindPlayer()
{
    for (const QString &name : {u"paplay"_s, u"pw-play"_s, u"aplay"_s}) {
        QString program = QStandardPaths::findExecutable(name);
        if (!program.isEmpty())
            return program;
    }
    return QString();
}

} // namespace

// A player process rather than a sound library: it starts quickly, never blocks the window's thread on a sound server
// and cannot crash the program.
void SoundPlayer::Play(const QString &path)
{
    m_running.reset();
    const QString player = FindPlayer();
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
