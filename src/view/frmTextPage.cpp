// SPDX-FileCopyrightText: 2026 The Kotoban developers
// SPDX-License-Identifier: MIT

// The study window's part in what happens on the page: passes on to StudyPage what the user does, and shows, says and
// asks what comes back.
#include "page/PageFrame.h"
#include "page/picText.h"
#include "platform/modVoice.h"
#include "settings/modSpeech.h"
#include "settings/modZoom.h"
#include "view/StudyBar.h"
#include "view/StudyStateBar.h"
#include "view/frmPicture.h"
#include "view/frmText.h"
#include "widgets/BarButton.h"
#include "widgets/BlockedWindow.h"
#include "widgets/Contrast.h"
#include "widgets/frmMsg.h"
#include "widgets/modNotices.h"

#include <QGuiApplication>
#include <QScrollBar>
#include <QTimer>

using namespace Qt::Literals::StringLiterals;

/// Shows, says and asks what a command returned.
void frmText::Apply(const PageChange &change)
{
    ShowPageState();
    if (m_page.HintedBlank() > 0)
        picText->setFocus(); // so that the next key ends the hint
    picText->Show(change);
    if (change.isPageChanged)
        DescribePage();
    if (change.notice && change.notice->isEmpty())
        m_stateBar->HideNotice();
    else if (change.notice)
        m_stateBar->ShowUndoNotice(*change.notice);
    if (change.isCounted)
        m_stateBar->ShowCount(m_page.Round().lngOpenCount());
    if (change.markedBlank > 0 || change.areMarksRemoved)
        m_keeping->start(); // writes several quick changes together
    ReadAloud(change);
    if (!change.picture.isEmpty())
        ShowPicture(change.picture);
    if (!change.question.isEmpty())
        AskForPage(change);
}

/// Asks what a command returned, and does what the user wants.
void frmText::AskForPage(const PageChange &change)
{
    const MsgResult answer =
        Ask(change.question, MsgStyle::YesNo, u"tada.wav"_s, change.isAboutMarks ? QString() : u"瞬記帳を終了します"_s);
    if (change.isAboutMarks) {
        if (answer == MsgResult::Ok)
            Apply(m_page.RemoveLearnedMarks());
        Apply(m_page.Enter());
    } else if (answer == MsgResult::Cancel) {
        close();
    } else {
        Apply(m_page.TurnPage());
    }
}

/// Sets the controls around the page to its state.
void frmText::ShowPageState()
{
    const PageInView &view = m_page.InView();
    const QSignalBlocker verticalBlocker(VScroll); // only what the user does with them is a command
    const QSignalBlocker horizontalBlocker(HScroll);
    VScroll->setRange(1, view.maximum);
    VScroll->setPageStep(view.pageSize);
    VScroll->setValue(view.topLine);
    VScroll->setEnabled(view.canScroll);
    HScroll->setRange(0, m_page.LargestLeftCell());
    HScroll->setPageStep(m_page.Layout().CellsInView());
    HScroll->setValue(m_page.Layout().leftCell);
    m_stateBar->ShowProgress(m_page.Round(), view);
    m_stateBar->OfferLine(m_page.OfferedLine());
    m_stateBar->OfferNextHard(m_page.HiddenHardElsewhere());
    m_bar->ShowHard(m_page.Round().HardCount(), m_page.Round().IsOnlyHard(), m_page.BlankToMark() > 0);
}

void frmText::VScroll_Change()
{
    WriteTrace(u"■frmText.VScroll_Change");
    Apply(m_page.MoveToLine(VScroll->value()));
}

void frmText::HScroll_Change()
{
    WriteTrace(u"■frmText.HScroll_Change");
    Apply(m_page.MoveToCell(HScroll->value()));
}

void frmText::picText_KeyDown(int key, bool isShifted)
{
    WriteTrace(u"■frmText.picText_KeyDown");
    if (key == Qt::Key_Control || key == Qt::Key_Shift)
        return; // the first half of a longer key, which may let the hint grow
    Apply(m_page.HideHint());
    if (key == Qt::Key_Return || key == Qt::Key_Enter) {
        m_hasPressedEnter |= m_page.IsFileOpen();
        m_stateBar->ShowFirstKeys(false);
        Apply(isShifted ? m_page.EnterMissed() : m_page.Enter());
    } else if (key == Qt::Key_F2)
        m_services.ShowMessage(u"F2"_s); // a leftover, kept as it always was; the key does nothing else
}

void frmText::picText_MouseDown(Qt::MouseButton button, int xPx, int yPx)
{
    WriteTrace(u"■frmText.picText_MouseDown");
    Apply(m_page.HideHint());
    const ClickTarget target = m_page.TargetAt(xPx, yPx);
    if (button == Qt::LeftButton)
        Apply(m_page.Click(target));
    else if (button == Qt::MiddleButton)
        Apply(m_page.ToggleHard(target.blank));
    else if (button == Qt::RightButton)
        Apply(m_page.HideAll());
}

// Only traced: picText sets the shape of the pointer itself.
void frmText::picText_MouseMove()
{
    WriteTrace(u"■frmText.picText_MouseMove");
}

// Only traced: dropping something on the page has no effect.
void frmText::picText_OLEDragDrop()
{
    WriteTrace(u"■frmText.picText_OLEDragDrop");
}

void frmText::chkOnlyHard_Click()
{
    WriteTrace(u"■frmText.chkOnlyHard_Click");
    Apply(m_page.StudyOnlyHard(m_bar->chkOnlyHard->isChecked()));
    picText->setFocus();
}

