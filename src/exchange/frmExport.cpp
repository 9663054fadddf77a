// SPDX-FileCopyrightText: 2026 The Kotoban developers
// SPDX-License-Identifier: MIT

#include "exchange/frmExport.h"

#include "base/modLog.h"
#include "records/modHardNote.h"
#include "widgets/ElidedLabel.h"
#include "widgets/frmMsg.h"
#include "widgets/frmWait.h"

#include <QCheckBox>
#include <QFileInfo>
#include <QRadioButton>
#include <QVBoxLayout>

#include <algorithm>
#include <memory>
#include <tuple>

using namespace Qt::Literals::StringLiterals;

frmExport::frmExport(SystemServices &services, frmMsg &msg, const MarkList &marks, const QString &reportFolder,
                     QWidget *owner)
    : CommandWindow(u"frmExport"_s, msg, owner), m_services(services), m_marks(marks), m_reportFolder(reportFolder),
      lblFile(AddFileLine(u"ファイル："_s, u"lblFile"_s, 40))
{
    Form_Load();
}

void frmExport::Form_Load()
{
    WriteTrace(u"■frmExport.Form_Load");
    setWindowTitle(u"書き出す"_s);
    QVBoxLayout *const column = Column();
    AddHead(u"lblKind"_s, u"形式"_s);
    optText =
        AddChoice<QRadioButton>(u"optText"_s, u"テキスト（UTF-8）(&T)"_s, u"UTF-8のテキストファイルにします (Alt+T)"_s,
                                u"[ ]の付いたままの文を，ほかのソフトで読めるようにします。"_s);
    optAnki = AddChoice<QRadioButton>(u"optAnki"_s, u"Anki(&A)"_s, u"Ankiで読み込むファイルにします (Alt+A)"_s,
                                      u"空欄のある行を1行ずつ，穴埋め（Cloze）のノートにします。"_s);
    optCsv = AddChoice<QRadioButton>(u"optCsv"_s, u"CSV（表）(&C)"_s, u"Excelなどで開く表にします (Alt+C)"_s,
                                     u"空欄ごとに，行番号，前の文，正解，後の文を並べた表にします。"_s);
    chkOnlyHard = AddChoice<QCheckBox>(u"chkOnlyHard"_s, u"苦手だけ(&N)"_s,
                                       u"苦手の印のある空欄だけを，AnkiかCSVに書き出します (Alt+N)"_s,
                                       u"苦手の印のある空欄だけにします（AnkiとCSV）。"_s);
    column->addStretch();
    optText->setChecked(true);
    for (QRadioButton *const choice : {optText, optAnki, optCsv})
        connect(choice, &QRadioButton::toggled, this, &frmExport::optKind_Click);
    AddAnswers(u"書き出す(&W)"_s, u"ファイルを書き出し，フォルダを開きます (Enter)"_s, u"書き出さずに戻ります (Esc)"_s);
}

void frmExport::Run(const QStringList &studyFilePaths)
{
    m_studyFilePaths = studyFilePaths;
    lblFile->SetText(NameOfFiles(studyFilePaths));
    m_hasHard = std::ranges::any_of(studyFilePaths, [this](const QString &path) {
        return !IsHardNotePath(path) && m_marks.HasEntries(GetFileTitle(path));
    });
    chkOnlyHard->setChecked(false);
    optKind_Click();
    (optText->isChecked() ? optText : optAnki->isChecked() ? optAnki : optCsv)->setFocus();
    exec();
}

void frmExport::optKind_Click()
{
    WriteTrace(u"■frmExport.optKind_Click");
    chkOnlyHard->setEnabled(m_hasHard && !optText->isChecked());
}

void frmExport::cmdOK_Click()
{
    WriteTrace(u"■frmExport.cmdOK_Click");
    if (!(m_studyFilePaths.size() == 1 ? ExportOne() : ExportSeveral()))
        return;
    accept();
    if (!m_services.OpenWithShell(m_reportFolder, u"c:\\"_s))
        m_services.ShowMessage(u"次のフォルダを開けません。\r\n  "_s + m_reportFolder);
}

ExportKind frmExport::ChosenKind() const
{
    return optText->isChecked() ? ExportKind::Text : optAnki->isChecked() ? ExportKind::Anki : ExportKind::Csv;
}

/// @return false if nothing was written; the user knows why
bool frmExport::ExportOne()
{
    const QString path = ExportPath(m_reportFolder, m_studyFilePaths.front(), ChosenKind());
    StudyExport made;
    if (!Read(m_studyFilePaths.front(), &made) || (QFileInfo(path).isFile() && !Agrees(ReplaceExportQuestion(path))))
        return false;
    PieceFile file(path, made);
    if (!frmWait(u"書き出しています。"_s, this).Run(file) || !IsWritten(file))
        return false;
    m_msg.DispFrmMsg(this, ExportedMessage(path, made.Undecodable()), MsgStyle::Ok, u"start.wav"_s);
    return true;
}

/// @return false if nothing was written; the user knows why
bool frmExport::ExportSeveral()
{
    QStringList existing;
    QStringList fresh; // study files without one
    for (const QString &path : m_studyFilePaths) {
        const QFileInfo exported(ExportPath(m_reportFolder, path, ChosenKind()));
        if (exported.isFile())
            existing += exported.fileName();
        else
            fresh += path;
    }
    const MsgResult answer = existing.isEmpty() ? MsgResult::Ok : m_msg.Ask(this, ReplaceExportsQuestion(existing));
    if (answer == MsgResult::None)
        return false;
    const bool isReplacing = answer == MsgResult::Ok;
    const auto begin = [this](const QString &path) -> frmWait::Slice {
        const auto made = std::make_shared<StudyExport>();
        if (!Read(path, made.get()))
            return nullptr;
        const auto file = std::make_shared<PieceFile>(ExportPath(m_reportFolder, path, ChosenKind()), *made);
        return [this, made, file](const QDeadlineTimer &deadline) {
            if (file->GoOn(deadline))
                return true;
            std::ignore = IsWritten(*file);
            return false;
        };
    };
    DoneFiles files = CarryOutForEach(u"書き出しています。"_s, isReplacing ? m_studyFilePaths : fresh, begin);
    if (!isReplacing)
        files.kept = existing;
    m_msg.DispFrmMsg(this, DoneFilesMessage(u"書き出し"_s, files), MsgStyle::Ok,
                     files.IsAllDone() ? u"start.wav"_s : u"notify.wav"_s);
    return !files.done.isEmpty();
}

/// @return false if there is nothing to export; the user knows why
bool frmExport::Read(const QString &studyFilePath, StudyExport *made)
{
    const QString title = QFileInfo(studyFilePath).completeBaseName();
    const bool isOnlyHard =
        chkOnlyHard->isEnabled() && chkOnlyHard->isChecked() && !IsHardNotePath(studyFilePath); // whose are all hard
    if (const TextRefusal refusal = made->Read(studyFilePath, ChosenKind(), isOnlyHard ? &m_marks : nullptr))
        return Refuse(refusal.message);
    return made->HasContent() || Refuse(isOnlyHard ? NoHardBlankMessage(title) : NoBlankToExportMessage(title));
}

/// @return false after a fault, which the user knows then
bool frmExport::IsWritten(const PieceFile &file)
{
    return !file.Fault() || Refuse(FaultMessage(u"書き出したファイルを書き込めません。"_s, file.Fault()));
}
