// The services of the system that the program runs on.
#pragma once

#include "platform/modSound.h"
#include "platform/modSystemServices.h"
#include "platform/modVoice.h"

class QtSystemServices : public SystemServices
{
  public:
    /// Shows no message any more: there is nobody to see it.
    void GoSilent();

    void SetApplicationTitle(const QString &title) override;
    void ShowMessage(const QString &text) override;
    void ShowMessage(const QString &text, const QString &title) override;
    void PlaySoundFile(const QString &path) override;
    void Speak(const QString &text) override;
    bool HasVoice() override;
    bool OpenWithShell(const QString &path, const QString &workingFolder) override;
    bool StartCommandLine(const QString &commandLine) override;
    QDateTime Now() const override;

  private:
    QString m_title;
    bool m_isSilent = false;
    SoundPlayer m_sound;
    Voice m_voice;
};
