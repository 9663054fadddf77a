// SPDX-FileCopyrightText: 2026 The Kotoban developers
// SPDX-License-Identifier: MIT

// Does work of unknown length in slices of a few milliseconds. If it is not done at once, a window shows how far it is
// and lets the user stop it.
#pragma once

#include <QDialog>

#include <functional>

class QDeadlineTimer;
class QProgressBar;
class QPushButton;
class QTimer;

class frmWait : public QDialog
{
    Q_OBJECT

  public:
    /// Works until a deadline. @return whether there is more to do
    using Slice = std::function<bool(const QDeadlineTimer &deadline)>;

    /// @param caption  what is being done, for the user
    frmWait(const QString &caption, QWidget *owner);

    /// Works until there is no more to do.
    /// @param done  how much has been done, from 0 to 1
    /// @return false if the user, or the end of the program, has stopped the work before that
    bool Run(const Slice &slice, const std::function<double()> &done);

    /// The same for an object with a GoOn(deadline), which returns whether there is more to do, and a Done().
    template <typename Work>
    bool Run(Work &work)
    {
        return Run([&work](const QDeadlineTimer &deadline) { return work.GoOn(deadline); },
                   [&work] { return work.Done(); });
    }

  private:
    void Form_Load(const QString &caption);
    void cmdCancel_Click();
    void GoOn();

    Slice m_slice;
    std::function<double()> m_done;
    bool m_isFinished = false;
    QTimer *m_working;
    QProgressBar *prgDone;
    QPushButton *cmdCancel;
};
