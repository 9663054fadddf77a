// SPDX-FileCopyrightText: 2026 The Kotoban developers
// SPDX-License-Identifier: MIT

#include "exchange/frmMend.h"

#include "base/modLog.h"
#include "text/modCheckText.h"
#include "widgets/ElidedLabel.h"
#include "widgets/Measures.h"
#include "widgets/NamedControls.h"

#include <QButtonGroup>
#include <QCheckBox>
#include <QPlainTextEdit>
#include <QRadioButton>
#include <QVBoxLayout>

using namespace Qt::Literals::StringLiterals;

frmMend::frmMend(frmMsg &msg, bool isOfTable, QWidget *owner)
    : CommandWindow(u"frmMend"_s, msg, owner), m_isOfTable(isOfTable),
      lblFile(AddFileLine(u"ファイル："_s, u"lblFile"_s, 50)), txtFaults(new QPlainTextEdit(this))
{
    Form_Load();
}

void frmMend::Form_Load()
{
    WriteTrace(u"■frmMend.Form_Load");
    setWindowTitle(m_isOfTable ? u"表から学習ファイルを作る"_s : u"ファイルを直す"_s);
    NameControl(txtFaults, u"txtFaults"_s, u"直す所"_s, u"このままでは学習ファイルにならない所です (Alt+F)"_s);
    txtFaults->setReadOnly(true);
    txtFaults->setTabChangesFocus(true);
    txtFaults->setMinimumHeight(4 * fontMetrics().lineSpacing());
    Column()->addWidget(LabelOf(txtFaults, u"lblFaults"_s, u"直す所(&F)："_s));
    Column()->addWidget(txtFaults, 1);
}

bool frmMend::Choose(const QString &name, const TextFaults &faults, TextChoices *choices)
{
    lblFile->SetText(name);
    txtFaults->setPlainText(faults.entries.join(u'\n') + (faults.areMore ? u"\nほかにもあります。"_s : QString()));
    AddEncodings(faults, choices->keepsKana);
    AddCharacters(faults);
    AddLines(faults);
    const QSize wanted(Ems(fontMetrics(), 44), 0);
    if (m_isOfTable)
        AddAnswers(u"作る(&M)"_s, u"学習ファイルを作ります (Enter)"_s, u"作らずに戻ります (Esc)"_s, nullptr, wanted);
    else
        AddAnswers(u"直す(&M)"_s, u"ファイルを直し，元のファイルを .bak として残します (Enter)"_s,
                   u"直さずに戻ります (Esc)"_s, nullptr, wanted);
    cmdOK->setFocus();
    if (exec() != Accepted)
        return false;
    *choices = Chosen();
    return true;
}

/// Which of two encodings is right only the user can tell.
void frmMend::AddEncodings(const TextFaults &faults, bool keepsKana)
{
    if (faults.asEuc.isEmpty())
        return;
    AddHead(u"lblCode"_s, u"文字コード（EUCともShift_JISとも読めます）"_s);
    optEuc = AddChoice<QRadioButton>(u"optEuc"_s, u"EUC(&E)"_s, u"EUCとして読み，Shift_JISに変換します (Alt+E)"_s,
                                     faults.asEuc);
    optKana = AddChoice<QRadioButton>(u"optKana"_s, u"Shift_JIS(&K)"_s,
                                      u"変換せず，そのまま開く方法を説明します (Alt+K)"_s, faults.asShiftJis);
    auto *const group = new QButtonGroup(this);
    group->addButton(optEuc);
    group->addButton(optKana);
    (keepsKana ? optKana : optEuc)->setChecked(true);
}

void frmMend::AddCharacters(const TextFaults &faults)
{
    m_hasUnwritable = faults.unwritable > 0;
    if (faults.accents > 0) {
        chkAccents =
            AddChoice<QCheckBox>(u"chkAccents"_s, u"アクセント記号を除く(&A)"_s, u"é を e のようにします (Alt+A)"_s,
                                 u"é を e のようにします。"_s + QString::number(faults.accents) + u"個あります。"_s);
        chkAccents->setChecked(true);
        connect(chkAccents, &QCheckBox::clicked, this, &frmMend::chkAccents_Click);
    }
    if (faults.accents + faults.unwritable == 0)
        return;
    AddHead(u"lblUnwritable"_s, m_hasUnwritable ? QString(u"絵文字などShift_JISにない文字　"_s +
                                                          QString::number(faults.unwritable) + u"個"_s)
                                                : u"アクセント記号を除かないとき"_s);
    optRemove = AddChoice<QRadioButton>(u"optRemove"_s, u"除く(&R)"_s, u"Shift_JISにない文字を除きます (Alt+R)"_s);
    optGeta = AddChoice<QRadioButton>(u"optGeta"_s, u"〓 にする(&G)"_s, u"Shift_JISにない文字を〓にします (Alt+G)"_s);
    auto *const group = new QButtonGroup(this);
    group->addButton(optRemove);
    group->addButton(optGeta);
    if (m_isOfTable) {
        optLeaveOut = AddChoice<QRadioButton>(u"optLeaveOut"_s, u"その行を入れない(&L)"_s,
                                              u"Shift_JISにない文字のある行を，学習ファイルに入れません (Alt+L)"_s);
        group->addButton(optLeaveOut);
    }
    optRemove->setChecked(true);
    chkAccents_Click();
}

void frmMend::AddLines(const TextFaults &faults)
{
    if (faults.brackets > 0) {
        chkBrackets = AddChoice<QCheckBox>(
            u"chkBrackets"_s, u"全角の［ ］を半角にする(&B)"_s, u"全角の［ ］の中も空欄にします (Alt+B)"_s,
            u"空欄になります。"_s + QString::number(faults.brackets) + u"組あります。"_s);
        chkBrackets->setChecked(true);
    }
    if (faults.longLines > 0) {
        const QString limit = QString::number(MaxLineBytes);
        chkLines = AddChoice<QCheckBox>(u"chkLines"_s, u"長い行に改行を入れる(&N)"_s,
                                        u"空白か「、」「。」「，」「．」の後，なければ[ ]の前後で改行します (Alt+N)"_s,
                                        limit + u"バイトを超える行が"_s + QString::number(faults.longLines) +
                                            u"行あります。"_s);
        chkLines->setChecked(true);
    }
}

/// With their accents, letters are characters that Shift_JIS lacks.
void frmMend::chkAccents_Click()
{
    WriteTrace(u"■frmMend.chkAccents_Click");
    const bool areLeft = m_hasUnwritable || (chkAccents && !chkAccents->isChecked());
    for (QRadioButton *const choice : {optRemove, optGeta, optLeaveOut})
        if (choice)
            choice->setEnabled(areLeft);
}

void frmMend::cmdOK_Click()
{
    WriteTrace(u"■frmMend.cmdOK_Click");
    accept();
}

TextChoices frmMend::Chosen() const
{
    const auto isChecked = [](const QAbstractButton *choice) { return !choice || choice->isChecked(); };
    TextChoices choices;
    choices.keepsKana = optKana && optKana->isChecked();
    choices.accents = isChecked(chkAccents) ? Accents::Remove : Accents::Keep;
    choices.rest = isChecked(optRemove)   ? WithoutEquivalent::Remove
                   : optGeta->isChecked() ? WithoutEquivalent::Geta
                                          : WithoutEquivalent::Keep;
    choices.halvesBrackets = isChecked(chkBrackets);
    choices.breaksLines = isChecked(chkLines);
    return choices;
}
