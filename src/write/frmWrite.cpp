// SPDX-FileCopyrightText: 2026 The Kotoban developers
// SPDX-License-Identifier: MIT

#include "write/frmWrite.h"

#include "base/modLog.h"
#include "exchange/modInsertPicture.h"
#include "exchange/modStudyFromTable.h"
#include "settings/modZoom.h"
#include "text/modCheckText.h"
#include "widgets/BarButton.h"
#include "widgets/BlockedWindow.h"
#include "widgets/NoticePlace.h"
#include "widgets/frmMsg.h"
#include "widgets/frmWait.h"
#include "widgets/modHelp.h"
#include "write/FindField.h"
#include "write/LineChecks.h"
#include "write/ProblemList.h"
#include "write/WriteBar.h"
#include "write/WritePage.h"
#include "write/WriteStateBar.h"
#include "write/frmName.h"
#include "write/modCleanText.h"

#include <QClipboard>
#include <QFileDialog>
#include <QFileInfo>
#include <QFileSystemWatcher>
#include <QGuiApplication>
#include <QKeyEvent>
#include <QMimeData>
#include <QScopeGuard>
#include <QTextBlock>
#include <QTimer>

using namespace Qt::Literals::StringLiterals;

namespace {

constexpr int NoticeMs = 4000;
constexpr int UndoNoticeMs = 8000;

} // namespace

bool frmWrite::Edit(const QString &path, int line)
{
    WrittenFile file;
    QString text;
    bool isChanged = false;
    if (const QString refusal = OpenToWrite(path, &file, &text, &isChanged); !refusal.isEmpty())
        return m_msg.Refuse(parentWidget(), refusal);
    m_isNew = false;
    if (!Open(file, text, isChanged))
        return false;
    txtText->GoTo(line);
    Run();
    return m_isSaved;
}

QString frmWrite::WriteNew(const QString &pasted)
{
    m_isNew = true;
    if (!Open(pasted.isEmpty() ? NewWrittenFile(m_studyFolder) : FreshWrittenFile(m_studyFolder), QString(), false))
        return QString();
    if (!pasted.isEmpty())
        txtText_Paste(pasted);
    Run();
    return m_isSaved ? QFileInfo(m_file.path).fileName() : QString();
}

/// Shows a text, or the draft of it if the user wants to go on with that.
/// @return false if the user left the question about that open
bool frmWrite::Open(WrittenFile file, const QString &text, bool isChanged)
{
    QString opened = text;
    bool isToMend = isChanged || NeedsMending(text);
    Draft draft;
    if (ReadDraft(file.path, &draft) && HasUnsavedText(draft, text)) {
        const MsgResult answer = m_msg.Ask(parentWidget(), DraftQuestion(draft, file));
        if (answer == MsgResult::None)
            return false;
        if (answer == MsgResult::Ok) {
            TakeDraft(draft, &file);
            opened = WithoutEndlessLines(draft.text);
            isChanged = true;
            isToMend = false;
        } else {
            RemoveDraft(file.path);
        }
    }
    m_file = std::move(file);
    m_pictures.emplace(m_studyFolder);
    txtText->setPlainText(opened);
    txtText->document()->setModified(isChanged);
    m_bar->ShowUnsaved(isChanged); // not every way here changes the state of the document
    m_isSaved = m_isSettled = false;
    WatchFile();
    ShowFile();
    txtText_CursorMove();
    if (isToMend)
        Mend(parentWidget());
    return true;
}

void frmWrite::Run()
{
    txtText->setFocus();
    exec();
    m_keeping->stop();
    if (!m_isSettled)
        KeepDraft(); // the program ends
}

/// Escape ends a search first.
void frmWrite::keyPressEvent(QKeyEvent *event)
{
    if (event->key() == Qt::Key_Escape && m_stateBar->Find()->isVisible()) {
        m_stateBar->Find()->hide();
        txtText->setFocus();
    } else {
        QDialog::keyPressEvent(event);
    }
}

/// Escape and the close box. Whether the window closes is the user's answer.
void frmWrite::reject()
{
    if (txtText->document()->isModified()) {
        const MsgResult answer = m_msg.Ask(this, SaveBeforeClosingQuestion(m_file.path));
        if (answer == MsgResult::None || (answer == MsgResult::Ok && !Save()))
            return;
    }
    RemoveDraft(m_file.path);
    m_isSettled = true;
    QDialog::reject();
}

void frmWrite::cmdSave_Click()
{
    WriteTrace(u"■frmWrite.cmdSave_Click");
    Save();
    txtText->setFocus();
}

