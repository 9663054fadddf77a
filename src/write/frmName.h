// SPDX-FileCopyrightText: 2026 The Kotoban developers
// SPDX-License-Identifier: MIT

// Asks for the name of a new study file.
#pragma once

#include "widgets/CommandWindow.h"

class QLineEdit;

class frmName : public CommandWindow
{
    Q_OBJECT

  public:
    /// @param studyFolder  where the file will be; a name that is taken there is refused
    frmName(frmMsg &msg, const QString &studyFolder, QWidget *owner);

    /// Shows the window and blocks until it is closed. @param title  name to begin with, without ".txt"
    /// @return the name of the file, "name.txt"; empty if the user cancelled
    QString Ask(const QString &title);

  private:
    void Form_Load();
    void cmdOK_Click() override;

    QString m_studyFolder;
    QString m_name;
    QLineEdit *txtName;
};
