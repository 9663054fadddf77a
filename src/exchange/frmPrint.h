// SPDX-FileCopyrightText: 2026 The Kotoban developers
// SPDX-License-Identifier: MIT

// Makes the print sheet of a study file and opens it in the browser for printing.
#pragma once

#include "platform/modSystemServices.h"
#include "widgets/CommandWindow.h"

class MarkList;
class PieceFile;
class PrintSheet;
class QComboBox;
class QLayout;
class SettingsFile;
struct PrintSettings;
struct SheetChoices;

class frmPrint : public CommandWindow
{
    Q_OBJECT

  public:
    /// @param settings  stores how sheets are printed
    /// @param marks  the blanks that the user has marked as hard; both must outlive the window
    /// @param reportFolder  where sheets are written
    frmPrint(SystemServices &services, frmMsg &msg, const SettingsFile &settings, const MarkList &marks,
             const QString &reportFolder, QWidget *owner);

    /// Shows the window for study files and blocks until it is closed. For a single file it stays open after a fault,
    /// when the user declines a sheet that is long or lacks a picture, or stops the writing of one.
    void Run(const QStringList &studyFilePaths);

  private:
    void Form_Load();
    void cmdOK_Click() override;

    QLayout *FormOfSheet();
    void ShowSettings(const PrintSettings &print);
    PrintSettings TakeSettings() const;
    bool WriteOne(const QString &sheetPath, const SheetChoices &choices);
    DoneFiles WriteSeveral(const SheetChoices &choices, QStringList *sheetPaths);
    bool Read(const QString &studyFilePath, const QString &sheetPath, const SheetChoices &choices, PrintSheet *sheet);
    bool MayLackPictures(const PrintSheet &sheet);
    bool IsWritten(const PieceFile &file);
    void Open(const QStringList &sheetPaths);

    SystemServices &m_services;
    const SettingsFile &m_settings;
    const MarkList &m_marks;
    QString m_reportFolder;
    QStringList m_studyFilePaths;
    ElidedLabel *lblFile;
    QCheckBox *chkAnswers;
    QCheckBox *chkTeacher;
    QCheckBox *chkOnlyHard;
    QComboBox *cboEdition;
    QComboBox *cboBlankWidth;
    QComboBox *cboLineGap;
    QComboBox *cboColumns;
    QComboBox *cboPoints;
};
