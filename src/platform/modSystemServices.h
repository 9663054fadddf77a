// The one seam between the program and the world outside its process: message boxes, sounds, the voice, other programs
// and the clock. The program passes QtSystemServices, tests pass one that records the calls and sets the time.
#pragma once

#include <QDateTime>
#include <QString>

#include <functional>

class SystemServices
{
  public:
    virtual ~SystemServices() = default;

    /// Gives the plain message boxes that name no title of their own the given one.
    virtual void SetApplicationTitle(const QString &title) = 0;

    /// Shows a plain message box with an OK button and the application title; returns when it is closed.
    virtual void ShowMessage(const QString &text) = 0;

    /// As above, with a title of its own, which may be empty.
    virtual void ShowMessage(const QString &text, const QString &title) = 0;

    /// Starts playing a sound file and returns at once. A new sound stops the old one; a missing file or device is
    /// silent.
    virtual void PlaySoundFile(const QString &path) = 0;

    /// Starts reading a text aloud and returns at once. Silent where there is no voice; the text starts nothing else,
    /// whatever it holds.
    virtual void Speak(const QString &text) = 0;

    /// Whether there is a voice to read with.
    virtual bool HasVoice() = 0;

    /// Has the system open a file or folder with the program that belongs to it, without waiting for it.
    /// @param workingFolder  the opened program's current folder, where the system knows such a folder
    /// @return false when nothing could be started
    virtual bool OpenWithShell(const QString &path, const QString &workingFolder) = 0;

    /// Starts a command line as a process of its own, without waiting for it.
    /// @return false when nothing could be started
    virtual bool StartCommandLine(const QString &commandLine) = 0;

    /// The present moment in local time.
    virtual QDateTime Now() const = 0;

    /// The same as a function, which must not outlive this.
    std::function<QDateTime()> Clock() const
    {
        return [this] { return Now(); };
    }
};
