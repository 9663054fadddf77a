// SPDX-FileCopyrightText: 2026 The Kotoban developers
// SPDX-License-Identifier: MIT

#include "files/frmFile.h"

#include "base/modFile.h"
#include "base/modLog.h"
#include "base/modProduct.h"
#include "exchange/MendFiles.h"
#include "exchange/frmExport.h"
#include "exchange/frmPrint.h"
#include "exchange/frmTable.h"
#include "exchange/modPrintableCopy.h"
#include "files/MakeHardNote.h"
#include "files/StudyFileList.h"
#include "files/StudyFileModel.h"
#include "files/modHandOut.h"
#include "files/modTakeFiles.h"
#include "history/HistoryPanel.h"
#include "history/RewardLabel.h"
#include "settings/modEditor.h"
#include "text/modCheckText.h"
#include "text/modReadText.h"
#include "widgets/BlockedWindow.h"
#include "widgets/ElidedLabel.h"
#include "widgets/NamedControls.h"
#include "widgets/frmMsg.h"
#include "widgets/frmWait.h"
#include "write/frmWrite.h"

#include <QAction>
#include <QClipboard>
#include <QCoreApplication>
#include <QDeadlineTimer>
#include <QDropEvent>
#include <QFileDialog>
#include <QFileInfo>
#include <QFileSystemWatcher>
#include <QGuiApplication>
#include <QLabel>
#include <QLineEdit>
#include <QMimeData>
#include <QPushButton>
#include <QScrollBar>
#include <QTabBar>
#include <QTimer>

#include <algorithm>
#include <limits>
#include <utility>

using namespace Qt::Literals::StringLiterals;

void frmFile::Form_Load()
{
    WriteTrace(u"■frmFile.Form_Load");
    setWindowTitle(u"ファイル選択 Ver"_s + VersionText());
}

FileChoice frmFile::Choose(const QString &textEditor, const EndedSession &ended,
                           const std::function<bool()> &afterShown)
{
    SetTextEditor(textEditor);
    m_afterShown = afterShown;
    m_ended = ended;
    m_choice = FileChoice::Cancelled;
    exec();
    return m_choice;
}

void frmFile::showEvent(QShowEvent *event)
{
    QDialog::showEvent(event);
    if (!event->spontaneous()) // not when it was only minimised
        Form_Activate();
}

void frmFile::paintEvent(QPaintEvent *event)
{
    QDialog::paintEvent(event);
    if (m_afterShown && !m_saving->isActive())
        m_saving->start(0); // what is painted now is on the screen by then
}

void frmFile::SaveAfterShown()
{
    constexpr int pauseMs = 100;
    if (IsBlocked(this)) // a message would cover another one
        m_saving->start(pauseMs);
    else
        CallAfterShown();
}

void frmFile::CallAfterShown()
{
    m_saving->stop();
    const std::function<bool()> afterShown = std::exchange(m_afterShown, nullptr);
    if (!afterShown || !afterShown() || !isVisible())
        return;
    m_files->SetMarks(m_marks.EntriesByTitle());
    ListFiles();
    ShowTallies();
}

void frmFile::changeEvent(QEvent *event)
{
    QDialog::changeEvent(event);
    if (event->type() == QEvent::PaletteChange) {
        DimPlaceholder(txtFilter);
        DimPlaceholder(lblEmpty);
    } else if (event->type() == QEvent::FontChange) {
        ArrangeHalves();
    }
}

void frmFile::resizeEvent(QResizeEvent *event)
{
    QDialog::resizeEvent(event);
    ArrangeHalves();
}

/// Stops all background work, so that it does not delay the next window. While the window is minimised, it goes on.
void frmFile::hideEvent(QHideEvent *event)
{
    QDialog::hideEvent(event);
    if (event->spontaneous())
        return;
    CallAfterShown();
    m_files->DropChecks();
    m_history->Stop();
    m_tallying->stop();
    m_refreshing->stop();
    if (!m_watcher->directories().isEmpty())
        m_watcher->removePaths(m_watcher->directories());
}

