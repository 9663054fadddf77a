// SPDX-FileCopyrightText: 2026 The Kotoban developers
// SPDX-License-Identifier: MIT

// The window that makes a study file from a table. It shows the first rows and a preview of the file; the user sets how
// the table is read, which columns are hidden, the text between columns, and the file name.
#pragma once

#include "exchange/modReadTable.h"
#include "exchange/modStudyFromTable.h"
#include "widgets/CommandWindow.h"

class QComboBox;
class QLabel;
class QLayout;
class QLineEdit;
class QPlainTextEdit;
class QScrollArea;
class StudyFromText;

class frmTable : public CommandWindow
{
    Q_OBJECT

  public:
    /// @param studyFolder  where the study file is created
    frmTable(frmMsg &msg, const QString &studyFolder, QWidget *owner);

    /// Lets the user choose a table. @param folder  initial folder of the dialog
    /// @return its full path; empty if none was chosen
    static QString AskForTable(const QString &folder, QWidget *owner);

    /// Shows the window for a table and blocks until it is closed. If the table cannot be read, reports that instead.
    /// @return the name of the new study file, "name.txt"; empty if none was made
    QString Make(const QString &tablePath);

    /// Whether the user wants to write in the file that was made.
    bool IsToBeWritten() const
    {
        return m_isToBeWritten;
    }

  protected:
    void showEvent(QShowEvent *event) override;

  private:
    void Form_Load();
    void Form_Activate();
    void cboCode_Change();
    void cboTableSeparator_Change();
    void chkHide_Click();
    void chkHeader_Click();
    void txtSeparator_Change();
    void cmdOK_Click() override;

    QLayout *ReadingRow();
    QLayout *Inputs();
    void ShowTable();
    void ReadAgain(const QString &separator);
    void ShowRows(const QList<bool> &isHidden);
    QWidget *TableView(const QList<bool> &isHidden);
    void StrikeHeader();
    void ShowPreview();
    TableOptions Options() const;
    bool TakeName(QString *fileName);
    bool Write(const QString &fileName, const StudyFromText &made, QString *keptPath);

    QString m_studyFolder;
    QString m_tablePath;
    QByteArray m_bytes;   // of the table's file
    TableReading m_found; // encoding and separator as detected
    Table m_table;
    QList<bool> m_lastHidden; // by column, of the last table that could be read
    QString m_fault;          // why it cannot be read with the current settings; empty if it can
    QString m_madeName;
    bool m_isToBeWritten = false;

    ElidedLabel *lblTable;
    QComboBox *cboCode;
    QComboBox *cboTableSeparator;
    QScrollArea *fraTable;
    QList<QCheckBox *> chkHide; // by column
    QCheckBox *chkHeader = nullptr;
    QLineEdit *txtSeparator;
    QLineEdit *txtName;
    QPlainTextEdit *txtPreview;
    QLabel *lblHint;
};
