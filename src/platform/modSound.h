// SPDX-FileCopyrightText: 2026 The Kotoban developers
// SPDX-License-Identifier: MIT

// Plays one sound at a time.
#pragma once

#include <QString>

#include <memory>

class SoundPlayer
{
  public:
    SoundPlayer();
    ~SoundPlayer();
    Q_DISABLE_COPY_MOVE(SoundPlayer)

    /// Starts playing a WAVE file and returns at once. A new sound stops the old one; silent if the file or a sound
    /// device is missing. Nothing is loaded before the first sound.
    void Play(const QString &path);

  private:
    struct Running;
    std::unique_ptr<Running> m_running;
};