/// Forwards list navigation keys from the filter field to the list, and keeps fields from taking the key that exports:
/// on some desktops it goes to the end of the line there.
bool frmFile::eventFilter(QObject *object, QEvent *event)
{
    if (event->type() == QEvent::ShortcutOverride &&
        static_cast<QKeyEvent *>(event)->keyCombination() == (Qt::CTRL | Qt::Key_E)) {
        event->ignore();
        return true;
    }
    if (object == txtFilter && event->type() == QEvent::KeyPress) {
        const int key = static_cast<QKeyEvent *>(event)->key();
        if (key == Qt::Key_Up || key == Qt::Key_Down || key == Qt::Key_PageUp || key == Qt::Key_PageDown)
            return QCoreApplication::sendEvent(lstFile, event);
    }
    return QDialog::eventFilter(object, event);
}

void frmFile::dragEnterEvent(QDragEnterEvent *event)
{
    if (event->mimeData()->hasUrls())
        event->acceptProposedAction();
}

/// Copies the files only after returning, because the program they come from waits for the drop to finish.
void frmFile::dropEvent(QDropEvent *event)
{
    QStringList paths;
    for (const QUrl &url : event->mimeData()->urls())
        paths += url.isLocalFile() ? url.toLocalFile() : url.toDisplayString();
    event->setDropAction(Qt::CopyAction);
    event->accept();
    QTimer::singleShot(0, this, [this, paths] { lstFile_OLEDragDrop(paths); });
}

void frmFile::Form_Activate()
{
    WriteTrace(u"■frmFile.Form_Activate");
    tabHalves->setCurrentIndex(0);
    txtFilter->clear();
    m_files->SetMarks(m_marks.EntriesByTitle());
    ListFiles();
    if (SelectedName().isEmpty())
        Select(m_folder.NameOf(m_stops.LastFile(m_userName)));
    if (SelectedName().isEmpty())
        Select(u"はじめに.txt"_s);
    if (SelectedName().isEmpty())
        lstFile->setCurrentIndex(m_files->FirstFile()); // so that even a new user's first Enter opens a file
    m_history->ShowThisWeek(m_ended.sum.answers > 0 ? m_ended.start : QDateTime());
    if (m_tallies.ReadRecent(m_services.Now().date()))
        m_tallying->start(0);
    ShowTallies();
    activateWindow();
    lstFile->setFocus();
}

void frmFile::cmdSelect_Click()
{
    WriteTrace(u"■frmFile.cmdSelect_Click");
    const QString path = TakeSelectionOrNote();
    if (path.isEmpty())
        return;
    StudyLines lines;
    if (const TextRefusal refusal = ReadStudyText(path, MaxLineBytes, &lines)) {
        const QString question = refusal.message + u"\r\nこのファイルを開きますか？"_s;
        if (m_msg.Ask(this, question) == MsgResult::Ok)
            OpenInEditor(m_services, m_editor, path, refusal.line);
        GoToMend(SelectedName());
        return;
    }
    m_msg.PlayNamedSound(u"start.wav"_s);
    m_chosenPath = path;
    Leave(FileChoice::Chosen);
}

void frmFile::cmdEdit_Click()
{
    WriteTrace(u"■frmFile.cmdEdit_Click");
    if (const QString path = TakeSelection(); !path.isEmpty())
        OpenInEditor(m_services, m_editor, path, 1);
}

void frmFile::cmdWrite_Click()
{
    WriteTrace(u"■frmFile.cmdWrite_Click");
    if (const QString path = TakeSelection(); !path.isEmpty())
        WriteFile(path);
    lstFile->setFocus(); // Enter then opens the file
}

void frmFile::cmdNew_Click()
{
    WriteTrace(u"■frmFile.cmdNew_Click");
    WriteNew(QString());
}

