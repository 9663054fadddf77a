// SPDX-FileCopyrightText: 2026 The Kotoban developers
// SPDX-License-Identifier: MIT

// Services that record all calls and return the time set by the test.
#pragma once

#include "platform/modSystemServices.h"

#include <QStringList>

class RecordingServices : public SystemServices
{
  public:
    QDateTime now = QDateTime(QDate(2024, 3, 5), QTime(14, 30, 15));
    QStringList messages;
    QStringList titles; // of the messages, in the same order, even after TakeMessages
    QStringList sounds;
    QStringList spoken;
    QStringList opened;
    QStringList openedIn; // working folders of what was opened
    QStringList commands;
    QString title;
    bool startsPrograms = true;
    bool hasVoice = true;
    bool hasWindowPlaces = true;
    std::function<void(const QString &)> tellFailure;
    std::function<void()> whileShown; // called while a message is shown

    void SetApplicationTitle(const QString &newTitle) override
    {
        title = newTitle;
    }
    void ShowMessage(const QString &text) override
    {
        ShowMessage(text, title);
    }
    void ShowMessage(const QString &text, const QString &itsTitle) override
    {
        messages += text;
        titles += itsTitle;
        if (whileShown)
            whileShown();
    }
    void PlaySoundFile(const QString &path) override
    {
        sounds += path;
    }
    void Speak(const QString &text) override
    {
        spoken += text;
    }
    bool HasVoice() override
    {
        return hasVoice;
    }
    bool OpenWithShell(const QString &path, const QString &workingFolder) override
    {
        opened += path;
        openedIn += workingFolder;
        return startsPrograms;
    }
    bool StartCommandLine(const QString &commandLine) override
    {
        commands += commandLine;
        return startsPrograms;
    }
    void SetFailureTeller(const std::function<void(const QString &)> &tell) override
    {
        tellFailure = tell;
    }
    bool HasWindowPlaces() const override
    {
        return hasWindowPlaces;
    }
    QDateTime Now() const override
    {
        return now;
    }

    /// Messages shown since the last call.
    QStringList TakeMessages()
    {
        return std::exchange(messages, {});
    }
};
