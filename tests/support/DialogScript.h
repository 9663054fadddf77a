// SPDX-FileCopyrightText: 2026 The Kotoban developers
// SPDX-License-Identifier: MIT

// Answers the modal windows that a test opens, in the order of the script.
#pragma once

#include <QAbstractButton>
#include <QAction>
#include <QApplication>
#include <QDialog>
#include <QLabel>
#include <QTimer>

#include <algorithm>
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
    /// Whether a window is visible, its buttons react, and no dialog that was opened over it is still closing. Until
    /// that dialog's loop returns, whoever opened it has not taken the answer, and may close this window next.
    static bool IsUsable(const QWidget *window)
    {
        const auto *const ok = window->findChild<QAbstractButton *>(QStringLiteral("cmdOK"));
        const auto dialogs = window->findChildren<QDialog *>(Qt::FindDirectChildrenOnly);
        return window->isVisible() && (!ok || ok->isEnabled()) && std::ranges::none_of(dialogs, &QWidget::isHidden);
    }

    /// The window of the next step, if it is open and usable; otherwise nullptr.
    QWidget *WindowOfNextStep() const
    {
        QWidget *const window = QApplication::activeModalWidget();
        const bool isIt = window && !m_steps.empty() && window->objectName() == m_steps.front().first;
        return isIt && IsUsable(window) ? window : nullptr;
    }

    void Look()
    {
        if (!WindowOfNextStep()) {
            GiveUp();
        } else if (!m_isQueued) {
            // Queued, because a step may open and wait in the next window, and a timer does not fire again while its
            // own handler is running.
            m_isQueued = true;
            QTimer::singleShot(0, this, &DialogScript::RunStep);
        }
    }

    void RunStep()
    {
        m_isQueued = false;
        QWidget *const window = WindowOfNextStep();
        if (!window)
            return; // it has closed meanwhile
        m_waitedMs = 0;
        if (const auto *const label = window->findChild<QLabel *>(QStringLiteral("lblMsg")))
            messages += label->text();
        const auto action = std::move(m_steps.front().second);
        m_steps.pop_front();
        ++m_running;
        action(window);
        --m_running;
    }

    /// Closes a menu or window that the script does not expect, which would block the test forever.
    void GiveUp()
    {
        QWidget *const popup = QApplication::activePopupWidget();
        QWidget *const window = popup ? popup : QApplication::activeModalWidget();
        if (!window)
            return;
        m_waitedMs += m_timer.interval();
        if (m_waitedMs < 20'000) // ten times what any window needs to become usable
            return;
        m_waitedMs = 0;
        ADD_FAILURE() << "unexpected window " << window->objectName().toStdString();
        window->hide();
    }

    QTimer m_timer;
    bool m_isQueued = false;
    int m_running = 0;
    int m_waitedMs = 0;
    std::deque<std::pair<QString, std::function<void(QWidget *)>>> m_steps;
};
