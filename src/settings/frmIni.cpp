#include "settings/frmIni.h"

#include "base/modCodePage.h"
#include "base/modLog.h"
#include "settings/frmMsg.h"
#include "settings/modEditor.h"
#include "widgets/ScreenFit.h"

#include <QCheckBox>
#include <QDir>
#include <QFileDialog>
#include <QGridLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QScrollArea>

#include <algorithm>

using namespace Qt::Literals::StringLiterals;

namespace {

constexpr float FontSizes[] = {9.75f, 11.25f, 12.75f};

QPushButton *NewButton(const QString &name, const QString &caption, QWidget *parent)
{
    auto *const button = new QPushButton(caption, parent);
    button->setObjectName(name);
    button->setAutoDefault(false);
    return button;
}

QLabel *NewLabel(const QString &name, const QString &caption, QWidget *buddy)
{
    auto *const label = new QLabel(caption, buddy->parentWidget());
    label->setObjectName(name);
    label->setBuddy(buddy);
    return label;
}

} // namespace

frmIni::frmIni(Desktop &desktop, frmMsg &msg, const Settings &defaults, const Settings &upper, QWidget *owner)
    : QDialog(owner), m_desktop(desktop), m_msg(msg), m_defaults(defaults), m_upper(upper),
      txtLineSpace(new QLineEdit(this)), lblLSpaceRange(new QLabel(LineSpaceRange(defaults, upper), this)),
      txtTextEditor(new QLineEdit(this)), chkDispLineNum(new QCheckBox(u"行番号を表示する(&N)"_s, this))
{
    setObjectName(u"frmIni"_s);
    setWindowTitle(u"設定"_s);
    Form_Load();
}

void frmIni::Form_Load()
{
    WriteTrace(u"■frmIni.Form_Load");
    AddControls();
    resize(sizeHint().boundedTo(RoomOnScreen(this)));
}

void frmIni::showEvent(QShowEvent *event)
{
    QDialog::showEvent(event);
    Form_Activate();
}

// The arrow keys move the choice of the font size from where it is.
void frmIni::Form_Activate()
{
    WriteTrace(u"■frmIni.Form_Activate");
    const auto chosen = std::ranges::find_if(optFontSize, &QRadioButton::isChecked);
    (chosen == std::end(optFontSize) ? optFontSize[0] : *chosen)->setFocus();
}

