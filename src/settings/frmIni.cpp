// SPDX-FileCopyrightText: 2026 The Kotoban developers
// SPDX-License-Identifier: MIT

#include "settings/frmIni.h"

#include "base/modCodePage.h"
#include "base/modLog.h"
#include "settings/modEditor.h"
#include "settings/modZoom.h"
#include "widgets/NamedControls.h"
#include "widgets/ScreenFit.h"
#include "widgets/frmMsg.h"

#include <QCheckBox>
#include <QComboBox>
#include <QDir>
#include <QFileDialog>
#include <QFormLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QShowEvent>

#include <algorithm>

using namespace Qt::Literals::StringLiterals;

namespace {

/// A left-aligned row of controls.
QLayout *RowOf(std::initializer_list<QWidget *> controls)
{
    auto *const row = new QHBoxLayout;
    for (QWidget *const control : controls)
        row->addWidget(control);
    row->addStretch();
    return row;
}

} // namespace

frmIni::frmIni(SystemServices &services, frmMsg &msg, const Settings &defaults, const Settings &upper,
               const QString &applicationFolder, QWidget *owner)
    : QDialog(owner), m_services(services), m_msg(msg), m_defaults(defaults), m_upper(upper),
      m_applicationFolder(applicationFolder), cboZoom(new QComboBox(this)), txtLineSpace(new QLineEdit(this)),
      lblLSpaceRange(NamedLabel(u"lblLSpaceRange"_s, LineSpaceRange(defaults, upper), this)),
      txtTextEditor(new QLineEdit(this)),
      lblDesktopEditor(NamedLabel(u"lblDesktopEditor"_s, u"デスクトップのエディタ"_s, this)),
      chkDispLineNum(new QCheckBox(u"行番号を表示する(&N)"_s, this)), cboPageColour(new QComboBox(this)),
      cboWrap(new QComboBox(this))
{
    setObjectName(u"frmIni"_s);
    setWindowTitle(u"設定"_s);
    Form_Load();
}

void frmIni::Form_Load()
{
    WriteTrace(u"■frmIni.Form_Load");
    AddControls();
}

void frmIni::showEvent(QShowEvent *event)
{
    QDialog::showEvent(event);
    if (!event->spontaneous()) // not when it was only minimised
        Form_Activate();
}

// The focus starts on the selected font size, so that the arrow keys change it.
void frmIni::Form_Activate()
{
    WriteTrace(u"■frmIni.Form_Activate");
    const auto chosen = std::ranges::find_if(optFontSize, &QRadioButton::isChecked);
    (chosen == std::end(optFontSize) ? optFontSize[0] : *chosen)->setFocus();
}

void frmIni::AddControls()
{
    const int charPx = fontMetrics().averageCharWidth();
    NameControl(cboZoom, u"cboZoom"_s, u"拡大"_s, u"本文をさらに大きくします (Alt+Z)"_s);
    for (const int percent : ZoomSteps)
        cboZoom->addItem(QString::number(percent) + u" %"_s, percent);
    NameControl(txtLineSpace, u"txtLineSpace"_s, u"行間"_s, u"行と行の間の広さです (Alt+L)"_s);
    txtLineSpace->setMaximumWidth(8 * charPx);
    NameControl(txtTextEditor, u"txtTextEditor"_s, u"テキストエディタ"_s,
                u"学習ファイルを編集するプログラムです (Alt+T)"_s);
    txtTextEditor->setMinimumWidth(40 * charPx);
    txtTextEditor->setMaxLength(LongestSetting);
    connect(txtTextEditor, &QLineEdit::textChanged, this, &frmIni::txtTextEditor_Change);
    chkDispLineNum->setObjectName(u"chkDispLineNum"_s);
    chkDispLineNum->setToolTip(u"本文の左に行番号を表示します (Alt+N)"_s);
    NameControl(cboPageColour, u"cboPageColour"_s, u"画面の色"_s, u"本文の背景と文字の色を選びます (Alt+C)"_s);
    cboPageColour->addItems(
        {u"明るい"_s, u"暗い"_s, u"やわらかい"_s, u"暗い・やわらかい"_s, u"デスクトップに合わせる"_s}); // in enum order
    NameControl(cboWrap, u"cboWrap"_s, u"折り返す"_s, u"ウィンドウより長い行を次の段に続けます (Alt+W)"_s);
    cboWrap->addItem(u"自動"_s, true);
    cboWrap->addItem(u"しない"_s, false);
    for (size_t i = 0; i < FontSizes.size(); ++i) {
        optFontSize[i] = new QRadioButton(FontSizeText(FontSizes[i]), this);
        NameControl(optFontSize[i], u"optFontSize"_s + QString::number(i),
                    u"フォントサイズ "_s + FontSizeText(FontSizes[i]), u"本文の文字の大きさです (Alt+P)"_s);
    }
    QPushButton *const cmdBrowse =
        AddButton(this, u"cmdBrowse"_s, u"参照(&B)..."_s, u"テキストエディタのファイルを選びます (Alt+B)"_s,
                  &frmIni::cmdBrowse_Click);
    QPushButton *const cmdRunEditor =
        AddButton(this, u"cmdRunEditor"_s, u"起動してみる(&R)"_s,
                  u"テキストエディタをファイルなしで起動します (Alt+R)"_s, &frmIni::cmdRunEditor_Click);
    QPushButton *const cmdChangeSetting =
        AddButton(this, u"cmdChangeSetting"_s, u"設定を変更(&S)"_s, u"この設定を使い，保存します (Enter)"_s,
                  &frmIni::cmdChangeSetting_Click);
    QPushButton *const cmdCancel =
        AddButton(this, u"cmdCancel"_s, u"キャンセル"_s, u"変えずに戻ります (Esc)"_s, &frmIni::cmdCancel_Click);
    auto *const content = new QWidget(this);
    auto *const form = new QFormLayout(content);
    form->addRow(LabelOf(optFontSize[0], u"lblFontSize"_s, u"フォントサイズ(&P)："_s),
                 RowOf({optFontSize[0], optFontSize[1], optFontSize[2], NamedLabel(u"lblPoints"_s, u"ポイント"_s, this),
                        LabelOf(cboZoom, u"lblZoom"_s, u"拡大(&Z)："_s), cboZoom}));
    form->addRow(LabelOf(txtLineSpace, u"lblLineSpace"_s, u"行間(&L)："_s),
                 RowOf({txtLineSpace, lblLSpaceRange, NamedLabel(u"lblPixels"_s, u"ピクセル"_s, this)}));
    form->addRow(LabelOf(txtTextEditor, u"lblTextEditor"_s, u"テキストエディタ(&T)："_s), txtTextEditor);
    form->setLayout(3, QFormLayout::FieldRole, RowOf({cmdBrowse, cmdRunEditor, lblDesktopEditor}));
    form->setWidget(4, QFormLayout::FieldRole, chkDispLineNum);
    form->addRow(LabelOf(cboPageColour, u"lblPageColour"_s, u"画面の色(&C)："_s), RowOf({cboPageColour}));
    form->addRow(LabelOf(cboWrap, u"lblWrap"_s, u"折り返す(&W)："_s), RowOf({cboWrap}));
    FitToScreen(this, content, QSize(), AnswerRow(cmdChangeSetting, cmdCancel));
    SetTabOrder({optFontSize[0], optFontSize[1], optFontSize[2], cboZoom, txtLineSpace, txtTextEditor, cmdBrowse,
                 cmdRunEditor, chkDispLineNum, cboPageColour, cboWrap, cmdChangeSetting, cmdCancel});
}

