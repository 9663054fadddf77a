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
#include <QComboBox>
#include <QFileInfo>
#include <QGridLayout>
#include <QLabel>
#include <QVBoxLayout>

#include <algorithm>
#include <memory>
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
    chkTeacher = AddChoice<QCheckBox>(u"chkTeacher"_s, u"先生用(&T)"_s, u"正解を赤で，空欄の所に印刷します (Alt+T)"_s,
                                      u"正解を赤で，空欄の所に印刷します。"_s);
    chkOnlyHard = AddChoice<QCheckBox>(u"chkOnlyHard"_s, u"苦手だけ(&N)"_s,
                                       u"苦手の印のある空欄と，その行だけを印刷します (Alt+N)"_s,
                                       u"苦手の印のある空欄と，その行だけを印刷します。"_s);
    AddHead(u"lblForm"_s, u"用紙"_s);
    Column()->addLayout(FormOfSheet());
    Column()->addStretch();
    AddAnswers(u"印刷ページを開く(&P)"_s, u"印刷するページをブラウザで開きます (Enter)"_s,
               u"印刷せずに戻ります (Esc)"_s);
}

/// The choices of the sheet's form, two in a row.
QLayout *frmPrint::FormOfSheet()
{
    auto *const grid = new QGridLayout;
    const auto add = [this, grid](const QString &name, const QString &caption, const QString &meaning, QChar key,
                                  const QStringList &items) {
        auto *const choice = new QComboBox(this);
        NameControl(choice, u"cbo"_s + name, caption, meaning + u" (Alt+"_s + key + u')');
        choice->addItems(items);
        const int cell = grid->count() / 2; // each has a label
        grid->addWidget(LabelOf(choice, u"lbl"_s + name, caption + u"(&"_s + key + u")："_s), cell / 2, cell % 2 * 2);
        grid->addWidget(choice, cell / 2, cell % 2 * 2 + 1);
        return choice;
    };
    const auto numbers = [](int first, int last, const QString &unit) {
        QStringList items;
        for (int number = first; number <= last; ++number)
            items += QString::number(number) + unit;
        return items;
    };
    cboBlankWidth = add(u"BlankWidth"_s, u"空欄の幅"_s, u"書き込む下線の長さです"_s, u'W',
                        {u"そのまま"_s, u"2倍"_s, u"同じ幅 25 mm"_s}); // in enum order
    cboLineGap =
        add(u"LineGap"_s, u"行の間"_s, u"行と行の間の広さです"_s, u'L', numbers(MinLineGapMm, MaxLineGapMm, u" mm"_s));
    cboColumns =
        add(u"Columns"_s, u"段組み"_s, u"1ページを何段にするかです"_s, u'D', numbers(1, MaxPrintColumns, u"段"_s));
    cboPoints = add(u"PointSize"_s, u"文字の大きさ"_s, u"印刷する文字の大きさです"_s, u'S',
                    numbers(MinPrintPoints, MaxPrintPoints, u" pt"_s));
    cboEdition =
        add(u"Edition"_s, u"版"_s, u"版Bでは，空欄のある行の順が変わります"_s, u'E', {u"A"_s, u"B（別の順）"_s});
    grid->setColumnStretch(4, 1);
    return grid;
}

void frmPrint::ShowSettings(const PrintSettings &print)
{
    chkAnswers->setChecked(print.withAnswers);
    cboBlankWidth->setCurrentIndex(int(print.blankWidth));
    cboLineGap->setCurrentIndex(print.lineGapMm - MinLineGapMm);
    cboColumns->setCurrentIndex(print.columns - 1);
    cboPoints->setCurrentIndex(print.points - MinPrintPoints);
}

PrintSettings frmPrint::TakeSettings() const
{
    return {.withAnswers = chkAnswers->isChecked(),
            .blankWidth = BlankWidth(cboBlankWidth->currentIndex()),
            .lineGapMm = cboLineGap->currentIndex() + MinLineGapMm,
            .columns = cboColumns->currentIndex() + 1,
            .points = cboPoints->currentIndex() + MinPrintPoints};
}

void frmPrint::Run(const QStringList &studyFilePaths)
{
    m_studyFilePaths = studyFilePaths;
    lblFile->SetText(NameOfFiles(studyFilePaths));
    ShowSettings(m_settings.ReadPrint());
    chkTeacher->setChecked(false);
    cboEdition->setCurrentIndex(0);
    chkOnlyHard->setChecked(false);
    chkOnlyHard->setEnabled(std::ranges::any_of(studyFilePaths, [this](const QString &path) {
        return !IsHardNotePath(path) && m_marks.HasEntries(GetFileTitle(path));
    }));
    chkAnswers->setFocus();
    exec();
}

