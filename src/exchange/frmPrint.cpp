// SPDX-FileCopyrightText: 2026 The Kotoban developers
// SPDX-License-Identifier: MIT

#include "exchange/frmPrint.h"

#include "base/modLog.h"
#include "exchange/modPrintSheet.h"
#include "records/modHardNote.h"
#include "settings/modSettings.h"
#include "widgets/ElidedLabel.h"
#include "widgets/NamedControls.h"
#include "widgets/frmMsg.h"
#include "widgets/frmWait.h"

#include <QCheckBox>
#include <QFileInfo>
#include <QLabel>
#include <QVBoxLayout>

#include <tuple>

using namespace Qt::Literals::StringLiterals;

frmPrint::frmPrint(SystemServices &services, frmMsg &msg, const SettingsFile &settings, const MarkList &marks,
                   const QString &reportFolder, QWidget *owner)
    : CommandWindow(u"frmPrint"_s, msg, owner), m_services(services), m_settings(settings), m_marks(marks),
      m_reportFolder(reportFolder), lblFile(AddFileLine(u"ファイル："_s, u"lblFile"_s, 40))
{
    Form_Load();
}

void frmPrint::Form_Load()
{
    WriteTrace(u"■frmPrint.Form_Load");
    setWindowTitle(u"印刷"_s);
    Column()->addWidget(NamedLabel(u"lblHow"_s,
                                   u"空欄を下線にしたA4のページをブラウザで開きます。\n"
                                   u"そこで Ctrl+P を押すと，印刷やPDFへの保存ができます。"_s,
                                   this));
    AddHead(u"lblContent"_s, u"内容"_s);
    chkAnswers = AddChoice<QCheckBox>(u"chkAnswers"_s, u"正解を付ける(&A)"_s,
                                      u"番号を付けた正解を，最後のページに印刷します (Alt+A)"_s,
                                      u"番号を付けた正解を，最後のページに印刷します。"_s);
    chkOnlyHard = AddChoice<QCheckBox>(u"chkOnlyHard"_s, u"苦手だけ(&N)"_s,
                                       u"苦手の印のある空欄と，その行だけを印刷します (Alt+N)"_s,
                                       u"苦手の印のある空欄と，その行だけを印刷します。"_s);
    Column()->addStretch();
    AddAnswers(u"印刷ページを開く(&P)"_s, u"印刷するページをブラウザで開きます (Enter)"_s,
               u"印刷せずに戻ります (Esc)"_s);
}

void frmPrint::Run(const QString &studyFilePath)
{
    m_studyFilePath = studyFilePath;
    lblFile->SetText(QFileInfo(studyFilePath).fileName());
    chkAnswers->setChecked(m_settings.ReadPrintAnswers());
    chkOnlyHard->setChecked(false);
    chkOnlyHard->setEnabled(!IsHardNotePath(studyFilePath) && m_marks.HasEntries(GetFileTitle(studyFilePath)));
    chkAnswers->setFocus();
    exec();
}

void frmPrint::cmdOK_Click()
{
    WriteTrace(u"■frmPrint.cmdOK_Click");
    const QString path = PrintSheetPath(m_reportFolder, m_studyFilePath);
    if (!Write(path))
        return;
    // Failing to store the choice does not stop the printing.
    if (chkAnswers->isChecked() != m_settings.ReadPrintAnswers())
        std::ignore = m_settings.WritePrintAnswers(chkAnswers->isChecked());
    m_msg.PlayNamedSound(u"start.wav"_s);
    accept();
    if (!m_services.OpenWithShell(path, m_reportFolder))
        m_services.ShowMessage(SheetNotOpenedMessage(path));
}

/// @return false if nothing was written; the user knows why
bool frmPrint::Write(const QString &sheetPath)
{
    PrintSheet sheet;
    if (const TextRefusal refusal = sheet.Read(m_studyFilePath, sheetPath, chkAnswers->isChecked(),
                                               chkOnlyHard->isChecked() ? &m_marks : nullptr))
        return Refuse(refusal.message);
    if (chkOnlyHard->isChecked() && sheet.BlankCount() == 0)
        return Refuse(NoHardBlankMessage(QFileInfo(m_studyFilePath).completeBaseName()));
    if (sheet.BlankCount() > MostBlanksUnasked && !Agrees(ManyPagesQuestion(sheet)))
        return false;
    PieceFile file(sheetPath, sheet);
    if (!frmWait(u"印刷ページを作っています。"_s, this).Run(file))
        return false;
    return !file.Fault() || Refuse(FaultMessage(u"印刷ページを書き込めません。"_s, file.Fault()));
}