void frmFile::cmdNewPasted_Click()
{
    WriteTrace(u"■frmFile.cmdNewPasted_Click");
    const QString text = QGuiApplication::clipboard()->text();
    if (text.isEmpty())
        m_msg.Refuse(this, u"クリップボードに文章がありません。"_s);
    else
        WriteNew(text);
}

void frmFile::cmdRefresh_Click()
{
    WriteTrace(u"■frmFile.cmdRefresh_Click");
    ListFiles();
}

void frmFile::cmdIni_Click()
{
    WriteTrace(u"■frmFile.cmdIni_Click");
    Q_EMIT SettingsAsked();
}

void frmFile::cmdOpenFolder_Click()
{
    WriteTrace(u"■frmFile.cmdOpenFolder_Click");
    if (!m_services.OpenWithShell(m_folder.Path(), u"c:\\"_s))
        m_services.ShowMessage(u"次のフォルダを開けません。\r\n  "_s + m_folder.Path());
}

void frmFile::cmdConvFile_Click()
{
    WriteTrace(u"■frmFile.cmdConvFile_Click");
    const QString path = TakeSelection(true);
    if (path.isEmpty())
        return;
    const QString copyPath = PrintableCopyPath(m_folder.Path(), path);
    PrintableCopy copy;
    if (const TextRefusal refusal = copy.Read(path)) {
        m_msg.Refuse(this, refusal.message);
        return;
    }
    if (!frmWait(u"印刷用ファイルを作っています。"_s, this).Run(copy))
        return;
    const OldCopy oldCopy = JudgeOldCopy(copy.Bytes(), path, copyPath);
    if (MustAsk(oldCopy) && m_msg.Ask(this, ReplaceCopyQuestion(path, copyPath, oldCopy)) != MsgResult::Ok)
        return;
    if (const FileFault fault = WritePrintableCopy(copy.Bytes(), copyPath, oldCopy)) {
        m_msg.Refuse(this, FaultMessage(u"印刷用ファイルを書き込めません。"_s, fault));
        return;
    }
    ListFiles();
    if (m_msg.DispFrmMsg(this, CopyMadeMessage(copyPath, oldCopy), MsgStyle::YesNo, u"start.wav"_s) == MsgResult::Ok)
        OpenInEditor(m_services, m_editor, copyPath, 1);
}

void frmFile::cmdMend_Click()
{
    WriteTrace(u"■frmFile.cmdMend_Click");
    const QStringList paths = TakeSelections(false);
    if (paths.isEmpty())
        return;
    if (MendFiles(m_services, m_msg, this, m_editor, paths) == MendOutcome::ToBeWritten)
        WriteFile(paths.front());
    ListFiles();
    lstFile->setFocus(); // Enter then opens the file
}

void frmFile::cmdPrint_Click()
{
    WriteTrace(u"■frmFile.cmdPrint_Click");
    if (const QStringList paths = TakeSelections(true); !paths.isEmpty())
        frmPrint(m_services, m_msg, m_settings, m_marks, m_reportFolder, this).Run(paths);
}

void frmFile::cmdExport_Click()
{
    WriteTrace(u"■frmFile.cmdExport_Click");
    if (const QStringList paths = TakeSelections(true); !paths.isEmpty())
        frmExport(m_services, m_msg, m_marks, m_reportFolder, this).Run(paths);
}

/// Moves the files that a folder has already, byte for byte, from FilesToTake::replaced to FilesToTake::present.
/// @return false if the user has stopped it
bool frmFile::LeaveEqualOnes(FilesToTake *files, const QString &folder)
{
    const QStringList same = std::exchange(files->replaced, {});
    qsizetype next = 0;
    const auto compare = [&](const QDeadlineTimer &deadline) {
        while (next < same.size()) {
            (IsInFolder(same[next], folder) ? files->present : files->replaced) += same[next];
            ++next;
            if (deadline.hasExpired())
                break;
        }
        return next < same.size();
    };
    return frmWait(u"ファイルを比べています。"_s, this).Run(compare, [&] {
        return double(next) / double(same.size());
    });
}