void frmPrint::cmdOK_Click()
{
    WriteTrace(u"■frmPrint.cmdOK_Click");
    const SheetChoices choices = {.print = TakeSettings(),
                                  .isForTeacher = chkTeacher->isChecked(),
                                  .isEditionB = cboEdition->currentIndex() == 1,
                                  .onlyHard = chkOnlyHard->isChecked() ? &m_marks : nullptr};
    const bool areSeveral = m_studyFilePaths.size() > 1;
    QStringList sheets;
    DoneFiles files;
    if (areSeveral) {
        files = WriteSeveral(choices, &sheets);
    } else {
        sheets += PrintSheetPath(m_reportFolder, m_studyFilePaths.front(), choices);
        if (!WriteOne(sheets.front(), choices))
            return;
    }
    // Failing to store the settings does not stop the printing.
    if (choices.print != m_settings.ReadPrint())
        std::ignore = m_settings.WritePrint(choices.print);
    const QString sound = files.IsAllDone() ? u"start.wav"_s : u"notify.wav"_s;
    if (areSeveral)
        m_msg.DispFrmMsg(this, DoneFilesMessage(u"印刷ページにし"_s, files), MsgStyle::Ok, sound);
    else
        m_msg.PlayNamedSound(sound);
    if (sheets.isEmpty())
        return;
    accept();
    Open(sheets);
}

/// Opens sheets in the browser, or the folder of very many.
void frmPrint::Open(const QStringList &sheetPaths)
{
    constexpr qsizetype mostPages = 10;
    if (sheetPaths.size() > mostPages) {
        if (!m_services.OpenWithShell(m_reportFolder, u"c:\\"_s))
            m_services.ShowMessage(u"次のフォルダを開けません。\r\n  "_s + m_reportFolder);
        return;
    }
    for (const QString &path : sheetPaths)
        if (!m_services.OpenWithShell(path, m_reportFolder))
            return m_services.ShowMessage(SheetNotOpenedMessage(path)); // the others would not open either
}

/// @return false if nothing was written; the user knows why
bool frmPrint::WriteOne(const QString &sheetPath, const SheetChoices &choices)
{
    PrintSheet sheet;
    if (!Read(m_studyFilePaths.front(), sheetPath, choices, &sheet))
        return false;
    if (!frmWait(u"図を探しています。"_s, this)
             .Run([&sheet](const QDeadlineTimer &deadline) { return sheet.LookForPictures(deadline); },
                  [&sheet] { return sheet.Looked(); }))
        return false;
    if (!MayLackPictures(sheet))
        return false;
    PieceFile file(sheetPath, sheet);
    return frmWait(u"印刷ページを作っています。"_s, this).Run(file) && IsWritten(file);
}

/// @param sheetPaths  receives those that were written
DoneFiles frmPrint::WriteSeveral(const SheetChoices &choices, QStringList *sheetPaths)
{
    const auto begin = [&](const QString &studyFilePath) -> frmWait::Slice {
        const QString path = PrintSheetPath(m_reportFolder, studyFilePath, choices);
        const auto sheet = std::make_shared<PrintSheet>();
        if (!Read(studyFilePath, path, choices, sheet.get()))
            return nullptr;
        return [this, path, sheetPaths, sheet,
                file = std::shared_ptr<PieceFile>()](const QDeadlineTimer &deadline) mutable {
            if (!file) {
                if (sheet->LookForPictures(deadline))
                    return true;
                std::ignore = MayLackPictures(*sheet); // only remarked on
                file = std::make_shared<PieceFile>(path, *sheet);
            }
            if (file->GoOn(deadline))
                return true;
            if (IsWritten(*file))
                *sheetPaths += path;
            return false;
        };
    };
    return CarryOutForEach(u"印刷ページを作っています。"_s, m_studyFilePaths, begin);
}

/// @return false if there is nothing to print, or the user does not want so many pages
bool frmPrint::Read(const QString &studyFilePath, const QString &sheetPath, const SheetChoices &choices,
                    PrintSheet *sheet)
{
    if (const TextRefusal refusal = sheet->Read(studyFilePath, sheetPath, choices))
        return Refuse(refusal.message);
    if (choices.onlyHard && sheet->BlankCount() == 0)
        return Refuse(NoHardBlankMessage(QFileInfo(studyFilePath).completeBaseName()));
    return sheet->BlankCount() <= MostBlanksUnasked || Agrees(ManyPagesQuestion(*sheet));
}

bool frmPrint::MayLackPictures(const PrintSheet &sheet)
{
    const MissingPictures &missing = sheet.Missing();
    return missing.count == 0 || Agrees(MissingPicturesQuestion(missing), MissingPicturesRemark(missing));
}

/// @return false after a fault, which the user knows then
bool frmPrint::IsWritten(const PieceFile &file)
{
    return !file.Fault() || Refuse(FaultMessage(u"印刷ページを書き込めません。"_s, file.Fault()));
}
