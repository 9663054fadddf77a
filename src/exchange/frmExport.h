// SPDX-FileCopyrightText: 2026 The Kotoban developers
// SPDX-License-Identifier: MIT

// Exports a study file for other programs in a format that the user chooses, and shows the folder it was written to.
#pragma once

#include "exchange/modExport.h"
#include "platform/modSystemServices.h"
#include "widgets/CommandWindow.h"

class MarkList;
class QRadioButton;

class frmExport : public CommandWindow
{
    Q_OBJECT

  public:
    /// @param marks  the blanks that the user has marked as hard; must outlive the window
    /// @param reportFolder  where exports are written
    frmExport(SystemServices &services, frmMsg &msg, const MarkList &marks, const QString &reportFolder,
              QWidget *owner);

    /// Shows the window for study files and blocks until it is closed. For a single file it stays open after a fault,
    /// or when the user declines to replace an older export or stops the writing.
    void Run(const QStringList &studyFilePaths);

  private:
    void Form_Load();
    void optKind_Click();
    void cmdOK_Click() override;

    ExportKind ChosenKind() const;
    bool ExportOne();
    bool ExportSeveral();
    bool Read(const QString &studyFilePath, StudyExport *made);
    bool IsWritten(const PieceFile &file);

    SystemServices &m_services;
    const MarkList &m_marks;
    QString m_reportFolder;
    QStringList m_studyFilePaths;
    ElidedLabel *lblFile;
    QRadioButton *optText;
    QRadioButton *optAnki;
    QRadioButton *optCsv;
    QCheckBox *chkOnlyHard;
    bool m_hasHard = false; // whether there are marks for one of the files
};
