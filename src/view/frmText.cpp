// SPDX-FileCopyrightText: 2026 The Kotoban developers
// SPDX-License-Identifier: MIT

#include "view/frmText.h"

#include "base/modDateText.h"
#include "base/modFile.h"
#include "exchange/MendFiles.h"
#include "exchange/frmExport.h"
#include "exchange/frmPrint.h"
#include "files/MakeHardNote.h"
#include "files/frmFile.h"
#include "files/modStudyFolder.h"
#include "page/PageFrame.h"
#include "page/picText.h"
#include "search/frmSearch.h"
#include "settings/frmIni.h"
#include "settings/modEditor.h"
#include "text/modPictureName.h"
#include "view/StudyBar.h"
#include "view/StudyStateBar.h"
#include "widgets/BarButton.h"
#include "widgets/InputGuard.h"
#include "widgets/frmMsg.h"
#include "widgets/modHelp.h"
#include "write/frmWrite.h"

#include <QCloseEvent>
#include <QCoreApplication>
#include <QFileInfo>
#include <QFileSystemWatcher>
#include <QScopeGuard>
#include <QTimer>

using namespace Qt::Literals::StringLiterals;

frmText::~frmText()
{
    delete m_pageFrame; // shows the page of m_session, which goes before the other widgets
}

/// The window was shown for the first time, or the user came back to it from another window of the program.
void frmText::Form_Activate()
{
    WriteTrace(u"■frmText.Form_Activate()");
    ReadSettings();
    ApplySettings();
}

QString frmText::StudyFolderPath() const
{
    return JoinPath(m_context.applicationFolder, u"txt"_s);
}

void frmText::cmdFile_Click()
{
    WriteTrace(u"■frmText.cmdFile_Click()");
    SaveFormPos();
    if (m_session.HasBegun()) {
        m_session.CompleteRow();
        if (const FileFault fault = m_log.WriteLog(u"DBUpdRecKotoban "_s + TimeText(m_services.Now())))
            m_services.ShowMessage(fault.reason + u"\r\n  "_s + fault.path);
    }
    const QString folder = StudyFolderPath();
    if (!QFileInfo(folder).isDir()) {
        KeepLists();
        m_services.ShowMessage(u"次のフォルダが見つかりません。\r\n  "_s + folder +
                               u"\r\n\r\n上のフォルダを作成してください。"_s);
        return;
    }
    if (!m_frmFile) {
        m_frmFile = new frmFile(m_services, m_database, m_msg, m_settingsFile, m_context.applicationFolder,
                                m_context.userName, this);
        connect(m_frmFile, &frmFile::SettingsAsked, this, [this] {
            if (EditSettings(m_frmFile))
                m_frmFile->SetTextEditor(m_settings.TextEditor);
        });
    }
    MoveFileWindow();
    // What waits for the disk is saved once the window is shown, except the record, which it shows.
    const FileChoice choice = m_frmFile->Choose(m_settings.TextEditor, m_session.Recorded(), [this] {
        const bool hasNewMarks = m_session.HasUnsavedMarks();
        if (m_stage != Stage::Ended) // then everything is saved
            KeepLists();
        return hasNewMarks;
    });
    if (choice == FileChoice::EndProgram) {
        m_stage = Stage::Ended;
        hide();
        Q_EMIT Ended();
        return;
    }
    Form_Activate();
    if (choice == FileChoice::Chosen)
        OpenSession(m_frmFile->ChosenPath(), m_frmFile->ChosenNote());
    activateWindow();
    picText->setFocus();
}

