// The file selection window: lists the study files and chooses one, writes printable copies and converts files to
// Shift_JIS. Its other half, the study history, is a widget of its own.
#pragma once

#include "files/modStudyFolder.h"
#include "platform/modSystemServices.h"
#include "store/Sqlite3Func.h"

#include <QDialog>

class ElidedLabel;
class frmMsg;
class HistoryPanel;
class QLayout;
class QListView;
class QPushButton;
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
    frmFile(SystemServices &services, StudyDatabase &database, frmMsg &msg, const QString &applicationFolder,
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

  private:
    void Form_Load();
    void Form_Activate();
    void cmdSelect_Click();
    void cmdEdit_Click();
    void cmdRefresh_Click();
    void cmdOpenFolder_Click();
    void cmdConvFile_Click();
    void cmdConvCode_Click();
    void cmdCancel_Click();
    void cmdEnd_Click();

    QLayout *FileControls(const QString &userName);
    QLayout *FileButtons();
    void SetTabOrder();
    QPushButton *AddButton(const QString &name, const QString &caption, const QString &toolTip,
                           void (frmFile::*handler)());
    void ListFiles();
    void EnableConvCode();
    QString SelectedName() const;
    bool TakeSelection(bool isForPrinting, QString *name);
    void Leave(FileChoice choice);

    SystemServices &m_services;
    StudyDatabase &m_database;
    frmMsg &m_msg;
    StudyFolder m_folder;
    QString m_textEditor;
    QString m_chosenPath;
    FileChoice m_choice = FileChoice::Cancelled;

    StudyFileModel *m_files;
    QListView *lstFile;
    QPushButton *cmdConvCode = nullptr;
    ElidedLabel *lblFolder;
    ElidedLabel *lblUserName;
    HistoryPanel *m_history;
};