/// Copies the selected files with their pictures into a folder for other people.
void frmFile::cmdHandOut_Click()
{
    WriteTrace(u"■frmFile.cmdHandOut_Click");
    const QStringList paths = TakeSelections(false);
    if (paths.isEmpty())
        return;
    const QStringList others =
        SelectedNames().contains(HardNoteTitle) ? QStringList(HardNoteTitle.toString()) : QStringList();
    HandOutSearch search(paths, others);
    if (!frmWait(u"図を探しています。"_s, this).Run(search))
        return;
    const HandOut handOut = search.Take();
    if (handOut.paths.isEmpty()) {
        m_msg.Refuse(this, NothingToHandOutMessage(handOut));
        return;
    }
    const QString folder = QFileDialog::getExistingDirectory(this, u"配布用に書き出すフォルダ"_s, m_handOutFolder);
    if (folder.isEmpty())
        return;
    m_handOutFolder = folder;
    if (QFileInfo(folder).canonicalFilePath() == QFileInfo(m_folder.Path()).canonicalFilePath()) {
        m_msg.Refuse(this, u"学習ファイルのフォルダには書き出せません。ほかのフォルダを選んでください。"_s);
        return;
    }
    FilesToTake files = SortFilesToTake(handOut.paths, folder);
    if (!LeaveEqualOnes(&files, folder))
        return;
    if (!files.replaced.isEmpty()) {
        const MsgResult answer = m_msg.Ask(this, ReplaceHandedOutQuestion(files.replaced));
        if (answer == MsgResult::None)
            return;
        if (answer != MsgResult::Ok)
            files.declined.swap(files.replaced);
    }
    FileTaking taking(files.fresh + files.replaced, folder, OldFiles::Replace);
    frmWait(u"コピーしています。"_s, this).Run(taking);
    const bool isAllDone = files.declined.isEmpty() && files.tooLarge.isEmpty() && files.twins.isEmpty() &&
                           taking.Failures().isEmpty() && taking.Left().isEmpty() && handOut.refused.isEmpty() &&
                           handOut.missing.isEmpty() && handOut.linked.isEmpty();
    m_msg.DispFrmMsg(this, HandedOutMessage(handOut, files, taking), MsgStyle::Ok,
                     isAllDone ? u"start.wav"_s : u"notify.wav"_s);
    if (taking.Copied().isEmpty() && files.present.isEmpty())
        return; // nothing to be seen there
    if (!m_services.OpenWithShell(folder, u"c:\\"_s))
        m_services.ShowMessage(u"次のフォルダを開けません。\r\n  "_s + folder);
}

void frmFile::cmdTable_Click()
{
    WriteTrace(u"■frmFile.cmdTable_Click");
    const QString table = frmTable::AskForTable(m_tableFolder, this);
    if (table.isEmpty())
        return;
    m_tableFolder = QFileInfo(table).path();
    MakeFromTable(table);
}

void frmFile::cmdRecordTable_Click()
{
    WriteTrace(u"■frmFile.cmdRecordTable_Click");
    m_history->WriteTable();
}

void frmFile::cmdCancel_Click()
{
    WriteTrace(u"■frmFile.cmdCancel_Click");
    Leave(FileChoice::Cancelled);
}

void frmFile::cmdEnd_Click()
{
    WriteTrace(u"■frmFile.cmdEnd_Click");
    m_database.Close();
    Leave(FileChoice::EndProgram);
}

void frmFile::txtFilter_Change()
{
    WriteTrace(u"■frmFile.txtFilter_Change");
    const QStringList selected = SelectedNames();
    const QString current = lstFile->currentIndex().data().toString();
    m_files->SetFilter(txtFilter->text());
    ShowEmptyList();
    SelectNames(selected, current);
    if (SelectedNames().isEmpty() && !txtFilter->text().isEmpty())
        lstFile->setCurrentIndex(m_files->FirstFile()); // Enter then opens the first match
}