/// Begins a session with a file. Its row is inserted before the file is read, so that every attempt leaves one.
/// @param note  if it is the note of hard words
void frmText::OpenSession(const QString &path, std::optional<HardNote> note)
{
    // Input typed ahead was meant for the file list. It arrives here or while the file is read, and is ignored.
    m_inputGuard.IgnoreInput(true);
    const auto listenAgain = qScopeGuard([this] {
        // After all pending events have been handled.
        QTimer::singleShot(0, this, [this] { m_inputGuard.IgnoreInput(false); });
    });
    QCoreApplication::processEvents();
    if (m_stage == Stage::Ended)
        return; // one of those events closed the window
    m_stateBar->ShowCount(0);
    Timer1->stop();
    m_stateBar->ClearTime();
    m_stateBar->ShowFileChange(false);
    m_session.End();
    ShowText();
    const int missing = note ? note->MissingCount() : 0;
    const StudyReading reading = m_session.Open(path, std::move(note));
    if (m_stage == Stage::Ended)
        return; // the window was closed while a database message was shown
    if (!reading.refusal)
        m_bar->EnableFileControls(true);
    m_bar->ShowFile(QFileInfo(m_session.Path()).fileName());
    ShowText();
    if (reading.refusal) {
        Ask(reading.refusal.message, MsgStyle::Ok, u"notify.wav"_s);
        return;
    }
    WatchFile();
    Timer1->start();
    // Ticks once immediately: by the first regular tick the second may have passed, and the clock would stay empty.
    QTimer::singleShot(0, this, &frmText::Timer1_Timer);
    if (missing > 0)
        m_stateBar->ShowNotice(MissingHardNotice(missing));
    TellBadPictureNames(reading);
}

/// Watches the open file for changes. Watches its folder too, because an editor may replace the file.
void frmText::WatchFile()
{
    if (const QStringList watched = m_watcher->files() + m_watcher->directories(); !watched.isEmpty())
        m_watcher->removePaths(watched);
    m_watcher->addPaths({m_session.Path(), QFileInfo(m_session.Path()).path()});
    m_canMend = false;
    TellFileChange();
}

void frmText::TellFileChange()
{
    m_stateBar->ShowFileChange(m_session.IsFileChanged(), m_canMend);
    if (m_watcher->files().isEmpty() && QFileInfo::exists(m_session.Path()))
        m_watcher->addPath(m_session.Path()); // a replaced file is no longer watched
}

/// This window or the file selection; nullptr at the end.
QWidget *frmText::WindowInUse()
{
    if (m_stage == Stage::Ended)
        return nullptr;
    return m_frmFile && m_frmFile->isVisible() ? static_cast<QWidget *>(m_frmFile) : this;
}

/// Shows the page's new text.
void frmText::ShowText()
{
    m_stateBar->HideKeyword();
    m_stateBar->HideNotice();
    const int blanks = m_page.Round().BlankCount();
    m_stateBar->SetFile(m_page.IsFileOpen(), blanks);
    m_stateBar->ShowNoBlanks(m_page.IsFileOpen() && blanks == 0, m_page.Text().NextLineWith(u'［', 1) > 0);
    m_stateBar->ShowFirstKeys(m_page.IsFileOpen() && blanks > 0 && !m_hasPressedEnter);
    if (m_frmSearch)
        m_frmSearch->SetText(&m_page.Text());
    m_pageFrame->Adapt();
    PageChange change = m_page.SetLayout(picText->Measured());
    change.isPageChanged = true;
    Apply(change);
}

void frmText::Timer1_Timer()
{
    WriteTrace(u"■frmText.Timer1_Timer");
    if (const std::optional<ElapsedTime> elapsed = m_session.ClockTick())
        m_stateBar->ShowTime(*elapsed);
    m_session.CompleteSoFarWhenDue();
}

/// Shows a question or a message over this window.
MsgResult frmText::Ask(const QString &message, MsgStyle style, const QString &soundName, const QString &cancelToolTip)
{
    const MsgResult result = m_msg.DispFrmMsg(this, message, style, soundName, cancelToolTip);
    Form_Activate();
    return result;
}

void frmText::OpenInEditorAt(const HardNote::Source &place)
{
    OpenInEditor(m_services, {m_settings.TextEditor, m_context.applicationFolder}, place.path, place.line);
}

