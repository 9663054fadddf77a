// The file selection window: lists the study files and chooses one, writes printable copies, and shows the study
// history of the user, which it also writes to a report file.
#pragma once

#include "files/modHistory.h"
#include "files/modStudyFolder.h"
#include "platform/modDesktop.h"
#include "store/Sqlite3Func.h"

#include <QDialog>

class frmMsg;
class HistoryChart;
class QLabel;
class QLayout;
class QLineEdit;
class QListView;
class QPushButton;
class QStringListModel;
class StudyFileModel;

/// How the file selection window was left.
enum class FileChoice
{
    Cancelled,
    Chosen,     ///< frmFile::ChosenPath() is the file
    EndProgram, ///< the database is closed, and the program is to end at once
};

class frmFile : public QDialog
{
    Q_OBJECT

  public:
    /// @param applicationFolder  the folder of study files is "txt" in it, that of the reports "rec"
    frmFile(Desktop &desktop, StudyDatabase &database, frmMsg &msg, const QString &applicationFolder,
            const QString &userName, QWidget *owner);
    ~frmFile() override;

    /// Shows the window and waits until it is left. @param textEditor  the editor of the current settings
    FileChoice Choose(const QString &textEditor);

    /// Full path of the file chosen last, empty before that.
    const QString &ChosenPath() const
    {
        return m_chosenPath;
    }

  protected:
    void showEvent(QShowEvent *event) override;
    void hideEvent(QHideEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;

  private:
    void Form_Load();
    void Form_Activate();
    void cmdSelect_Click();
    void cmdEdit_Click();
    void cmdRefresh_Click();
    void cmdOpenFolder_Click();
    void cmdConvFile_Click();
    void cmdCancel_Click();
    void cmdEnd_Click();
    void txtWeekN_Change();
    void txtYmd_Change();
    void cmdInc_Click();
    void cmdFile_Click();

    QLayout *FileControls();
    QLayout *HistoryControls();
    void SetTabOrder();
    void ShowRecord(int weeks);
    void ShowRecordWhenValid();
    QPushButton *AddButton(const QString &name, const QString &caption, void (frmFile::*handler)());
    void ListFiles();
    QString SelectedName() const;
    bool TakeSelection(bool isForPrinting, QString *name);
    void Leave(FileChoice choice);

    Desktop &m_desktop;
    StudyDatabase &m_database;
    frmMsg &m_msg;
    StudyFolder m_folder;
    QString m_reportFolder;
    QString m_userName;
    QString m_textEditor;
    QString m_chosenPath;
    FileChoice m_choice = FileChoice::Cancelled;

    StudyFileModel *m_files;
    QListView *lstFile;
    QLabel *lblFolder;
    QLabel *lblUserName;

    History m_history;
    QStringListModel *m_records;
    QListView *lstRecord;
    QLineEdit *txtWeekN;
    QLineEdit *txtYmd;
    QLabel *lblSumTime;
    QLabel *lblSumAns;
    HistoryChart *picHistory;
};