/// Moves the focus into the half that is shown, unless the user goes from tab to tab.
void frmFile::tabHalves_Click()
{
    WriteTrace(u"■frmFile.tabHalves_Click");
    const bool isFromTabToTab = tabHalves->hasFocus();
    ArrangeHalves();
    if (isFromTabToTab)
        return;
    if (tabHalves->currentIndex() == 0)
        lstFile->setFocus();
    else
        m_history->FocusRecords();
}

/// Copies files dropped on the window into the folder, selects the first of them and offers to make study files from
/// tables. A table alone needs no question.
void frmFile::lstFile_OLEDragDrop(const QStringList &paths)
{
    WriteTrace(u"■frmFile.lstFile_OLEDragDrop");
    if (IsBlocked(this)) { // by a message that came in between
        constexpr int pauseMs = 100;
        QTimer::singleShot(pauseMs, this, [this, paths] { lstFile_OLEDragDrop(paths); });
        return;
    }
    if (paths.size() == 1 && IsTable(paths.front()) && QFileInfo(paths.front()).isFile()) {
        MakeFromTable(paths.front());
        return;
    }
    FilesToTake files = SortFilesToTake(paths, m_folder.Path());
    if (!files.replaced.isEmpty()) {
        const MsgResult answer = m_msg.Ask(this, ReplaceTakenQuestion(files.replaced));
        if (answer == MsgResult::None)
            return;
        if (answer != MsgResult::Ok)
            files.declined.swap(files.replaced);
    }
    FileTaking taking(files.fresh + files.replaced, m_folder.Path());
    frmWait(u"コピーしています。"_s, this).Run(taking);
    ListFiles();
    const auto isStudyFile = [](const QString &name) { return name.endsWith(u".txt", Qt::CaseInsensitive); };
    const auto copied = std::ranges::find_if(taking.Copied(), isStudyFile);
    if (copied != taking.Copied().end())
        SelectNew(*copied);
    const bool hasTables = !files.tables.isEmpty();
    const bool isAllDone = !files.LeavesOut() && taking.Failures().isEmpty() && taking.Left().isEmpty();
    const MsgResult answer =
        m_msg.DispFrmMsg(this, TakenMessage(files, taking), hasTables ? MsgStyle::YesNo : MsgStyle::Ok,
                         isAllDone ? u"start.wav"_s : u"notify.wav"_s);
    for (qsizetype i = 0; answer == MsgResult::Ok && i < files.tables.size(); ++i)
        if (!MakeFromTable(files.tables[i]))
            break;
}

/// Lists the folder again and keeps the selection of files that still exist.
void frmFile::ListFiles()
{
    const QStringList selected = SelectedNames();
    const QString current = lstFile->currentIndex().data().toString();
    const int scrolledTo = lstFile->verticalScrollBar()->value();
    if (m_watcher->directories().isEmpty())
        m_watcher->addPath(m_folder.Path());
    m_files->Refresh(m_services.Now().date());
    ShowEmptyList();
    SelectNames(selected, current);
    lstFile->verticalScrollBar()->setValue(scrolledTo);
}

void frmFile::RefreshWhenShown()
{
    if (isVisible())
        ListFiles();
}

/// Reads for a few milliseconds, but not before the visible history is complete.
void frmFile::ReadTallies()
{
    constexpr int sliceMs = 2;
    constexpr int pauseMs = 100; // while the history is read, which may itself wait for an answer
    m_tallying->setInterval(m_history->IsReading() ? pauseMs : 0);
    if (m_history->IsReading())
        return;
    constexpr int msBetweenUpdates = 200;
    const bool isMore = m_tallies.ReadNext(QDeadlineTimer(sliceMs, Qt::PreciseTimer));
    if (!isMore)
        m_tallying->stop();
    if (!isMore || m_sinceTallied.hasExpired(msBetweenUpdates))
        ShowTallies();
}

