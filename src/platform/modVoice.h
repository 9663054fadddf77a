// SPDX-FileCopyrightText: 2026 The Kotoban developers
// SPDX-License-Identifier: MIT

// Reads text aloud.
#pragma once

#include <QString>

#include <memory>

class Voice
{
  public:
    /// Ends the text that is being spoken, starts speaking this one and returns at once. Whatever the text contains, it
    /// is only spoken, never interpreted as markup, an option, a script or a command line. Silent if there is no voice.
    /// Nothing is loaded before the first text.
    void Speak(const QString &text);

    /// Whether a voice is available.
    bool IsThere();

  private:
    std::shared_ptr<void> m_engine; // of the system, where it has one that stays loaded
};

/// What the user has to install on this system to have a voice, as a sentence in Japanese.
QString VoiceAdvice();
