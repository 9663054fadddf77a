// SPDX-FileCopyrightText: 2026 The Kotoban developers
// SPDX-License-Identifier: MIT

// The writing window 書く: a study file is written, pasted and marked in it. It shows what modDraft, modPen,
// modLineCheck and modCleanText decide. Nothing is written to the file before it is saved; a draft beside it keeps what
// was typed.
#pragma once

#include "platform/modDarkMode.h"
#include "platform/modSystemServices.h"
#include "settings/modSettings.h"
#include "text/modPictureName.h"
#include "write/modDraft.h"

#include <QDialog>

#include <optional>

class FindField;
class LineChecks;
class ProblemList;
class QFileSystemWatcher;
class QTimer;
class WriteBar;
class WritePage;
class WriteStateBar;
class frmMsg;
enum class NoticeAction;

class frmWrite : public QDialog
{
    Q_OBJECT

  public:
    /// @param settings  font, rows, colours and zoom of the page; a zoom of 0 is that of the desktop
    /// @param applicationFolder  has the study files in "txt" and the help in "htm"
    frmWrite(SystemServices &services, frmMsg &msg, const Settings &settings, const QString &applicationFolder,
             QWidget *owner);
    ~frmWrite() override;

    /// Shows the window for a study file and blocks until it is closed. If the file cannot be written in here, reports
    /// that instead. A file that could not be studied as it is opens as a changed text, with what can be mended mended.
    /// @param line  1-based line of the cursor
    /// @return whether the file was saved
    [[nodiscard]] bool Edit(const QString &path, int line = 1);

    /// Shows the window for a new study file.
    /// @param pasted  text to begin with, as if it was pasted
    /// @return the name of the file, "name.txt"; empty if none was saved
    QString WriteNew(const QString &pasted = QString());

  protected:
    void keyPressEvent(QKeyEvent *event) override;
    void reject() override;
    bool event(QEvent *event) override;
    void resizeEvent(QResizeEvent *event) override;

  private:
    void Form_Load();
    void cmdSave_Click();
    void cmdPen_Click();
    void cmdPicture_Click();
    void cmdFind_Click();
    void cmdMend_Click();
    void actBlank_Click();
    void actPasteTable_Click();
    void actJoin_Click();
    void actLine_Click();
    void actProblem_Click();
    void actHelp_Click();
    void cmdTemplate_Click(int number);
    void lblNotice_Click(NoticeAction action);
    void txtText_Change();
    void txtText_CursorMove();
    void txtText_Paste(const QString &text);
    void txtText_Drop(const QStringList &paths);
    void tmrKeep_Timer();

    void AddControls();
    void LayOut();
    void Connect();
    void AddKeys();
    bool Open(WrittenFile file, const QString &text, bool isChanged);
    void Run();
    bool Save();
    bool TakeName();
    bool ReplaceUnwritable();
    void KeepDraft();
    void WatchFile();
    void ShowFile();
    void ShowFileChange();
    void ShowFound();
    void ShowColours();
    void ApplyZoom(int percent);
    void Find(bool backwards);
    void Mend(QWidget *owner);
    void PutCleaned(const QString &text);
    void InsertPicture(const QString &path);
    void Tell(const QString &text);
    void TellUndoable(const QString &text);
    void KeepMinimumSize();

    SystemServices &m_services;
    frmMsg &m_msg;
    Settings m_settings;
    QString m_applicationFolder;
    QString m_studyFolder;
    QString m_pictureFolder; // initial folder of the next dialog for a picture
    DarkMode m_darkMode;
    std::optional<PictureFolder> m_pictures;
    WrittenFile m_file;
    bool m_isNew = false;
    bool m_isSaved = false;   // in this run of the window
    bool m_isSettled = false; // whether the draft has been saved or thrown away
    QString m_pasted;         // last, with characters that were left out

    WriteBar *m_bar;
    WritePage *txtText;
    LineChecks *m_checks;
    QWidget *m_templates; // in an empty file
    ProblemList *m_problems;
    WriteStateBar *m_stateBar;
    QTimer *m_keeping; // runs from a change until the draft is written
    QFileSystemWatcher *m_watcher;
};