/// Shows what has been read of the record by now.
void frmFile::ShowTallies()
{
    const QDate today = m_services.Now().date();
    m_files->ShowTallies();
    lblReward->Show(RewardOf(m_tallies, m_ended, today));
    HardByTitle hardByTitle;
    for (const QString &name : m_folder.Names())
        hardByTitle.insert(RecordedTitle(m_folder.PathOf(name)), m_files->HardCount(name));
    if (m_files->IndexOf(HardNoteTitle.toString()).isValid())
        hardByTitle.insert(HardNoteTitle.toString(), 0);
    m_history->ShowTallies(hardByTitle);
    m_sinceTallied.start();
}

/// Studies the file whose sessions have a title in the record.
void frmFile::StudyTitle(const QString &title)
{
    if (title == HardNoteTitle && m_files->IndexOf(title).isValid()) {
        Select(title);
        cmdSelect_Click();
        return;
    }
    const auto hasTitle = [&](const QString &name) { return RecordedTitle(m_folder.PathOf(name)) == title; };
    const auto name = std::ranges::find_if(m_folder.Names(), hasTitle);
    if (name == m_folder.Names().end()) {
        m_msg.Refuse(this, u"この学習ファイルは，フォルダにありません。\r\n    "_s + NameInLine(title));
        return;
    }
    SelectNew(*name);
    cmdSelect_Click();
}

/// How the page looks, as last saved.
Settings frmFile::PageSettings() const
{
    QStringList repairs; // told by the study window
    return m_settings.Read(DefaultSettings(), UpperBounds(std::numeric_limits<int>::max()), &repairs);
}

void frmFile::WriteFile(const QString &path)
{
    if (frmWrite(m_services, m_msg, PageSettings(), m_editor.applicationFolder, this).Edit(path))
        ListFiles();
}

void frmFile::WriteNew(const QString &pasted)
{
    const QString name = frmWrite(m_services, m_msg, PageSettings(), m_editor.applicationFolder, this).WriteNew(pasted);
    ListFiles();
    if (!name.isEmpty())
        SelectNew(name);
    lstFile->setFocus();
}

/// @return whether a study file was made
bool frmFile::MakeFromTable(const QString &tablePath)
{
    frmTable table(m_msg, m_folder.Path(), this);
    const QString name = table.Make(tablePath);
    ListFiles();
    if (!name.isEmpty())
        SelectNew(name);
    if (table.IsToBeWritten())
        WriteFile(m_folder.PathOf(name));
    lstFile->setFocus(); // Enter then opens the file
    return !name.isEmpty();
}

/// Selects a new file, clearing a filter that would hide it.
void frmFile::SelectNew(const QString &name)
{
    if (!m_files->IndexOf(name).isValid())
        txtFilter->clear();
    Select(name);
}

void frmFile::Select(const QString &name)
{
    lstFile->setCurrentIndex(m_files->IndexOf(name));
    ShowCommands();
}

/// Selects files that exist, and puts the cursor on one of them.
void frmFile::SelectNames(const QStringList &names, const QString &current)
{
    if (names.size() <= 1) {
        Select(names.value(0));
        return;
    }
    QItemSelection selection;
    for (const QString &name : names)
        if (const QModelIndex row = m_files->IndexOf(name); row.isValid())
            selection.select(row, row);
    lstFile->selectionModel()->select(selection, QItemSelectionModel::ClearAndSelect);
    lstFile->selectionModel()->setCurrentIndex(m_files->IndexOf(current), QItemSelectionModel::NoUpdate);
    ShowCommands();
}

/// After a file was refused, puts the focus on what can mend it.
void frmFile::GoToMend(const QString &name)
{
    if (name == HardNoteTitle)
        return;
    m_folder.Check(name);
    m_files->ShowTallies(); // and the commands
    if (IsByMending(m_folder.Facts(name).remedy))
        (m_mend.button->isVisible() ? m_mend.button : cmdOthers)->setFocus();
}

