// SPDX-FileCopyrightText: 2026 The Kotoban developers
// SPDX-License-Identifier: MIT

// Answers the modal windows that a test opens, in the order of the script.
#pragma once

#include <QAbstractButton>
#include <QAction>
#include <QApplication>
#include <QLabel>
#include <QTimer>

#include <deque>
#include <functional>
#include <gtest/gtest.h>

class DialogScript : public QObject
{
  public:
    DialogScript()
    {
        connect(&m_timer, &QTimer::timeout, this, &DialogScript::Look);
        m_timer.start(5);
    }

    /// Appends a step: when the named window is open and usable, runs an action on it.
    void When(const QString &window, std::function<void(QWidget *)> action)
    {
        m_steps.emplace_back(window, std::move(action));
    }

    /// Appends a step: when the named window is open and usable, clicks one of its buttons.
    void Click(const QString &window, const QString &button)
    {
        When(window, [button](QWidget *dialog) { Press(dialog, button); });
    }

    /// Clicks a button or triggers a menu item.
    static void Press(QWidget *dialog, const QString &name)
    {
        if (auto *const button = dialog->findChild<QAbstractButton *>(name))
            button->click();
        else
            dialog->findChild<QAction *>(name)->trigger();
    }

    bool IsDone() const
    {
        return m_steps.empty() && m_running == 0;
    }

    /// Texts of the message dialogs answered so far.
    QStringList messages;

  private:
    static bool IsUsable(const QWidget *dialog)
    {
        const auto *const ok = dialog->findChild<QAbstractButton *>(QStringLiteral("cmdOK"));
        return dialog->isVisible() && (!ok || ok->isEnabled());
    }

    void Look()
    {
        QWidget *const dialog = QApplication::activeModalWidget();
        if (!dialog || m_isQueued)
            return;
        if (m_steps.empty() || dialog->objectName() != m_steps.front().first || !IsUsable(dialog)) {
            GiveUpOn(dialog);
            return;
        }
        m_waitedMs = 0;
        const auto *const label = dialog->findChild<QLabel *>(QStringLiteral("lblMsg"));
        if (label && label->window() == dialog) // a message that is closing is still a child of its owner
            messages += label->text();
        // Queued, because a step may open and wait in the next window, and a timer does not fire again while its own
        // handler is running.
        m_isQueued = true;
        ++m_running;
        QTimer::singleShot(0, dialog, [this, dialog, action = m_steps.front().second] {
            m_isQueued = false;
            action(dialog);
            --m_running;
        });
        m_steps.pop_front();
    }

    /// Closes a window that the script does not expect, which would block the test forever.
    void GiveUpOn(QWidget *dialog)
    {
        m_waitedMs += m_timer.interval();
        if (m_waitedMs < 20'000) // ten times what any window needs to become usable
            return;
        m_waitedMs = 0;
        ADD_FAILURE() << "unexpected window " << dialog->objectName().toStdString();
        dialog->hide();
    }

    QTimer m_timer;
    bool m_isQueued = false;
    int m_running = 0;
    int m_waitedMs = 0;
    std::deque<std::pair<QString, std::function<void(QWidget *)>>> m_steps;
};