// Reading the file again does not interrupt the session or its clock.
void frmText::cmdReRead_Click()
{
    WriteTrace(u"■frmText.cmdReRead_Click()");
    if (!m_page.IsFileOpen())
        return;
    std::optional<HardNote> note;
    if (m_session.IsHardNote()) {
        KeepMarks();
        note = MakeHardNote(m_msg, this, m_session.Marks(), StudyFolderPath(), ReportFolderPath());
        Form_Activate();
        if (!note)
            return;
    }
    const int missing = note ? note->MissingCount() : 0;
    const StudyReading reading = m_session.ReadAgain(std::move(note));
    if (reading.refusal) {
        const QString question = reading.refusal.message + u"\r\n\r\nこのファイルを編集しますか？"_s;
        if (Ask(question, MsgStyle::OkCancel, u"notify.wav"_s) == MsgResult::Ok)
            OpenInEditorAt({m_session.Path(), reading.refusal.line});
        m_canMend = CanMend();
        TellFileChange();
        return;
    }
    WatchFile();
    ShowText();
    picText->setFocus();
    if (missing > 0)
        m_stateBar->ShowNotice(MissingHardNotice(missing));
    TellBadPictureNames(reading);
}

/// Whether the open file is one that can be mended now.
bool frmText::CanMend() const
{
    return m_page.IsFileOpen() && !m_session.IsHardNote() && CheckStudyFile(m_session.Path()).remedy == Remedy::Mend;
}

/// Mends the open file and reads it again. The session and its clock go on.
void frmText::MendFile()
{
    WriteTrace(u"■frmText.MendFile");
    if (!CanMend()) {
        if (m_page.IsFileOpen())
            m_stateBar->ShowNotice(u"直す所はありません"_s);
        return;
    }
    m_session.CompleteSoFar();
    const MendOutcome outcome =
        MendFiles(m_services, m_msg, this, {m_settings.TextEditor, m_context.applicationFolder}, {m_session.Path()});
    if (m_stage == Stage::Ended)
        return; // the program was told to end meanwhile
    Form_Activate();
    if (outcome != MendOutcome::Nothing)
        cmdReRead_Click();
    if (outcome == MendOutcome::ToBeWritten)
        actWrite_Click();
    picText->setFocus();
}

void frmText::TellBadPictureNames(const StudyReading &reading)
{
    if (!reading.badPictureNames.isEmpty())
        m_services.ShowMessage(BadPictureNamesMessage(reading.badPictureNames));
}

void frmText::cmdEdit_Click()
{
    WriteTrace(u"■frmText.cmdEdit_Click()");
    if (!m_page.IsFileOpen())
        return;
    if (m_bar->cmdReRead->isVisible())
        m_bar->cmdReRead->setFocus(); // so that one key reads the edited file again
    else
        picText->setFocus();
    const int marked = m_page.Round().lngMarkLine();
    OpenInEditorAt(m_session.SourceOf(marked != 0 ? marked : m_page.TopLine()));
}

/// Opens the file in the writing window, at the line marked or chosen or else the top line. The session and its clock
/// go on while the file is written.
void frmText::actWrite_Click()
{
    WriteTrace(u"■frmText.actWrite_Click");
    if (!m_page.IsFileOpen())
        return;
    m_session.CompleteSoFar();
    Settings settings = m_settings;
    settings.zoom = m_zoom;
    int line = m_page.Round().lngMarkLine();
    if (line == 0)
        line = m_page.Current().line > 0 ? m_page.Current().line : m_page.TopLine();
    const HardNote::Source place = m_session.SourceOf(line);
    const bool isSaved =
        frmWrite(m_services, m_msg, settings, m_context.applicationFolder, this).Edit(place.path, place.line);
    if (m_stage == Stage::Ended)
        return; // the program was told to end meanwhile
    if (isSaved)
        cmdReRead_Click();
    picText->setFocus();
}

