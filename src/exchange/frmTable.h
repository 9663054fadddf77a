// SPDX-FileCopyrightText: 2026 The Kotoban developers
// SPDX-License-Identifier: MIT

// The window that makes a study file from a table. It shows the first rows and a preview of the file; the user sets how
// the table is read, what becomes of the columns and their order, the text between columns, and the file name. After a
// change only the rows shown are read at once, the others in slices.
#pragma once

#include "exchange/modReadTable.h"
#include "exchange/modStudyFromTable.h"
#include "exchange/modTablePictures.h"
#include "widgets/CommandWindow.h"

#include <optional>

class QComboBox;
class QGridLayout;
class QLabel;
class QLayout;
class QLineEdit;
class QPlainTextEdit;
class QScrollArea;
class QTimer;
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
    void cboUse_Change(int column);
    void cmdMove_Click(int column, int by);
    void chkHeader_Click();
    void txtSeparator_Change();
    void cmdOK_Click() override;

    QLayout *ReadingRow();
    QLayout *Inputs();
    TableRefusal Decode(CharCode code);
    void ShowTable();
    void ReadAgain(const QString &separator);
    void GoOnReading();
    bool FinishReading();
    void ShowRows();
    void ShowState();
    QWidget *TableView();
    QWidget *ColumnHead(const TableColumn &column);
    void OrderTabs();
    void EnableMoves();
    void StrikeLeftOut();
    void ShowPreview();
    TableOptions Options() const;
    bool TakeName(QString *fileName);
    bool TakePictures(const QString &text, qsizetype *taken);
    bool Write(const QString &fileName, const StudyFromText &made, QString *keptPath, qsizetype *picturesTaken);

    QString m_studyFolder;
    QString m_tablePath;
    QByteArray m_bytes; // of the table's file
    TableSource m_source;
    std::optional<TablePictures> m_pictures;
    QList<TableColumn> m_columns;   // in their order, of the last table that could be read
    bool m_isHeadingChosen = false; // by the user
    bool m_isNew = true;            // whether no row of the table as it is read now has been shown
    int m_firstColumns = 0;         // number of columns of its first rows
    int m_shownRows = 0;
    int m_shownColumns = 0;
    QTimer *m_reading; // reads the rows that are not shown
    QString m_madeName;
    bool m_isToBeWritten = false;

    ElidedLabel *lblTable;
    QComboBox *cboCode;
    QComboBox *cboTableSeparator;
    QScrollArea *fraTable;
    QGridLayout *m_grid = nullptr; // in fraTable: the heads of the columns, and the cells below
    QCheckBox *chkHeader = nullptr;
    QLineEdit *txtSeparator;
    QLineEdit *txtName;
    QPlainTextEdit *txtPreview;
    QLabel *lblHint;
};
