// SPDX-FileCopyrightText: 2026 The Kotoban developers
// SPDX-License-Identifier: MIT

// The file selection window: lists the study files, lets the user choose one, and offers all other commands on files.
// The study history in its other half is a separate widget, HistoryPanel.
#pragma once

#include "files/modStudyFolder.h"
#include "history/modReward.h"
#include "platform/modSystemServices.h"
#include "records/modHardNote.h"
#include "records/modPlaceList.h"
#include "settings/modEditor.h"
#include "store/Sqlite3Func.h"

#include <QDialog>
#include <QElapsedTimer>

#include <functional>
#include <optional>

class ElidedLabel;
class frmMsg;
class HistoryPanel;
class QAction;
class QBoxLayout;
class QFileSystemWatcher;
class QLabel;
class QLayout;
class QLineEdit;
class QPushButton;
class QTabBar;
class QTimer;
class RewardLabel;
class SettingsFile;
struct FilesToTake;
struct Settings;
class StudyFileList;
class StudyFileModel;

/// How the file selection window was left.
enum class FileChoice
{
    Cancelled,
    Chosen,     ///< frmFile::ChosenPath() is the file
    EndProgram, ///< the database is closed; the program must end at once
};

class frmFile : public QDialog
{
    Q_OBJECT

  public:
    /// @param settings  stores choices permanently; must outlive the window
    /// @param applicationFolder  has the study files in "txt" and the reports in "rec", and holds the lists of hard
    /// blanks and of the places where users stopped
    frmFile(SystemServices &services, StudyDatabase &database, frmMsg &msg, const SettingsFile &settings,
            const QString &applicationFolder, const QString &userName, QWidget *owner);
    ~frmFile() override;

    /// Shows the window and blocks until it is closed.
    /// @param textEditor  the editor in the current settings
    /// @param ended  the session that has been recorded last in this run
    /// @param afterShown  called once, when the window has been painted, or before that when the marks are needed or
    /// the window closes; returns whether it has saved marks
    FileChoice Choose(const QString &textEditor, const EndedSession &ended = {},
                      const std::function<bool()> &afterShown = {});

    /// Sets the editor that is used from now on.
    void SetTextEditor(const QString &textEditor)
    {
        m_editor.program = textEditor;
    }

    /// Full path of the file chosen last; empty before the first choice.
    const QString &ChosenPath() const
    {
        return m_chosenPath;
    }

    /// If that is the note of hard words, what was written into it.
    const std::optional<HardNote> &ChosenNote() const
    {
        return m_chosenNote;
    }

  Q_SIGNALS:
    void SettingsAsked(); ///< the user wants to change how the study window looks

  protected:
    bool eventFilter(QObject *object, QEvent *event) override;
    void showEvent(QShowEvent *event) override;
    void paintEvent(QPaintEvent *event) override;
    void changeEvent(QEvent *event) override;
    void resizeEvent(QResizeEvent *event) override;
    void hideEvent(QHideEvent *event) override;
    void dragEnterEvent(QDragEnterEvent *event) override;
    void dropEvent(QDropEvent *event) override;

  private:
    /// A command beside "このファイルで学習"; in a narrow window it is in the menu instead.
    struct Command
    {
        QPushButton *button = nullptr;
        QAction *inMenu = nullptr;
    };

    void Form_Load();
    void Form_Activate();
    void cmdSelect_Click();
    void cmdEdit_Click();
    void cmdWrite_Click();
    void cmdNew_Click();
    void cmdNewPasted_Click();
    void cmdRefresh_Click();
    void cmdOpenFolder_Click();
    void cmdIni_Click();
    void cmdConvFile_Click();
    void cmdMend_Click();
    void cmdPrint_Click();
    void cmdTable_Click();
    void cmdExport_Click();
    void cmdHandOut_Click();
    void cmdRecordTable_Click();
    void cmdCancel_Click();
    void cmdEnd_Click();
    void txtFilter_Change();
    void tabHalves_Click();
    void lstFile_OLEDragDrop(const QStringList &paths);

    QWidget *TopBand(const QString &userName);
    QWidget *FileHalf();
    void SetUpList();
    void SetUpEmptyList();
    void SetUpFilter();
    void AddFileButtons();
    void SetUpOthersButton();
    void AddBottomRow();
    void SetUpTabOrder();
    void ArrangeHalves();
    bool IsNarrow() const;
    bool HasRoomBelowList() const;
    bool HasRoomAtBottom() const;
    QAction *AddAction(const QString &name, const QString &caption, const QString &toolTip, const QKeySequence &keys,
                       void (frmFile::*handler)());
    void SaveAfterShown();
    void CallAfterShown();
    void ListFiles();
    void RefreshWhenShown();
    void ReadTallies();
    void ShowTallies();
    void StudyTitle(const QString &title);
    bool LeaveEqualOnes(FilesToTake *files, const QString &folder);
    bool MakeFromTable(const QString &tablePath);
    Settings PageSettings() const;
    void WriteFile(const QString &path);
    void WriteNew(const QString &pasted);
    void SelectNew(const QString &name);
    void Select(const QString &name);
    void ShowCommands();
    void ShowEmptyList();
    QStringList SelectedNames() const;
    QString SelectedName() const;
    void SelectNames(const QStringList &names, const QString &current);
    void GoToMend(const QString &name);
    QString TakeSelection(bool isForPrinting = false);
    QString TakeSelectionOrNote();
    QStringList TakeSelections(bool areNotesTaken);
    void Leave(FileChoice choice);

    SystemServices &m_services;
    StudyDatabase &m_database;
    frmMsg &m_msg;
    const SettingsFile &m_settings;
    QString m_reportFolder;
    StudyFolder m_folder;
    StudyTallies m_tallies;
    QElapsedTimer m_sinceTallied; // since they were shown
    EndedSession m_ended;
    QString m_userName;
    MarkList m_marks;
    PlaceList m_stops;
    QString m_tableFolder;   // initial folder of the next table dialog
    QString m_handOutFolder; // last chosen
    Editor m_editor;
    QString m_chosenPath;
    std::optional<HardNote> m_chosenNote; // as last made
    FileChoice m_choice = FileChoice::Cancelled;
    std::function<bool()> m_afterShown; // empty once it was called

    StudyFileModel *m_files;
    QFileSystemWatcher *m_watcher; // watches the folder while the window is visible
    QTimer *m_refreshing;          // runs from a change of the folder until the list is refreshed
    QTimer *m_tallying;            // runs while the record is read
    QTimer *m_saving;              // runs from the first paint until m_afterShown is called
    StudyFileList *lstFile;
    QLineEdit *txtFilter;
    QLabel *lblEmpty; // in the middle of the list, if there is no file in it
    ElidedLabel *lblNote;
    RewardLabel *lblReward;
    QLabel *lblUserNameCaption;
    QLabel *lblFolderCaption;
    ElidedLabel *lblFolder;
    ElidedLabel *lblUserName;
    QTabBar *tabHalves; // shown where the window is too narrow for both halves side by side
    QWidget *m_fileHalf;
    HistoryPanel *m_history;
    QPushButton *cmdSelect;
    QPushButton *cmdOthers;
    QPushButton *cmdCancel;
    QPushButton *cmdEnd;
    QPushButton *cmdMakeFirst; // below lblEmpty
    Command m_edit;
    Command m_write;
    Command m_print;
    Command m_mend;
    QBoxLayout *m_fileButtons; // below the list
    QBoxLayout *m_bottom;      // below both halves
};