void frmText::cmdIni_Click()
{
    WriteTrace(u"■frmText.cmdIni_Click()");
    if (!EditSettings(this))
        Form_Activate();
    // A message box over the settings window may leave no window active.
    activateWindow();
    picText->setFocus();
}

/// Shows the settings window over an owner. @return whether the user confirmed
bool frmText::EditSettings(QWidget *owner)
{
    Settings settings = m_settings;
    settings.zoom = m_zoom;
    if (!frmIni(m_services, m_msg, m_defaults, m_upper, m_context.applicationFolder, owner).Edit(&settings))
        return false;
    picText->setFocus();
    if (!m_settingsFile.WriteFileIniEx(settings) || !m_settingsFile.WritePageLook(settings))
        m_services.ShowMessage(u"設定を保存できません。\r\n  "_s + m_context.settingsPath);
    const int neededBeforePx = m_pageFrame->sizeHint().width();
    m_isZoomChosen |= settings.zoom != m_zoom;
    m_zoom = settings.zoom;
    m_settings = settings;
    ApplySettings();
    WidenToText(neededBeforePx);
    return true;
}

void frmText::cmdDispHowToUse_Click()
{
    WriteTrace(u"■frmText.cmdDispHowToUse_Click()");
    ShowHelp(m_services, m_context.applicationFolder, HelpPageOf(objectName()));
}

void frmText::cmdSearch_Click()
{
    WriteTrace(u"■frmText.cmdSearch_Click");
    if (!m_frmSearch) {
        m_search = std::make_unique<KeywordSearch>(
            ReadKeywordList(JoinPath(m_context.applicationFolder, u"KeywordList.txt"_s)));
        m_search->SetText(&m_page.Text());
        m_frmSearch = new frmSearch(
            *m_search,
            [this] {
                return SearchedPage{m_page.TopLine(), m_page.Found(), m_page.IsAtFound()};
            },
            this);
        connect(m_frmSearch, &frmSearch::SpanChosen, this,
                [this](const TextSpan &found) { Apply(m_page.ShowFound(found)); });
        connect(m_frmSearch, &frmSearch::StateChanged, m_stateBar, &StudyStateBar::ShowKeyword);
    }
    m_frmSearch->Open();
}

void frmText::GoOnSearching(bool backwards)
{
    if (m_frmSearch)
        m_frmSearch->GoOn(backwards);
}

QString frmText::ReportFolderPath() const
{
    return JoinPath(m_context.applicationFolder, u"rec"_s);
}

void frmText::PrintFile()
{
    if (!m_page.IsFileOpen())
        return;
    m_session.CompleteSoFar();
    KeepMarks();
    frmPrint(m_services, m_msg, m_settingsFile, m_session.Marks(), ReportFolderPath(), this).Run({m_session.Path()});
}

void frmText::ExportFile()
{
    if (!m_page.IsFileOpen())
        return;
    m_session.CompleteSoFar();
    KeepMarks();
    frmExport(m_services, m_msg, m_session.Marks(), ReportFolderPath(), this).Run({m_session.Path()});
}

/// Saves marks, place, size and zoom, and reports which of the lists could not be saved.
void frmText::KeepLists()
{
    m_keeping->stop();
    SaveFormSize();
    for (const QString &message : m_session.KeepLists())
        m_services.ShowMessage(message);
}

void frmText::closeEvent(QCloseEvent *event)
{
    if (m_stage != Stage::Ended)
        Form_Unload();
    event->accept();
}

void frmText::Form_Unload()
{
    WriteTrace(u"■frmText.Form_Unload");
    Timer1->stop();
    m_stage = Stage::Ended;
    m_session.CompleteRow();
    SaveFormPos();
    KeepLists();
    m_database.Close();
    Q_EMIT Ended();
}

void frmText::Record()
{
    if (m_stage == Stage::Ended)
        return;
    m_stage = Stage::Ended;
    m_session.Complete();
    m_database.Close();
}
