// SPDX-FileCopyrightText: 2026 The Kotoban developers
// SPDX-License-Identifier: MIT

// Makes the print sheet of a study file and opens it in the browser for printing.
#pragma once

#include "platform/modSystemServices.h"
#include "widgets/CommandWindow.h"

class MarkList;
class SettingsFile;

class frmPrint : public CommandWindow
{
    Q_OBJECT

  public:
    /// @param settings  stores whether the answers are printed
    /// @param marks  the blanks that the user has marked as hard; both must outlive the window
    /// @param reportFolder  where sheets are written
    frmPrint(SystemServices &services, frmMsg &msg, const SettingsFile &settings, const MarkList &marks,
             const QString &reportFolder, QWidget *owner);

    /// Shows the window for a study file and blocks until it is closed. It stays open after a fault, or when the user
    /// declines or stops the writing of a long sheet.
    void Run(const QString &studyFilePath);

  private:
    void Form_Load();
    void cmdOK_Click() override;

    bool Write(const QString &sheetPath);

    SystemServices &m_services;
    const SettingsFile &m_settings;
    const MarkList &m_marks;
    QString m_reportFolder;
    QString m_studyFilePath;
    ElidedLabel *lblFile;
    QCheckBox *chkAnswers;
    QCheckBox *chkOnlyHard;
};