/// @return whether the text is saved
bool frmWrite::Save()
{
    // Until it is saved, a new text keeps the draft by which it is found again.
    const QString draftOf = m_file.path;
    auto keepDraftsPath = qScopeGuard([this, draftOf] {
        m_file.path = draftOf;
        ShowFile();
    });
    if ((m_isNew && !TakeName()) || !ReplaceUnwritable())
        return false;
    if (const int refusing = m_checks->Finish().refusing;
        refusing > 0 && m_msg.Ask(this, SaveWithProblemsQuestion(refusing)) != MsgResult::Ok)
        return false;
    const QString text = txtText->toPlainText();
    const QDate today = m_services.Now().date();
    SaveResult result = SaveDraft(text, &m_file, today, OnConflict::Stop);
    if (result.outcome == SaveResult::Conflict) {
        const MsgResult answer = m_msg.AskWhich(this, ConflictQuestion(m_file.path), u"両方残す"_s, u"置き換える"_s);
        if (answer != MsgResult::Ok && answer != MsgResult::Other)
            return false;
        result = SaveDraft(text, &m_file, today, answer == MsgResult::Ok ? OnConflict::KeepBoth : OnConflict::Replace);
    }
    if (result.outcome != SaveResult::Saved)
        return m_msg.Refuse(this, NotSavedMessage(result.fault));
    keepDraftsPath.dismiss();
    if (m_file.path != draftOf)
        RemoveDraft(draftOf);
    m_keeping->stop();
    m_isNew = false;
    m_isSaved = true;
    txtText->document()->setModified(false);
    WatchFile();
    ShowFile();
    QString done = u"保存しました"_s;
    if (!result.keptPath.isEmpty())
        done += u"。前のファイルは "_s + QFileInfo(result.keptPath).fileName();
    Tell(done);
    return true;
}

/// Asks for the name of a new file.
bool frmWrite::TakeName()
{
    const QString name = frmName(m_msg, m_studyFolder, this).Ask(QFileInfo(m_file.path).completeBaseName());
    if (name.isEmpty())
        return false;
    m_file.path = JoinPath(m_studyFolder, name);
    ShowFile();
    return true;
}

/// Offers to replace what no study file can have. @return whether nothing of that is left
bool frmWrite::ReplaceUnwritable()
{
    const EncodedDraft encoded = EncodeDraft(txtText->toPlainText(), m_file);
    if (encoded.unwritableCount == 0)
        return true;
    if (m_msg.Ask(this, UnwritableQuestion(encoded)) != MsgResult::Ok) {
        const UnwritableCharacter &first = encoded.unwritable.front();
        txtText->GoTo(first.line, first.column, first.length);
        return false;
    }
    txtText->ChangeTo(WithUnwritableReplaced(txtText->toPlainText(), m_file));
    return true;
}

void frmWrite::tmrKeep_Timer()
{
    WriteTrace(u"■frmWrite.tmrKeep_Timer");
    KeepDraft();
}

/// Writes the draft. A failure is only told below the page, and the next change tries again.
void frmWrite::KeepDraft()
{
    if (!txtText->document()->isModified())
        return;
    if (const FileFault fault = WriteDraft(txtText->toPlainText(), m_file))
        Tell(u"下書きを書き込めません："_s + fault.reason);
}

void frmWrite::txtText_Change()
{
    WriteTrace(u"■frmWrite.txtText_Change");
    m_templates->setVisible(txtText->document()->isEmpty());
    m_stateBar->Notices()->Remove(NoticeTopic::Done); // what it offers would undo another change
    if (!m_keeping->isActive() && txtText->document()->isModified())
        m_keeping->start();
}

void frmWrite::txtText_CursorMove()
{
    WriteTrace(u"■frmWrite.txtText_CursorMove");
    m_stateBar->ShowLine(txtText->CursorLine(), txtText->blockCount());
    m_stateBar->ShowBytes(LineBytes(txtText->textCursor().block().text()));
}

void frmWrite::ShowFound()
{
    const FoundProblems &found = m_checks->Found();
    m_problems->Show(found);
    m_bar->ShowRemedies(found.remedies);
    m_bar->actProblem->setEnabled(found.count > 0);
    m_stateBar->ShowBlanks(found.blanks);
}

void frmWrite::ShowFile()
{
    const QString name = QFileInfo(m_file.path).fileName();
    setWindowTitle(u"書く - "_s + NameInLine(name));
    m_bar->ShowFile(name);
}

void frmWrite::WatchFile()
{
    if (!m_watcher->files().isEmpty())
        m_watcher->removePaths(m_watcher->files());
    if (QFileInfo::exists(m_file.path))
        m_watcher->addPath(m_file.path);
    m_stateBar->Notices()->Remove(NoticeTopic::FileChange);
}

/// Tells that the file is another one now. What to do about it is asked when the text is saved.
void frmWrite::ShowFileChange()
{
    QByteArray bytes;
    if (ReadWholeFile(m_file.path, &bytes) || DigestOf(bytes) != m_file.digest)
        m_stateBar->Notices()->Put(NoticeTopic::FileChange,
                                   {.text = u"ほかで変更されました。保存するときに選べます"_s});
}

