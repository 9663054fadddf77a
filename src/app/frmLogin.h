// SPDX-FileCopyrightText: 2026 The Kotoban developers
// SPDX-License-Identifier: MIT

// The user selection window, where users pick their name or type a new one.
#pragma once

#include "platform/modSystemServices.h"

#include <QDialog>

class frmMsg;
class QLabel;
class QLineEdit;
class QListWidget;

/// How the user selection window was closed.
enum class LoginResult
{
    Accepted,   ///< with a name
    Closed,     ///< by its close button: the name stays empty and the program continues
    EndProgram, ///< the program must exit at once
};

class frmLogin : public QDialog
{
    Q_OBJECT

  public:
    /// @param userListPath  the file with the users' names
    /// @param lastUser  the user who studied last; preselected if in the list
    frmLogin(SystemServices &services, frmMsg &msg, const QString &userListPath, const QString &lastUser);

    /// Shows the window and waits until it is closed.
    LoginResult Ask();

    /// The chosen name exactly as entered, blanks included; empty until one is accepted.
    const QString &UserName() const
    {
        return m_userName;
    }

  protected:
    void showEvent(QShowEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;

  private:
    void Form_Load();
    void Form_Activate();
    void lstUserName_Click();
    void cmdOK_Click();
    void cmdEnd_Click();

    bool CheckName(const QString &name);
    void Leave(LoginResult result);

    SystemServices &m_services;
    frmMsg &m_msg;
    QString m_userListPath;
    QString m_lastUser;
    QStringList m_names;
    QString m_userName;
    LoginResult m_result = LoginResult::Closed;
    QLabel *lblComment;
    QLineEdit *txtUserName;
    QListWidget *lstUserName;
};