/// Shows the commands that are possible. Also called after each check, because the facts about the selected file are
/// unknown until then.
void frmFile::ShowCommands()
{
    const bool isNarrow = IsNarrow();
    const auto show = [isNarrow](const Command &command, bool isPossible) {
        command.button->setVisible(isPossible && !isNarrow);
        command.inMenu->setVisible(isPossible && isNarrow);
    };
    const QStringList names = SelectedNames();
    const bool areSeveral = names.size() > 1;
    const StudyFileFacts facts = m_folder.Facts(SelectedName());
    const bool canMend = std::ranges::any_of(names, [&](const QString &name) {
        return IsByMending(m_folder.Facts(name).remedy) ||
               (areSeveral && name != HardNoteTitle && !m_folder.IsChecked(name));
    });
    show(m_edit, true);
    show(m_write, true);
    show(m_print, areSeveral || facts.canBeOpened || !IsByMending(facts.remedy)); // a refused file cannot be printed
    show(m_mend, canMend);
    const bool isMendAtBottom = isNarrow && canMend && HasRoomAtBottom();
    if (isMendAtBottom) {
        m_mend.button->show();
        m_mend.inMenu->setVisible(false);
    }
    if (canMend && !m_print.button->isHidden() && !HasRoomBelowList()) {
        m_print.button->hide(); // a wider row would move everything beside it
        m_print.inMenu->setVisible(true);
    }
    lblNote->SetText(areSeveral ? SelectionNote(names.size()) : canMend ? MendNote(facts) : FolderNote(m_folder));
    lblNote->setVisible(!isNarrow || (canMend && !isMendAtBottom) || m_folder.UnshowableCount() > 0);
}

void frmFile::ShowEmptyList()
{
    const bool isEmpty = !m_files->FirstFile().isValid();
    lblEmpty->setText(EmptyListText(m_folder, txtFilter->text()));
    lblEmpty->setVisible(isEmpty);
    cmdMakeFirst->setVisible(isEmpty && m_folder.Names().isEmpty());
}

/// In the order of the list.
QStringList frmFile::SelectedNames() const
{
    QModelIndexList selected = lstFile->selectionModel()->selectedIndexes();
    std::sort(selected.begin(), selected.end());
    QStringList names;
    for (const QModelIndex &row : std::as_const(selected))
        names += row.data(Qt::DisplayRole).toString();
    return names;
}

/// Empty unless a single row is selected.
QString frmFile::SelectedName() const
{
    const QStringList names = SelectedNames();
    return names.size() == 1 ? names.front() : QString();
}

/// Full path of the selected file; empty after telling the user why the command does not apply to it.
QString frmFile::TakeSelection(bool isForPrinting)
{
    const QString name = SelectedName();
    const QString refusal = SelectionRefusal(name, isForPrinting);
    if (refusal.isEmpty())
        return m_folder.PathOf(name);
    m_msg.Refuse(this, refusal);
    return QString();
}

/// The same for commands that also apply to the note of hard words, which is made afresh; empty if it cannot be.
QString frmFile::TakeSelectionOrNote()
{
    m_chosenNote.reset();
    return SelectedName() == HardNoteTitle ? TakeSelections(true).value(0) : TakeSelection();
}

/// Full paths of all selected files, for commands that apply to several; empty after telling the user why there are
/// none.
/// @param areNotesTaken  whether the note of hard words is one of them, which is made afresh; it is left out otherwise
QStringList frmFile::TakeSelections(bool areNotesTaken)
{
    QStringList paths;
    bool isTold = false;
    for (const QString &name : SelectedNames()) {
        if (name != HardNoteTitle) {
            paths += m_folder.PathOf(name);
        } else if (areNotesTaken) {
            CallAfterShown(); // may have marks to save
            m_chosenNote = MakeHardNote(m_msg, this, m_marks, m_folder.Path(), m_reportFolder);
            if (m_chosenNote)
                paths += HardNotePath(m_reportFolder);
            isTold = !m_chosenNote;
        }
    }
    if (paths.isEmpty() && !isTold)
        m_msg.Refuse(this, SelectionRefusal(QString(), false));
    return paths;
}

void frmFile::Leave(FileChoice choice)
{
    m_choice = choice;
    hide();
}
