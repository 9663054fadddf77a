// SPDX-FileCopyrightText: 2026 The Kotoban developers
// SPDX-License-Identifier: MIT

// The study window's handling of answers: showing and hiding, marking hard ones, hints and reading aloud.
#include "base/modLog.h"
#include "page/picText.h"
#include "settings/modSpeech.h"
#include "study/modClickTarget.h"
#include "view/StudyStateBar.h"
#include "view/frmText.h"
#include "widgets/BlockedWindow.h"
#include "widgets/frmMsg.h"

#include <QCheckBox>
#include <QScrollBar>
#include <QTimer>

using namespace Qt::Literals::StringLiterals;

void frmText::picText_KeyDown(int key)
{
    WriteTrace(u"■frmText.picText_KeyDown");
    picText->SetHint(0);
    if (key == Qt::Key_Return || key == Qt::Key_Enter)
        Enter();
    else if (key == Qt::Key_F2)
        m_services.ShowMessage(u"F2"_s); // a leftover, kept as it always was; the key does nothing else
}

void frmText::Enter()
{
    if (!m_session.IsFileOpen())
        return;
    StudyRound &round = m_session.Round();
    const EnterDecision decision = DecideEnter(round, m_session.Text(), Page());
    if (decision.action == EnterAction::Reveal) {
        BringCellsIntoView(m_session.Text().Span(decision.blank));
        Reveal(decision.blank);
        SpeakAnswer(m_session.Text().Answer(decision.blank).toString());
        return;
    }
    if (decision.action == EnterAction::AskThenTurn &&
        Ask(AllShownMessage(round.BlankCount()), MsgStyle::YesNo, u"tada.wav"_s) == MsgResult::Cancel) {
        close();
        return;
    }
    HScroll->setValue(0);
    const unsigned roundBefore = round.RoundNumber();
    const int topLineBefore = VScroll->value();
    ShowLine(TurnPage(&round, Page()));
    if (KeepBefore(roundBefore, topLineBefore, round.lngMarkLine()))
        OfferUndo();
}

void frmText::Reveal(int blank)
{
    m_wholeLine = 0;
    m_stateBar->HideNotice(); // hiding can no longer be undone
    const bool isShown = m_session.Round().Toggle(blank);
    picText->DrawBlank(blank);
    ShowProgress();
    if (isShown)
        m_stateBar->ShowCount(m_session.Round().lngOpenCount());
}

