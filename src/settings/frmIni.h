// SPDX-FileCopyrightText: 2026 The Kotoban developers
// SPDX-License-Identifier: MIT

// The settings window.
#pragma once

#include "platform/modSystemServices.h"
#include "settings/modSettings.h"

#include <QDialog>

class frmMsg;
class QCheckBox;
class QComboBox;
class QLabel;
class QLineEdit;
class QRadioButton;

class frmIni : public QDialog
{
    Q_OBJECT

  public:
    /// @param defaults, upper  bounds that the window displays and enforces
    frmIni(SystemServices &services, frmMsg &msg, const Settings &defaults, const Settings &upper,
           const QString &applicationFolder, QWidget *owner);

    /// Shows the settings and waits until the window is closed.
    /// @param settings  its zoom must be one of ZoomSteps; updated from the controls if the user confirms, except
    /// FormLeft
    /// @return whether the user confirmed
    bool Edit(Settings *settings);

  protected:
    void showEvent(QShowEvent *event) override;

  private:
    void Form_Load();
    void Form_Activate();
    void cmdRunEditor_Click();
    void cmdBrowse_Click();
    void cmdChangeSetting_Click();
    void cmdCancel_Click();
    void txtTextEditor_Change();

    void AddControls();
    void ShowSettings(const Settings &settings);
    Settings TakeSettings(const Settings &before) const;

    SystemServices &m_services;
    frmMsg &m_msg;
    Settings m_defaults;
    Settings m_upper;
    QString m_applicationFolder;
    std::array<QRadioButton *, FontSizes.size()> optFontSize;
    QComboBox *cboZoom;
    QLineEdit *txtLineSpace;
    QLabel *lblLSpaceRange;
    QLineEdit *txtTextEditor;
    QLabel *lblDesktopEditor; // says what notepad.exe stands for
    QCheckBox *chkDispLineNum;
    QComboBox *cboPageColour;
    QComboBox *cboWrap;
};
