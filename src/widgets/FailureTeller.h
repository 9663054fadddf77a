// SPDX-FileCopyrightText: 2026 The Kotoban developers
// SPDX-License-Identifier: MIT

// Tells the user that programs which were started have failed, once no dialog is open in front of the window in use.
#pragma once

#include <QObject>
#include <QStringList>

#include <functional>

class QTimer;
class SystemServices;
class frmMsg;

class FailureTeller : public QObject
{
    Q_OBJECT

  public:
    /// Becomes the failure teller of the services until it is destroyed.
    /// @param windowInUse  returns the window over which to tell, or nullptr if nothing is told any more
    FailureTeller(SystemServices &services, frmMsg &msg, std::function<QWidget *()> windowInUse, QObject *parent);
    ~FailureTeller() override;

  private:
    void Tell();

    SystemServices &m_services;
    frmMsg &m_msg;
    std::function<QWidget *()> m_windowInUse;
    QTimer *m_timer;        // runs while there are messages
    QStringList m_messages; // to tell
};