void frmWrite::Tell(const QString &text)
{
    m_stateBar->Notices()->Put(NoticeTopic::Done, {.text = text}, NoticeMs);
}

void frmWrite::TellUndoable(const QString &text)
{
    m_stateBar->Notices()->Put(
        NoticeTopic::Done, {.text = text, .offers = {{u"元に戻す"_s, u"Ctrl+Z"_s, NoticeAction::Undo}}}, UndoNoticeMs);
}

void frmWrite::lblNotice_Click(NoticeAction action)
{
    WriteTrace(u"■frmWrite.lblNotice_Click");
    txtText->undo();
    if (action == NoticeAction::KeepPlaces)
        txtText->Insert(CleanedPaste(m_pasted, WithoutEquivalent::Geta).text);
    m_stateBar->Notices()->Remove(NoticeTopic::Done);
    txtText->setFocus();
}

void frmWrite::cmdPen_Click()
{
    WriteTrace(u"■frmWrite.cmdPen_Click");
    txtText->SetPenDown(m_bar->cmdPen->isChecked());
    Tell(m_bar->cmdPen->isChecked() ? u"なぞるかダブルクリックした言葉が空欄になります"_s : u"ペンを置きました"_s);
    txtText->setFocus();
}

void frmWrite::actBlank_Click()
{
    WriteTrace(u"■frmWrite.actBlank_Click");
    txtText->StrokeSelection();
    txtText->setFocus();
}

void frmWrite::cmdMend_Click()
{
    WriteTrace(u"■frmWrite.cmdMend_Click");
    Mend(this);
    txtText->setFocus();
}

/// Mends what can be mended, as one step to undo, and tells how much that was.
void frmWrite::Mend(QWidget *owner)
{
    const QString text = txtText->toPlainText();
    Mending mending(text);
    const int before = m_checks->Finish().count;
    if (!frmWait(u"直しています。"_s, owner).Run(mending))
        return;
    const QString mended = mending.Take();
    if (mended == text)
        return;
    txtText->ChangeTo(mended);
    const int left = m_checks->Finish().count;
    TellUndoable(u"%1 か所を直しました"_s.arg(qMax(1, before - left)));
}

void frmWrite::txtText_Paste(const QString &text)
{
    WriteTrace(u"■frmWrite.txtText_Paste");
    PutCleaned(text);
}

/// Inserts a text from elsewhere, made fit for a study file, as one step to undo, and tells what was changed.
void frmWrite::PutCleaned(const QString &text)
{
    if (text.size() > MaxWriteBytes) {
        Tell(u"%1 MB を超える文章は貼り付けられません"_s.arg(MaxWriteMegabytes));
        return;
    }
    TextConversion conversion(text, Accents::Remove, WithoutEquivalent::Remove);
    if (!frmWait(u"貼り付けています。"_s, isVisible() ? this : parentWidget()).Run(conversion))
        return;
    const ConvertedText converted = conversion.Take();
    const bool hasLeftOut = converted.unwritableCount > 0;
    const CleanText clean = CleanTextOf(converted, WithoutEquivalent::Remove);
    if (HasEndlessLine(clean.text)) {
        Tell(u"%1 文字を超える行は貼り付けられません"_s.arg(MaxWriteLine));
        return;
    }
    txtText->Insert(clean.text);
    if (HasEndlessLine(txtText->toPlainText())) { // together with what was there
        txtText->undo();
        Tell(u"%1 文字を超える行は貼り付けられません"_s.arg(MaxWriteLine));
        return;
    }
    if (clean.notice.isEmpty())
        return;
    Notice notice{.text = clean.notice, .offers = {{u"元に戻す"_s, u"Ctrl+Z"_s, NoticeAction::Undo}}};
    m_pasted = hasLeftOut ? text : QString();
    if (hasLeftOut)
        notice.offers.push_back({u"〓にする"_s, QString(), NoticeAction::KeepPlaces});
    m_stateBar->Notices()->Put(NoticeTopic::Done, notice, UndoNoticeMs);
}

void frmWrite::actPasteTable_Click()
{
    WriteTrace(u"■frmWrite.actPasteTable_Click");
    QString refusal;
    const QString lines = LinesOfCells(QGuiApplication::clipboard()->text(), &refusal);
    if (refusal.isEmpty())
        PutCleaned(lines);
    else
        Tell(refusal);
    txtText->setFocus();
}

