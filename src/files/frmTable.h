// The window that makes a study file from a table: shows the first rows, takes how they are read, the columns to hide,
// the text between columns and the file's name, and shows what the file will begin with.
#pragma once

#include "files/modReadTable.h"
#include "files/modStudyFromTable.h"

#include <QDialog>

class ElidedLabel;
class frmMsg;
class QCheckBox;
class QComboBox;
class QLabel;
class QLayout;
class QLineEdit;
class QPlainTextEdit;
class QPushButton;
class QScrollArea;

class frmTable : public QDialog
{
    Q_OBJECT

  public:
    /// @param studyFolder  where the study file is made
    frmTable(frmMsg &msg, const QString &studyFolder, QWidget *owner);

    /// Has the user choose a table. @param folder  where the choice begins
    /// @return its full path, empty when none was chosen
    static QString AskForTable(const QString &folder, QWidget *owner);

    /// Shows the window for a table and waits until it is left; a table that cannot be read is told of instead.
    /// @return the name of the study file that was made, "name.txt"; empty when none was
    QString Make(const QString &tablePath);

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
    void cmdOK_Click();
    void cmdCancel_Click();

    QLayout *ReadingRow();
    QLayout *Inputs();
    QLayout *Buttons();
    void ShowTable();
    void ReadAgain(const QString &separator);
    void ShowRows(const QList<bool> &isHidden);
    QWidget *TableView(const QList<bool> &isHidden);
    void StrikeHeader();
    void ShowPreview();
    TableOptions Options() const;
    bool TakeName(QString *fileName);
    bool TakeText(TableOptions options, ConvertedText *converted, TableStudyText *study);
    bool Write(const QString &fileName, const QByteArray &bytes, QString *keptName);
    bool Refuse(const QString &message);

    frmMsg &m_msg;
    QString m_studyFolder;
    QString m_tablePath;
    QByteArray m_bytes;   // of the table's file
    TableReading m_found; // how it was read by itself
    Table m_table;
    QList<bool> m_lastHidden; // by column, of the table that was read last
    QString m_fault;          // why it cannot be read as the user wants, empty when it can
    QString m_madeName;

    ElidedLabel *lblTable;
    QComboBox *cboCode;
    QComboBox *cboTableSeparator;
    QScrollArea *fraTable;
    QList<QCheckBox *> chkHide; // by column
    QCheckBox *chkHeader;
    QLineEdit *txtSeparator;
    QLineEdit *txtName;
    QPlainTextEdit *txtPreview;
    QLabel *lblHint;
    QPushButton *cmdOK = nullptr;
    QPushButton *cmdCancel = nullptr;
};
