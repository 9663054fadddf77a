// SPDX-FileCopyrightText: 2026 The Kotoban developers
// SPDX-License-Identifier: MIT

#include "exchange/frmPrint.h"

#include "base/modLog.h"
#include "exchange/modPrintSheet.h"
#include "records/modMarkList.h"
#include "settings/modSettings.h"
#include "widgets/ElidedLabel.h"
#include "widgets/NamedControls.h"
#include "widgets/ScreenFit.h"
#include "widgets/frmMsg.h"
#include "widgets/frmWait.h"

#include <QCheckBox>
#include <QFileInfo>
#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>

using namespace Qt::Literals::StringLiterals;

namespace {

constexpr int MaxNameChars = 40; // longer file names are elided rather than widening the window

QString FileLine(const QString &name)
{
    return u"ファイル："_s + name;
}

} // namespace

frmPrint::frmPrint(SystemServices &services, frmMsg &msg, const SettingsFile &settings, const MarkList &marks,
                   const QString &reportFolder, QWidget *owner)
    : QDialog(owner), m_services(services), m_msg(msg), m_settings(settings), m_marks(marks),
      m_reportFolder(reportFolder), lblFile(new ElidedLabel(u"lblFile"_s, MaxNameChars, this)),
      chkAnswers(new QCheckBox(u"解答を付ける(&A)"_s, this)), chkOnlyHard(new QCheckBox(u"苦手だけ(&N)"_s, this))
{
    setObjectName(u"frmPrint"_s);
    Form_Load();
}

void frmPrint::Form_Load()
{
    WriteTrace(u"■frmPrint.Form_Load");
    setWindowTitle(u"印刷"_s);
    AddControls();
}

void frmPrint::AddControls()
{
    chkAnswers->setObjectName(u"chkAnswers"_s);
    chkAnswers->setToolTip(u"番号を付けた解答を，最後のページに印刷します (Alt+A)"_s);
    chkOnlyHard->setObjectName(u"chkOnlyHard"_s);
    chkOnlyHard->setToolTip(u"苦手の印のある空欄と，その行だけを印刷します (Alt+N)"_s);
    auto *const content = new QWidget(this);
    content->setObjectName(u"content"_s);
    auto *const column = new QVBoxLayout(content);
    lblFile->SetText(FileLine(QString(MaxNameChars, u'n'))); // sizes the window for names of any length
    column->addWidget(lblFile);
    column->addWidget(NamedLabel(u"lblHow"_s,
                                 u"空欄を下線にしたA4のページをブラウザで開きます。\n"
                                 u"そこで Ctrl+P を押すと，印刷やPDFへの保存ができます。"_s,
                                 this));
    column->addSpacing(fontMetrics().lineSpacing() / 2);
    column->addWidget(chkAnswers);
    column->addWidget(chkOnlyHard);
    column->addStretch();
    column->addSpacing(fontMetrics().lineSpacing() / 2);
    column->addLayout(Buttons());
    FitToScreen(this, content);
}

QLayout *frmPrint::Buttons()
{
    QPushButton *const cmdOK = AddButton(this, u"cmdOK"_s, u"印刷ページを開く(&P)"_s,
                                         u"印刷するページをブラウザで開きます (Enter)"_s, &frmPrint::cmdOK_Click);
    QPushButton *const cmdCancel =
        AddButton(this, u"cmdCancel"_s, u"キャンセル"_s, u"印刷せずに戻ります (Esc)"_s, &frmPrint::cmdCancel_Click);
    return AnswerRow(cmdOK, cmdCancel);
}

void frmPrint::Run(const QString &studyFilePath)
{
    m_studyFilePath = studyFilePath;
    lblFile->SetText(FileLine(QFileInfo(studyFilePath).fileName()));
    chkAnswers->setChecked(m_settings.ReadPrintAnswers());
    chkOnlyHard->setChecked(false);
    chkOnlyHard->setEnabled(!m_marks.FindInFile(studyFilePath).empty());
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
        m_settings.WritePrintAnswers(chkAnswers->isChecked());
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
    if (sheet.BlankCount() > MostBlanksUnasked &&
        m_msg.DispFrmMsg(this, ManyPagesQuestion(sheet), MsgStyle::YesNo, u"notify.wav"_s) != MsgResult::Ok)
        return false;
    PieceFile file(sheetPath, sheet);
    frmWait wait(u"印刷ページを作っています。"_s, this);
    if (!wait.Run([&file](const QDeadlineTimer &deadline) { return file.GoOn(deadline); },
                  [&sheet] { return sheet.Done(); }))
        return false;
    return !file.Fault() || Refuse(SheetNotWrittenMessage(file.Fault()));
}

/// @return always false, for callers to return
bool frmPrint::Refuse(const QString &message)
{
    m_msg.DispFrmMsg(this, message, MsgStyle::Ok, u"notify.wav"_s);
    return false;
}

void frmPrint::cmdCancel_Click()
{
    WriteTrace(u"■frmPrint.cmdCancel_Click");
    reject();
}
