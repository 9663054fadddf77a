// SPDX-FileCopyrightText: 2026 The Kotoban developers
// SPDX-License-Identifier: MIT

// The study window: shows one study file with its answers hidden, uncovers them, runs the clock and maintains the
// session's row in the database. While no file has been chosen, it opens the file selection window.
#pragma once

#include "base/modLog.h"
#include "platform/modSystemServices.h"
#include "search/modSearch.h"
#include "settings/modSettings.h"
#include "study/modStudySession.h"

#include <QWidget>

#include <memory>

enum class MsgResult;
enum class MsgStyle;
enum class NoticeAction;
class frmFile;
class frmMsg;
class frmSearch;
class InputGuard;
class PageFrame;
class PicText;
class QAction;
class QFileSystemWatcher;
class QScrollBar;
class QTimer;
class StudyBar;
class StudyStateBar;

/// What the study window works with: one user in one application folder.
struct StudyContext
{
    QString applicationFolder;
    QString settingsPath; ///< the ini file
    QString userName;
    int interimSeconds = InterimSeconds; ///< how often the session under way is saved
};

class frmText : public QWidget
{
    Q_OBJECT

  public:
    frmText(SystemServices &services, StudyDatabase &database, const RunLog &log, frmMsg &msg, InputGuard &inputGuard,
            const StudyContext &context);
    ~frmText() override;

    /// Completes the session and closes the database, once; touches no window. Nothing is recorded afterwards.
    void Record();

    /// One tick of the study clock.
    void Timer1_Timer();

  Q_SIGNALS:
    /// Everything is recorded and closed; the program must end.
    void Ended();

  protected:
    void showEvent(QShowEvent *event) override;
    void resizeEvent(QResizeEvent *event) override;
    bool event(QEvent *event) override;
    void closeEvent(QCloseEvent *event) override;

  private:
    void Form_Load();
    void Form_Activate();
    void Form_Resize();
    void Form_Unload();
    void cmdFile_Click();
    void cmdReRead_Click();
    void cmdEdit_Click();
    void cmdIni_Click();
    void cmdDispHowToUse_Click();
    void cmdSearch_Click();
    void chkSpeak_Click();
    void chkOnlyHard_Click();
    void cmdHard_Click();
    void actPageOnly_Click();
    void actWrite_Click();
    void VScroll_Change();
    void HScroll_Change();
    void picText_KeyDown(int key, bool isShifted);
    void picText_MouseDown(Qt::MouseButton button, int xPx, int yPx);
    void picText_MouseMove();
    void picText_OLEDragDrop();

    void AddControls();
    void LayOut();
    void Connect();
    void AddShortcuts();
    void AddCommandKeys();
    template <typename Action>
    auto Command(Action action);
    void ReadSettings();
    void ApplySettings();
    void KeepMinimumSize();
    void SetPageOnly(bool isPageOnly);
    void WidenToText(int neededBeforePx);
    int LargestLeft(int widthPx) const;
    int LeftEdge() const;
    const QScreen *ScreenAt(int leftPx) const;
    void MoveFileWindow();
    bool EditSettings(QWidget *owner);
    void SaveFormPos();
    void SaveFormSize();

    void Apply(const PageChange &change);
    void AskForPage(const PageChange &change);
    void ShowPageState();
    void ShowText();
    void AskForLine();
    void KeepMarks();
    void ShowPicture(const QString &name);
    void ReadAloud(const PageChange &change);
    void ChangeZoom(int steps);
    void SetZoom(int percent);
    void ShowColours();
    void DescribePage();

    void OpenSession(const QString &path, std::optional<HardNote> note);
    void KeepLists();
    QWidget *WindowInUse();
    void TellBadPictureNames(const StudyReading &reading);
    void WatchFile();
    void TellFileChange();
    void OpenInEditorAt(const HardNote::Source &place);
    MsgResult Ask(const QString &message, MsgStyle style, const QString &soundName, const QString &cancelToolTip = {});
    void PrintFile();
    void ExportFile();
    QString StudyFolderPath() const;
    QString ReportFolderPath() const;
    void GoOnSearching(bool backwards);
    bool CanMend() const;
    void MendFile();
    void lblNotice_Click(NoticeAction action);

    /// Stages in the life of the window.
    enum class Stage
    {
        Created,
        Shown,
        RepairsTold, ///< the user has been told what was wrong with the settings file
        Ended,       ///< nothing more is recorded
    };

    SystemServices &m_services;
    StudyDatabase &m_database;
    const RunLog &m_log;
    frmMsg &m_msg;
    InputGuard &m_inputGuard;
    StudyContext m_context;
    SettingsFile m_settingsFile;
    Settings m_defaults;
    Settings m_upper;
    Settings m_settings;

    StudySession m_session;
    StudyPage &m_page; // of m_session
    Stage m_stage = Stage::Created;
    QFileSystemWatcher *m_watcher;  // of the open file and its folder
    int m_zoom = 100;               // percent, one of ZoomSteps
    bool m_isZoomChosen = false;    // whether the user chose it in this run
    bool m_hasPressedEnter = false; // in this run, with a file open
    unsigned m_wheelMessage = 0;

    std::unique_ptr<KeywordSearch> m_search; // for m_frmSearch
    frmSearch *m_frmSearch = nullptr;        // created when first opened, like m_frmFile
    frmFile *m_frmFile = nullptr;
    PicText *picText;
    QScrollBar *VScroll;
    QScrollBar *HScroll;
    PageFrame *m_pageFrame; // with these three
    StudyBar *m_bar;
    StudyStateBar *m_stateBar;
    QTimer *Timer1;
    QTimer *m_keeping;          // runs from a change of a mark until it is saved
    bool m_canMend = false;     // whether the open file was refused when read again, and can be mended
    bool m_isVoiceTold = false; // whether the user knows that there is no voice
};
