// SPDX-FileCopyrightText: 2026 The Kotoban developers
// SPDX-License-Identifier: MIT

// Keeps keys and clicks from doing what they were not meant for. One guard watches all windows of the program, so that
// a key held while one window replaces another is recognised in the new one.
//
// It flags the repetitions of a held key that Qt could not flag with isAutoRepeat(): an X server without detectable
// auto-repeat sends each as a release and a press with the same time, and the press may not have arrived when Qt
// processes the release. A flag would come too late for a shortcut, which Qt runs before it delivers the press, so the
// guard itself stops those that a held key must not repeat.
//
// It keeps an Enter or Escape that ends an input method's conversion from pressing a window's button. Most input
// methods consume that key, but some pass it on before the conversion is finished.
#pragma once

#include <QGuiApplication>
#include <QObject>

class QKeyEvent;

class InputGuard : public QObject
{
  public:
    /// Watches the application until it is destroyed.
    /// @param hasKeyTimes  whether key events have the times at which keys were pressed. On Windows they have those at
    /// which Qt handles them: two quick presses that wait behind long work would look like a repetition. All
    /// repetitions are flagged there.
    explicit InputGuard(bool hasKeyTimes = QGuiApplication::platformName() != QStringView(u"windows"));

    /// While set, keys, clicks and the wheel do nothing except in a modal window: what was typed or clicked ahead was
    /// meant for a window that is gone.
    void IgnoreInput(bool isIgnored)
    {
        m_isInputIgnored = isIgnored;
    }

  protected:
    bool eventFilter(QObject *receiver, QEvent *event) override;

  private:
    bool IsUnflaggedRepetition(const QKeyEvent &press) const;

    bool m_hasKeyTimes;
    bool m_isInputIgnored = false;
    int m_releasedKey = 0;
    quint64 m_releasedMs = 0;
    bool m_isShortcutRepeated = false; // whether the key that is looked up as a shortcut is such a repetition
    QObject *m_composing = nullptr;    // the widget whose text is still being converted
};