bool frmIni::Edit(Settings *settings)
{
    ShowSettings(*settings);
    if (exec() != QDialog::Accepted)
        return false;
    *settings = TakeSettings(*settings);
    return true;
}

void frmIni::ShowSettings(const Settings &settings)
{
    for (size_t i = 0; i < FontSizes.size(); ++i)
        optFontSize[i]->setChecked(settings.FontSize == FontSizes[i]);
    cboZoom->setCurrentIndex(cboZoom->findData(settings.zoom));
    txtLineSpace->setText(QString::number(settings.LineSpace));
    txtTextEditor->setText(settings.TextEditor);
    chkDispLineNum->setChecked(settings.bolDispLineNum);
    cboPageColour->setCurrentIndex(int(settings.pageColour));
    cboWrap->setCurrentIndex(cboWrap->findData(settings.isWrapping));
}

Settings frmIni::TakeSettings(const Settings &before) const
{
    Settings settings = before;
    settings.FontSize = optFontSize[0]->isChecked()   ? FontSizes[0]
                        : optFontSize[1]->isChecked() ? FontSizes[1]
                                                      : FontSizes[2];
    settings.zoom = cboZoom->currentData().toInt();
    settings.LineSpace = txtLineSpace->text().toInt();
    settings.TextEditor = txtTextEditor->text();
    settings.bolDispLineNum = chkDispLineNum->isChecked();
    settings.pageColour = PageColourChoice(cboPageColour->currentIndex());
    settings.isWrapping = cboWrap->currentData().toBool();
    return settings;
}

void frmIni::txtTextEditor_Change()
{
    WriteTrace(u"■frmIni.txtTextEditor_Change");
    lblDesktopEditor->setVisible(IsDesktopEditor(txtTextEditor->text()));
}

void frmIni::cmdRunEditor_Click()
{
    WriteTrace(u"■frmIni.cmdRunEditor_Click");
    const QString editor = txtTextEditor->text();
    if (editor.isEmpty())
        m_services.ShowMessage(u"エディタが指定されていません"_s);
    else if (!IsEditorUsable(editor))
        m_services.ShowMessage(u"エディタが見つかりません"_s);
    else
        TryEditor(m_services, {editor, m_applicationFolder});
}

void frmIni::cmdBrowse_Click()
{
    WriteTrace(u"■frmIni.cmdBrowse_Click");
    const QString path = QFileDialog::getOpenFileName(this, u"テキストエディタの選択"_s);
    if (!path.isEmpty())
        txtTextEditor->setText(QDir::toNativeSeparators(path));
}

void frmIni::cmdChangeSetting_Click()
{
    WriteTrace(u"■frmIni.cmdChangeSetting_Click");
    if (!IsLineSpaceValid(txtLineSpace->text(), m_defaults, m_upper)) {
        m_msg.Refuse(this, LineSpaceRefusal(txtLineSpace->text(), m_defaults, m_upper));
        txtLineSpace->setFocus();
        txtLineSpace->selectAll();
        return;
    }
    // The ini file is in code page 932, so the next start would read back a different path.
    if (const QStringList lost = CharactersLost(txtTextEditor->text()); !lost.isEmpty()) {
        m_msg.Refuse(this, u"テキストエディタに使えない文字が含まれています。\r\n  "_s + lost.join(u' '));
        txtTextEditor->setFocus();
        return;
    }
    if (!IsEditorUsable(txtTextEditor->text())) {
        m_services.ShowMessage(u"次のテキストエディタが見つかりません。\r\n  "_s + txtTextEditor->text() +
                               u"\r\nメモ帳をテキストエディタに指定します。"_s);
        txtTextEditor->setText(m_defaults.TextEditor);
    }
    m_msg.PlayNamedSound(u"start.wav"_s);
    accept();
}

void frmIni::cmdCancel_Click()
{
    WriteTrace(u"■frmIni.cmdCancel_Click");
    reject();
}