void frmIni::AddControls()
{
    txtLineSpace->setObjectName(u"txtLineSpace"_s);
    const int charPx = fontMetrics().averageCharWidth();
    txtLineSpace->setMaximumWidth(8 * charPx);
    lblLSpaceRange->setObjectName(u"lblLSpaceRange"_s);
    txtTextEditor->setObjectName(u"txtTextEditor"_s);
    txtTextEditor->setMinimumWidth(40 * charPx);
    txtTextEditor->setMaxLength(LongestSetting);
    chkDispLineNum->setObjectName(u"chkDispLineNum"_s);
    txtLineSpace->setAccessibleName(u"行間"_s);
    txtTextEditor->setAccessibleName(u"テキストエディタ"_s);

    auto *const fontSizes = new QHBoxLayout;
    for (int i = 0; i < 3; ++i) {
        optFontSize[i] = new QRadioButton(FontSizeText(FontSizes[i]), this);
        optFontSize[i]->setObjectName(u"optFontSize"_s + QString::number(i));
        optFontSize[i]->setAccessibleName(u"フォントサイズ "_s + FontSizeText(FontSizes[i]));
        fontSizes->addWidget(optFontSize[i]);
    }
    fontSizes->addStretch();

    auto *const lineSpace = new QHBoxLayout;
    lineSpace->addWidget(txtLineSpace);
    lineSpace->addWidget(lblLSpaceRange);
    lineSpace->addStretch();

    QPushButton *const cmdBrowse = NewButton(u"cmdBrowse"_s, u"参照(&B)..."_s, this);
    QPushButton *const cmdRunEditor = NewButton(u"cmdRunEditor"_s, u"起動してみる(&R)"_s, this);
    QPushButton *const cmdChangeSetting = NewButton(u"cmdChangeSetting"_s, u"設定を変更(&S)"_s, this);
    QPushButton *const cmdCancel = NewButton(u"cmdCancel"_s, u"キャンセル"_s, this);
    cmdChangeSetting->setDefault(true);
    cmdBrowse->setToolTip(u"テキストエディタのファイルを選びます (Alt+B)"_s);
    cmdRunEditor->setToolTip(u"テキストエディタをファイルなしで起動します (Alt+R)"_s);
    cmdChangeSetting->setToolTip(u"この設定を使い，保存します (Enter)"_s);
    cmdCancel->setToolTip(u"変えずに戻ります (Esc)"_s);
    connect(cmdBrowse, &QPushButton::clicked, this, &frmIni::cmdBrowse_Click);
    connect(cmdRunEditor, &QPushButton::clicked, this, &frmIni::cmdRunEditor_Click);
    connect(cmdChangeSetting, &QPushButton::clicked, this, &frmIni::cmdChangeSetting_Click);
    connect(cmdCancel, &QPushButton::clicked, this, &frmIni::cmdCancel_Click);

    auto *const editorButtons = new QHBoxLayout;
    editorButtons->addWidget(cmdBrowse);
    editorButtons->addWidget(cmdRunEditor);
    editorButtons->addStretch();
    auto *const buttons = new QHBoxLayout;
    buttons->addStretch();
    buttons->addWidget(cmdChangeSetting);
    buttons->addWidget(cmdCancel);

    // On a small screen, or with a large font, what is set can be scrolled; the two answers always stand below it.
    auto *const fraSettings = new QScrollArea(this);
    fraSettings->setObjectName(u"fraSettings"_s);
    fraSettings->setFrameShape(QFrame::NoFrame);
    fraSettings->setFocusPolicy(Qt::NoFocus);
    fraSettings->setWidgetResizable(true);
    auto *const settings = new QWidget;
    auto *const grid = new QGridLayout(settings);
    grid->setContentsMargins(0, 0, 0, 0);
    grid->addWidget(NewLabel(u"lblFontSize"_s, u"フォントサイズ："_s, optFontSize[0]), 0, 0);
    grid->addLayout(fontSizes, 0, 1);
    grid->addWidget(NewLabel(u"lblLineSpace"_s, u"行間(&L)："_s, txtLineSpace), 1, 0);
    grid->addLayout(lineSpace, 1, 1);
    grid->addWidget(NewLabel(u"lblTextEditor"_s, u"テキストエディタ(&T)："_s, txtTextEditor), 2, 0);
    grid->addWidget(txtTextEditor, 2, 1);
    grid->addLayout(editorButtons, 3, 1);
    grid->addWidget(chkDispLineNum, 4, 1);
    fraSettings->setWidget(settings);

    auto *const column = new QVBoxLayout(this);
    column->addWidget(fraSettings);
    column->addSpacing(charPx);
    column->addLayout(buttons);

    QWidget *last = optFontSize[0];
    for (QWidget *const next :
         std::initializer_list<QWidget *>{optFontSize[1], optFontSize[2], txtLineSpace, txtTextEditor, cmdBrowse,
                                          cmdRunEditor, chkDispLineNum, cmdChangeSetting, cmdCancel}) {
        setTabOrder(last, next);
        last = next;
    }
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
    for (int i = 0; i < 3; ++i)
        optFontSize[i]->setChecked(settings.FontSize == FontSizes[i]);
    txtLineSpace->setText(QString::number(settings.LineSpace));
    txtTextEditor->setText(settings.TextEditor);
    chkDispLineNum->setChecked(settings.bolDispLineNum);
}

Settings frmIni::TakeSettings(const Settings &before) const
{
    Settings settings = before;
    settings.FontSize = optFontSize[0]->isChecked()   ? FontSizes[0]
                        : optFontSize[1]->isChecked() ? FontSizes[1]
                                                      : FontSizes[2];
    settings.LineSpace = txtLineSpace->text().toInt();
    settings.TextEditor = txtTextEditor->text();
    settings.bolDispLineNum = chkDispLineNum->isChecked();
    return settings;
}

void frmIni::cmdRunEditor_Click()
{
    WriteTrace(u"■frmIni.cmdRunEditor_Click");
    const QString editor = txtTextEditor->text();
    if (editor.isEmpty())
        m_desktop.ShowMessage(u"エディタが指定されていません"_s);
    else if (!IsEditorUsable(editor))
        m_desktop.ShowMessage(u"エディタが見つかりません"_s);
    else
        StartOrReport(m_desktop, editor);
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
        m_msg.DispFrmMsg(this, LineSpaceRefusal(txtLineSpace->text(), m_defaults, m_upper), MsgStyle::Ok,
                         u"notify.wav"_s);
        txtLineSpace->setFocus();
        txtLineSpace->selectAll();
        return;
    }
    // The ini file is in code page 932 and would hand back another editor at the next start.
    if (const QStringList lost = CharactersLost(txtTextEditor->text()); !lost.isEmpty()) {
        m_msg.DispFrmMsg(this, u"テキストエディタに使えない文字が含まれています。\r\n  "_s + lost.join(u' '),
                         MsgStyle::Ok, u"notify.wav"_s);
        txtTextEditor->setFocus();
        return;
    }
    if (!IsEditorUsable(txtTextEditor->text())) {
        m_desktop.ShowMessage(u"次のテキストエディタが見つかりません。\r\n  "_s + txtTextEditor->text() +
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
