// SPDX-FileCopyrightText: 2026 The Kotoban developers
// SPDX-License-Identifier: MIT

// The SystemServices of the program itself, on top of Qt and platform/.
#pragma once

#include "platform/modSound.h"
#include "platform/modSystemServices.h"
#include "platform/modVoice.h"

#include <QStringList>

class QtSystemServices : public SystemServices
{
  public:
    /// Suppresses all further messages, for when the display is gone.
    void GoSilent();

    void SetApplicationTitle(const QString &title) override;
    void ShowMessage(const QString &text) override;
    void ShowMessage(const QString &text, const QString &title) override;
    void PlaySoundFile(const QString &path) override;
    void Speak(const QString &text) override;
    bool HasVoice() override;
    bool OpenWithShell(const QString &path, const QString &workingFolder) override;
    bool StartCommandLine(const QString &commandLine) override;
    void SetFailureTeller(const std::function<void(const QString &message)> &tell) override;
    bool HasWindowPlaces() const override;
    QDateTime Now() const override;

  private:
    void TellFailure(const QString &message);

    QString m_title;
    bool m_isSilent = false;
    std::function<void(const QString &)> m_tellFailure;
    QStringList m_failures; // that wait to be told
    SoundPlayer m_sound;
    Voice m_voice;
};
