// SPDX-FileCopyrightText: 2026 The Kotoban developers
// SPDX-License-Identifier: MIT

// Lists the faults of a text that is to be a study file, and lets the user choose what becomes of them.
#pragma once

#include "exchange/modStudyFromText.h"
#include "widgets/CommandWindow.h"

class QPlainTextEdit;

class frmMend : public CommandWindow
{
    Q_OBJECT

  public:
    /// @param isOfTable  whether the text is made of the rows of a table, which can be left out
    frmMend(frmMsg &msg, bool isOfTable, QWidget *owner);

    /// Shows the window and blocks until it is closed.
    /// @param name  what the faults are of, for the user
    /// @param choices  shown first; receives what the user chose
    /// @return false if it was cancelled
    bool Choose(const QString &name, const TextFaults &faults, TextChoices *choices);

  private:
    void Form_Load();
    void cmdOK_Click() override;
    void chkAccents_Click();

    void AddEncodings(const TextFaults &faults, bool keepsKana);
    void AddCharacters(const TextFaults &faults);
    void AddLines(const TextFaults &faults);
    TextChoices Chosen() const;

    bool m_isOfTable;
    bool m_hasUnwritable = false;
    ElidedLabel *lblFile;
    QPlainTextEdit *txtFaults;
    QRadioButton *optEuc = nullptr; // these only if there is something to choose
    QRadioButton *optKana = nullptr;
    QCheckBox *chkAccents = nullptr;
    QRadioButton *optRemove = nullptr;
    QRadioButton *optGeta = nullptr;
    QRadioButton *optLeaveOut = nullptr;
    QCheckBox *chkBrackets = nullptr;
    QCheckBox *chkLines = nullptr;
};
