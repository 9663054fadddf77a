// The study window: shows one study file with its answers hidden, uncovers them, runs the clock and keeps the session's
// row. It opens the file selection window while no file has been chosen.
#pragma once

#include "base/modLog.h"
#include "platform/modDesktop.h"
#include "search/modSearch.h"
#include "settings/modSettings.h"
#include "store/Sqlite3Func.h"
#include "view/modStudyRound.h"

#include <QWidget>

#include <memory>

enum class MsgResult;
enum class MsgStyle;
class frmFile;
class frmMsg;
class frmSearch;
class InputGuard;
class PicText;
class QCheckBox;
class QLabel;
class QLayout;
class QProgressBar;
class QPushButton;
class QScrollBar;
class QTimer;

/// What the study window is made for: one learner in one application folder.
struct StudyPlace
{
    QString applicationFolder;
    QString settingsPath; ///< the ini file
    QString userName;
};

class frmText : public QWidget
{
    Q_OBJECT

  public:
    frmText(Desktop &desktop, StudyDatabase &database, const RunLog &log, frmMsg &msg, const StudyPlace &place);
    ~frmText() override;

    /// Completes the session and closes the database, once; touches no window. Nothing is recorded from then on.
    void Record();

    /// One tick of the study clock.
    void Timer1_Timer();

  Q_SIGNALS:
    /// All is recorded and closed: the program is to end.
    void Ended();

  protected:
    void showEvent(QShowEvent *event) override;
    void resizeEvent(QResizeEvent *event) override;
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
    void VScroll_Change();
    void picText_KeyDown(int key);
    void picText_MouseDown(Qt::MouseButton button, int xPx, int yPx);
    void picText_MouseMove();
    void picText_OLEDragDrop();

    void AddControls();
    QLayout *StateControls();
    QWidget *Group(const QList<QWidget *> &controls);
    void AddShortcuts();
    QPushButton *AddButton(const QString &name, const QString &caption, void (frmText::*handler)());
    QLabel *AddLabel(const QString &name);
    void ReadSettings();
    void ApplySettings();
    void WidenToText();
    int LargestLeft(int widthPx) const;
    void SetUpScrollBar();
    PageInView Page() const;
    void ShowLine(int line);
    void ShowCount();
    void ShowProgress();

    void PlaceFileWindow();
    void SaveFormPos();
    void OpenSession(const QString &path);
    bool LoadFile(const QString &path, bool keepsAnswers, QString *message, int *errorLine);
    void StartClock();
    void ClearClock();
    void CompleteSession();
    void OpenInEditorAt(int line);
    MsgResult Ask(const QString &message, MsgStyle style, const QString &soundName);
    QString StudyFolderPath() const;

    void Enter();
    void Reveal(int blank);
    void TurnPageAndShow();
    void ClickLeft(int xPx, int yPx);
    void HideAllAnswers();
    void ChooseSpot(bool backwards);
    void ClickSpot();
    void ClickLineNumber(int line);
    bool IsInView(int line) const;
    void ForgetPlaces();
    void GoOnSearching(bool backwards);
    void ShowPlace(const Place &place, const QString &wanted);
    void ShowPicture(const QString &name);

    Desktop &m_desktop;
    StudyDatabase &m_database;
    const RunLog &m_log;
    frmMsg &m_msg;
    StudyPlace m_place;
    SettingsFile m_settingsFile;
    Settings m_defaults;
    Settings m_upper;
    Settings m_settings;

    QString m_path; // the open study file, empty while there is none
    bool m_isTextLoaded = false;
    DisplayText m_text;
    StudyRound m_round;
    bool m_hasSession = false; // a row was inserted, also for a file that could not be loaded
    QDateTime m_sessionStart;
    QDateTime m_clockStart;

    bool m_isActivated = false;
    bool m_hasShownRepairs = false;
    bool m_isEnded = false;
    unsigned m_wheelMessage = 0;

    std::unique_ptr<InputGuard> m_inputGuard; // while a file is being opened
    std::unique_ptr<frmFile> m_frmFile;
    std::unique_ptr<KeywordSearch> m_search; // made when it is first opened
    std::unique_ptr<frmSearch> m_frmSearch;
    PicText *picText;
    QScrollBar *VScroll;
    QPushButton *cmdFile;
    QPushButton *cmdReRead;
    QPushButton *cmdEdit;
    QPushButton *cmdIni;
    QPushButton *cmdDispHowToUse;
    QPushButton *cmdSearch;
    QCheckBox *chkSpeak;
    QLabel *lblNum;
    QProgressBar *prgShown; // of the file's answers
    QLabel *lblShown;       // the same in numbers
    QLabel *lblPlace;       // the lines on the page
    QLabel *lblMinN;
    QLabel *lblMin;
    QLabel *lblSecN;
    QLabel *lblSec;
    QLabel *lblKeyword;
    QTimer *Timer1;
};