void frmText::cmdHard_Click()
{
    WriteTrace(u"■frmText.cmdHard_Click");
    Apply(m_page.ToggleHard(m_page.BlankToMark()));
    picText->setFocus();
}

void frmText::actPageOnly_Click()
{
    WriteTrace(u"■frmText.actPageOnly_Click");
    const bool isPageOnly = !m_bar->isHidden();
    SetPageOnly(isPageOnly);
    if (isPageOnly)
        m_stateBar->ShowNotice(u"Ctrl+F11：バーを戻す"_s);
    else
        m_stateBar->HideNotice();
}

/// Does what a notice offers.
void frmText::lblNotice_Click(NoticeAction action)
{
    WriteTrace(u"■frmText.lblNotice_Click");
    Apply(m_page.HideHint());
    switch (action) {
    case NoticeAction::ReadAgain:
        cmdReRead_Click();
        break;
    case NoticeAction::Mend:
        MendFile();
        break;
    case NoticeAction::Undo:
        Apply(m_page.Undo());
        break;
    case NoticeAction::FindPrevious:
        GoOnSearching(true);
        break;
    case NoticeAction::FindNext:
        GoOnSearching(false);
        break;
    case NoticeAction::EndSearch:
        m_stateBar->HideKeyword();
        Apply(m_page.ShowFound({}));
        break;
    case NoticeAction::GoOn:
        Apply(m_page.Enter());
        break;
    case NoticeAction::Resume:
        Apply(m_session.Resume());
        break;
    case NoticeAction::GoToOffered:
        Apply(m_page.MoveToLine(m_page.OfferedLine()));
        break;
    case NoticeAction::Write: // which mends full-width brackets when it opens the file
        actWrite_Click();
        return;
    case NoticeAction::KeepPlaces:
        break; // only offered while writing
    }
    picText->setFocus();
}

void frmText::AskForLine()
{
    if (m_page.IsFileOpen())
        m_stateBar->AskForLine(m_page.OfferedLine() > 0 ? m_page.OfferedLine() : m_page.TopLine(),
                               m_page.Text().LineCount());
}

/// Saves the marks, and reports a failure unless another window is open, over which a timer must not open a message.
/// After that one is closed it tries again.
void frmText::KeepMarks()
{
    const FileFault fault = m_session.KeepMarks();
    if (!fault)
        return;
    if (IsBlocked(this))
        m_keeping->start();
    else
        Ask(MarksNotSavedMessage(fault), MsgStyle::Ok, u"notify.wav"_s);
}

void frmText::ShowPicture(const QString &name)
{
    m_session.CompleteSoFar(); // decoding a picture of any origin is the program's riskiest work
    frmPicture(StudyFolderPath(), name, this).exec();
}

void frmText::chkSpeak_Click()
{
    WriteTrace(u"■frmText.chkSpeak_Click");
    // The check mark alone does not say what is read aloud.
    const QString states[] = {u"読み上げません"_s, u"クリックした言葉だけを読み上げます"_s,
                              u"表示した正解も読み上げます"_s};
    const QString &state = states[m_bar->chkSpeak->checkState()];
    m_bar->chkSpeak->setAccessibleDescription(state + u" (Alt+S)"_s); // Qt tells no key of a check box
    m_stateBar->ShowNotice(state);
    picText->setFocus();
    if (m_bar->chkSpeak->isChecked() && !m_isVoiceTold && !m_services.HasVoice()) {
        m_isVoiceTold = true;
        Ask(u"音声がありません。\r\n"_s + VoiceAdvice(), MsgStyle::Ok, u"notify.wav"_s);
    }
}

/// Reads aloud what was clicked or, if the user wants that too, shown by a key.
void frmText::ReadAloud(const PageChange &change)
{
    if (m_bar->chkSpeak->isChecked() && !change.word.isEmpty())
        SpeakWord(m_services, m_context.applicationFolder, change.word);
    if (m_bar->chkSpeak->checkState() == Qt::Checked && !change.answer.trimmed().isEmpty())
        SpeakWord(m_services, m_context.applicationFolder, change.answer);
}

/// Zooms by some steps, out if negative. The top line stays at the top.
void frmText::ChangeZoom(int steps)
{
    SetZoom(ZoomBy(m_zoom, steps));
}

void frmText::SetZoom(int percent)
{
    m_isZoomChosen = true;
    if (percent == m_zoom)
        return;
    const int neededBeforePx = m_pageFrame->sizeHint().width();
    m_zoom = percent;
    ApplySettings();
    WidenToText(neededBeforePx);
}

/// Gives the bars the colours of the page, unless the desktop wants its own everywhere.
void frmText::ShowColours()
{
    const bool isOwn = !IsHighContrast(QGuiApplication::palette());
    setPalette(isOwn ? BarPalette(picText->Colours()) : QPalette());
    m_bar->SetHardColours(isOwn ? &picText->Colours() : nullptr);
    DescribePage();
}

/// Describes the page's zoom and colours to assistive technology.
void frmText::DescribePage()
{
    QString description = u"大きさ %1 %"_s.arg(m_zoom);
    if (picText->IsDark())
        description += u"，暗い画面"_s;
    if (const int leftCell = m_page.Layout().leftCell; leftCell > 0)
        description += u"，左の %1 桁は隠れています"_s.arg(leftCell);
    if (description != picText->accessibleDescription())
        picText->setAccessibleDescription(description);
}
