// SPDX-FileCopyrightText: 2026 The Kotoban developers
// SPDX-License-Identifier: MIT

// Plays one sound at a time.
#pragma once

#include <QString>

#include <memory>

class SoundPlayer
{
  public:
    /// Starts playing a WAVE file and returns at once. A new sound stops the old one; silent if the file or a sound
    /// device is missing. Nothing is loaded before the first sound.
    void Play(const QString &path);

  private:
    std::shared_ptr<void> m_running; // its deleter stops the sound, where that is ours to do
};