/// Joins the selected lines. Without a selection nothing is joined, because the lines of a list look like broken ones.
void frmWrite::actJoin_Click()
{
    WriteTrace(u"■frmWrite.actJoin_Click");
    txtText->setFocus();
    const QTextCursor cursor = txtText->textCursor();
    if (!cursor.hasSelection()) {
        Tell(u"つなぐ行を選んでください（すべてなら Ctrl+A）"_s);
        return;
    }
    const QString before = txtText->toPlainText();
    const int start = txtText->document()->findBlock(cursor.selectionStart()).position();
    // Whoever selects whole lines has the cursor at the beginning of the next one.
    const QTextBlock last = txtText->document()->findBlock(cursor.selectionEnd() - 1);
    const int end = last.position() + last.length() - 1;
    const QString joined = before.first(start) + JoinedLines(before.sliced(start, end - start)) + before.sliced(end);
    if (joined == before) {
        Tell(u"つなぐ行はありません"_s);
        return;
    }
    txtText->ChangeTo(joined);
    TellUndoable(u"行をつなぎました"_s);
}

void frmWrite::actLine_Click()
{
    WriteTrace(u"■frmWrite.actLine_Click");
    m_stateBar->Find()->hide();
    m_stateBar->Notices()->AskForLine(txtText->CursorLine(), txtText->blockCount());
}

void frmWrite::actProblem_Click()
{
    WriteTrace(u"■frmWrite.actProblem_Click");
    m_checks->Finish();
    const QTextCursor cursor = txtText->textCursor();
    m_problems->GoToNext(txtText->CursorLine(), cursor.selectionStart() - cursor.block().position() + 1);
    txtText->setFocus();
}

void frmWrite::cmdFind_Click()
{
    WriteTrace(u"■frmWrite.cmdFind_Click");
    const QString selected = txtText->textCursor().selectedText();
    m_stateBar->Find()->Open(selected.contains(QChar::ParagraphSeparator) ? QString() : selected);
}

/// Goes to the next or previous place of what is searched, and on from the other end of the text.
void frmWrite::Find(bool backwards)
{
    const QString wanted = m_stateBar->Find()->Wanted();
    if (wanted.isEmpty()) {
        cmdFind_Click();
        return;
    }
    const auto direction = backwards ? QTextDocument::FindBackward : QTextDocument::FindFlags();
    if (txtText->find(wanted, direction))
        return;
    const QTextCursor before = txtText->textCursor();
    txtText->moveCursor(backwards ? QTextCursor::End : QTextCursor::Start);
    if (txtText->find(wanted, direction))
        return;
    txtText->setTextCursor(before);
    m_stateBar->Find()->TellNotFound();
}

void frmWrite::cmdTemplate_Click(int number)
{
    WriteTrace(u"■frmWrite.cmdTemplate_Click");
    const Template &chosen = Templates().at(size_t(number));
    txtText->Insert(chosen.text);
    QTextCursor cursor(txtText->document());
    cursor.setPosition(int(chosen.selectionStart));
    cursor.setPosition(int(chosen.selectionStart + chosen.selectionLength), QTextCursor::KeepAnchor);
    txtText->setTextCursor(cursor);
    txtText->setFocus();
}

void frmWrite::cmdPicture_Click()
{
    WriteTrace(u"■frmWrite.cmdPicture_Click");
    const QString path =
        QFileDialog::getOpenFileName(this, u"図の選択"_s, m_pictureFolder, u"図 (*.png *.jpg *.jpeg *.gif *.bmp)"_s);
    if (!path.isEmpty()) {
        m_pictureFolder = QFileInfo(path).path();
        InsertPicture(path);
    }
    txtText->setFocus();
}

/// Files dropped on the page. Asks only after returning, because the program they come from waits for the drop to
/// finish.
void frmWrite::txtText_Drop(const QStringList &paths)
{
    WriteTrace(u"■frmWrite.txtText_Drop");
    QTimer::singleShot(0, this, [this, paths] {
        for (const QString &path : paths)
            if (!IsBlocked(this))
                InsertPicture(path);
    });
}

/// Copies a picture into the folder of study files and inserts its name.
void frmWrite::InsertPicture(const QString &path)
{
    const PictureToInsert picture = PictureFor(path, m_studyFolder, PictureFolder(m_studyFolder));
    if (!picture.refusal.isEmpty()) {
        m_msg.Refuse(this, picture.refusal);
        return;
    }
    if (picture.mustAsk && m_msg.Ask(this, ReplacePictureQuestion(picture)) != MsgResult::Ok)
        return;
    if (const FileFault fault = TakePicture(path, picture)) {
        m_msg.Refuse(this, FaultMessage(u"図をコピーできません。"_s, fault));
        return;
    }
    m_pictures.emplace(m_studyFolder);
    txtText->Insert(u'｢' + picture.name + u'｣');
    m_checks->StartAgain();
}

void frmWrite::actHelp_Click()
{
    WriteTrace(u"■frmWrite.actHelp_Click");
    ShowHelp(m_services, m_applicationFolder, HelpPageOf(objectName()));
}
