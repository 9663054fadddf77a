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
struct SoundPlayer::Running
{
    QProcess process;

    ~Running()
    {
        process.kill();
        process.waitForFinished(200);
    }
};

SoundPlayer::SoundPlayer() = default;
SoundPlayer::~SoundPlayer() = default;

void SoundPlayer::Play(const QString &path)
{
    m_running.reset();
    const QString player = FindPlayer();
    if (player.isEmpty() || !QFileInfo(path).isFile())
        return;
    m_running = std::make_unique<Running>();
    m_running->process.setStandardInputFile(QProcess::nullDevice());
    m_running->process.setStandardOutputFile(QProcess::nullDevice());
    m_running->process.setStandardErrorFile(QProcess::nullDevice());
    m_running->process.start(player, {path});
}