void frmText::picText_MouseDown(Qt::MouseButton button, int xPx, int yPx)
{
    WriteTrace(u"■frmText.picText_MouseDown");
    picText->SetHint(0);
    const ClickTarget target =
        TargetAt(m_session.Text(), m_session.Round(), xPx, yPx, VScroll->value(), picText->Layout());
    if (button == Qt::LeftButton)
        Click(target);
    else if (button == Qt::MiddleButton)
        ToggleHard(target.blank);
    else if (button == Qt::RightButton)
        HideAllAnswers();
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

void frmText::Click(const ClickTarget &target)
{
    if (!m_session.IsFileOpen())
        return;
    if (target.blank > 0)
        Reveal(target.blank);
    const ClickTarget meant =
        target.blank > 0 ? TargetInAnswer(m_session.Text(), m_session.Round(), target.blank) : target;
    if (chkSpeak->isChecked() && !meant.word.isEmpty())
        SpeakWord(m_services, m_context.applicationFolder, meant.word);
    if (!meant.picture.isEmpty())
        ShowPicture(meant.picture);
    if (picText->Layout().hasLineNumbers)
        MarkLine(target.numberedLine);
}

/// Marks a line, or none with 0.
void frmText::MarkLine(int line)
{
    if (line == m_session.Round().lngMarkLine())
        return;
    m_session.Round().MarkLine(line);
    picText->DrawLineNumbers();
}

void frmText::ClickCurrent()
{
    if (const TextSpan &current = picText->Current(); current.line > 0)
        Click(TargetOf(m_session.Text(), m_session.Round(), current));
}

void frmText::ClickLineNumber(int line)
{
    Click(TargetOfLineNumber(line, Page()));
}

/// Begins a new round with all blanks, as a right click does.
void frmText::HideAllAnswers()
{
    if (!m_session.IsFileOpen())
        return;
    StudyRound &round = m_session.Round();
    const unsigned roundBefore = round.RoundNumber();
    const int markBefore = round.lngMarkLine();
    if (round.IsOnlyHard())
        round.StudyOnlyHard(false);
    else
        round.HideAll();
    round.MarkLine(0);
    if (KeepBefore(roundBefore, VScroll->value(), markBefore))
        OfferUndo();
    ShowHardControls();
    picText->DrawPage();
    ShowProgress();
}

/// Saves what undoing a new round has to restore. @param roundBefore  number of the previous round; topLine and
/// markLine belong to it
/// @return whether a new round has begun
bool frmText::KeepBefore(unsigned roundBefore, int topLine, int markLine)
{
    if (m_session.Round().RoundNumber() == roundBefore)
        return false;
    m_topLineBefore = topLine;
    m_markLineBefore = markLine;
    m_markLineAfter = m_session.Round().lngMarkLine();
    m_wholeLine = 0;
    return true;
}

void frmText::OfferUndo()
{
    m_stateBar->ShowNotice(m_session.Round().IsOnlyHard() ? u"苦手を隠しました（Ctrl+Z で元に戻す）"_s
                                                          : u"すべて隠しました（Ctrl+Z で元に戻す）"_s);
}

/// Undoes the last hiding of all answers.
void frmText::Undo()
{
    StudyRound &round = m_session.Round();
    if (!round.CanUndo())
        return;
    round.Undo();
    if (round.lngMarkLine() == m_markLineAfter)
        round.MarkLine(m_markLineBefore); // no other line was marked since
    m_wholeLine = 0;
    m_stateBar->HideNotice();
    ShowHardControls();
    ShowLine(m_topLineBefore);
}

/// Marks a blank as hard, or removes the mark. Does nothing for 0.
void frmText::ToggleHard(int blank)
{
    if (blank == 0)
        return;
    m_session.ToggleHard(blank);
    m_keeping->start(); // writes several quick changes together
    if (Page().Holds(m_session.Text().Blanks().LineOf(blank)))
        picText->DrawHard(blank);
    ShowHardControls();
    ShowProgress();
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

void frmText::chkOnlyHard_Click()
{
    WriteTrace(u"■frmText.chkOnlyHard_Click");
    StudyRound &round = m_session.Round();
    const unsigned roundBefore = round.RoundNumber();
    round.StudyOnlyHard(chkOnlyHard->isChecked());
    KeepBefore(roundBefore, VScroll->value(), round.lngMarkLine());
    picText->DrawPage();
    ShowProgress();
    picText->setFocus();
}

void frmText::ShowHardControls()
{
    chkOnlyHard->setEnabled(m_session.Round().HardCount() > 0);
    chkOnlyHard->setChecked(m_session.Round().IsOnlyHard());
}

/// The blank selected with the keyboard, 0 for none.
int frmText::ChosenBlank() const
{
    const TextSpan &current = picText->Current();
    return current.line > 0 ? TargetOf(m_session.Text(), m_session.Round(), current).blank : 0;
}

/// Shows all hidden answers on the line of the selected blank, or else of the next one; a second call hides them.
void frmText::ToggleWholeLine()
{
    if (!m_session.IsFileOpen())
        return;
    StudyRound &round = m_session.Round();
    const BlankTable &blanks = m_session.Text().Blanks();
    int line = m_wholeLine;
    if (const int chosen = ChosenBlank(); chosen > 0)
        line = blanks.LineOf(chosen);
    else if (const int next = FirstHiddenBlank(round, VisibleBlanks(m_session.Text(), Page()));
             next > 0 && !Page().Holds(m_wholeLine))
        line = blanks.LineOf(next);
    if (!Page().Holds(line))
        return;
    QStringList shown;
    const BlankRange onLine = m_session.Text().BlanksOnLine(line);
    for (const int blank : onLine)
        if (!round.bolOpen(blank))
            shown += m_session.Text().Answer(blank).toString();
    round.ToggleLine(onLine);
    for (const int blank : onLine)
        picText->DrawBlank(blank);
    m_wholeLine = line;
    m_stateBar->HideNotice();
    m_stateBar->ShowCount(round.lngOpenCount());
    ShowProgress();
    SpeakAnswer(shown.join(u'、'));
}

/// Shows the first character of the selected answer, or else of the next one, unless it is the only character.
void frmText::ShowHint()
{
    if (!m_session.IsFileOpen())
        return;
    const StudyRound &round = m_session.Round();
    int blank = ChosenBlank();
    if (blank == 0 || round.bolOpen(blank))
        blank = FirstHiddenBlank(round, VisibleBlanks(m_session.Text(), Page()));
    if (blank == 0 || m_session.Text().Answer(blank).size() <= 1)
        return;
    BringCellsIntoView(m_session.Text().Span(blank));
    picText->setFocus(); // so that the next key reaches it
    picText->SetHint(blank);
}

void frmText::chkSpeak_Click()
{
    WriteTrace(u"■frmText.chkSpeak_Click");
    ShowAloud();
    picText->setFocus();
    if (chkSpeak->isChecked() && !m_isVoiceTold && !m_services.HasVoice()) {
        m_isVoiceTold = true;
        Ask(u"音声がありません。"_s, MsgStyle::Ok, u"notify.wav"_s);
    }
}

/// Explains what is read aloud; the check mark alone does not.
void frmText::ShowAloud()
{
    const QString states[] = {u"読み上げません"_s, u"クリックした言葉だけを読み上げます"_s,
                              u"表示した正解も読み上げます"_s};
    chkSpeak->setAccessibleDescription(states[chkSpeak->checkState()]);
    m_stateBar->ShowNotice(states[chkSpeak->checkState()]);
}

/// Reads aloud an answer that was not clicked, if the user wants that. @param answer  may be empty
void frmText::SpeakAnswer(const QString &answer)
{
    if (chkSpeak->checkState() == Qt::Checked && !answer.trimmed().isEmpty())
        SpeakWord(m_services, m_context.applicationFolder, answer);
}
