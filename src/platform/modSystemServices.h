// SPDX-FileCopyrightText: 2026 The Kotoban developers
// SPDX-License-Identifier: MIT

// The one interface between the program and everything outside its process: message boxes, sounds, speech, other
// programs and the clock. The program passes QtSystemServices; tests pass one that records the calls and sets the time.
#pragma once

#include <QDateTime>
#include <QString>

#include <functional>

class SystemServices
{
  public:
    virtual ~SystemServices() = default;

    /// Sets the title of message boxes that are shown without one.
    virtual void SetApplicationTitle(const QString &title) = 0;

    /// Shows a plain message box with an OK button and the application title; returns when it is closed.
    virtual void ShowMessage(const QString &text) = 0;

    /// As above, with the given title, which may be empty.
    virtual void ShowMessage(const QString &text, const QString &title) = 0;

    /// Starts playing a sound file and returns at once. A new sound stops the old one; silent if the file or a sound
    /// device is missing.
    virtual void PlaySoundFile(const QString &path) = 0;

    /// Ends the text that is being read aloud, starts reading this one and returns at once. Silent if there is no
    /// voice. No text, whatever it contains, can start anything else.
    virtual void Speak(const QString &text) = 0;

    /// Whether a voice is available.
    virtual bool HasVoice() = 0;

    /// Opens a file or folder with its default program, without waiting for it.
    /// @param workingFolder  working directory of the started program, where the system supports one
    /// @return false if nothing could be started
    [[nodiscard]] virtual bool OpenWithShell(const QString &path, const QString &workingFolder) = 0;

    /// Starts a command line as a detached process, without waiting for it.
    /// @return false if nothing could be started
    [[nodiscard]] virtual bool StartCommandLine(const QString &commandLine) = 0;

    /// Sets who tells the user that what one of these two has started soon ended with an error, because a program is
    /// missing. What fails while nobody does waits for the next one.
    /// @param tell  empty for nobody; gets the complete message; called at any time from the event loop, or from this
    /// function
    virtual void SetFailureTeller(const std::function<void(const QString &message)> &tell) = 0;

    /// Whether a window has a place on the screen that the program can read and set. On Wayland only the desktop knows
    /// and chooses it; Qt accepts a place there all the same, and returns it or 0.
    virtual bool HasWindowPlaces() const = 0;

    /// The current local time.
    virtual QDateTime Now() const = 0;

    /// Now() as a function object, which must not outlive this object.
    std::function<QDateTime()> Clock() const
    {
        return [this] { return Now(); };
    }
};
