// SPDX-FileCopyrightText: 2026 The Kotoban developers
// SPDX-License-Identifier: MIT

#include "app/frmLogin.h"

#include "app/modUserList.h"
#include "base/modLog.h"
#include "base/modProduct.h"
#include "widgets/FailureTeller.h"
#include "widgets/NamedControls.h"
#include "widgets/ScreenFit.h"
#include "widgets/frmMsg.h"

#include <QDialogButtonBox>
#include <QFormLayout>
#include <QGridLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QScreen>

#include <algorithm>

using namespace Qt::Literals::StringLiterals;

namespace {

/// A list in which the first press of the down key selects the first name. A plain QListWidget makes the first name
/// current as soon as it gets the focus, so that the first press would already select the second.
class NameList : public QListWidget
{
  public:
    using QListWidget::QListWidget;

  protected:
    void keyPressEvent(QKeyEvent *event) override
    {
        if (event->key() == Qt::Key_Down && selectedItems().isEmpty() && count() > 0)
            item(0)->setSelected(true);
        else
            QListWidget::keyPressEvent(event);
    }
};

} // namespace

frmLogin::frmLogin(SystemServices &services, frmMsg &msg, const QString &userListPath, const QString &lastUser)
    : m_services(services), m_msg(msg), m_userListPath(userListPath), m_lastUser(lastUser),
      lblComment(NamedLabel(u"lblComment"_s, QString(), this)), txtUserName(new QLineEdit(this)),
      lstUserName(new NameList(this))
{
    setObjectName(u"frmLogin"_s);
    NameControl(txtUserName, u"txtUserName"_s, u"利用者名"_s, u"学習記録に付ける名前です (Alt+U)"_s);
    NameControl(lstUserName, u"lstUserName"_s, u"利用者一覧"_s);
    QPushButton *const cmdOK =
        AddButton(this, u"cmdOK"_s, u"OK"_s, u"この名前で始めます (Enter)"_s, &frmLogin::cmdOK_Click);
    cmdOK->setDefault(true);
    QPushButton *const cmdEnd =
        AddButton(this, u"cmdEnd"_s, u"終了(&X)"_s, u"瞬記帳を終了します (Alt+X)"_s, &frmLogin::cmdEnd_Click);
    connect(lstUserName, &QListWidget::itemSelectionChanged, this, &frmLogin::lstUserName_Click);
    connect(lstUserName, &QListWidget::itemClicked, this, &frmLogin::lstUserName_Click);
    connect(lstUserName, &QListWidget::itemDoubleClicked, this, &frmLogin::cmdOK_Click);

    auto *const buttons = new QDialogButtonBox(Qt::Vertical);
    buttons->addButton(cmdOK, QDialogButtonBox::AcceptRole);
    buttons->addButton(cmdEnd, QDialogButtonBox::RejectRole);
    auto *const form = new QFormLayout;
    form->addRow(LabelOf(txtUserName, u"lblUser"_s, u"利用者名(&U)："_s), txtUserName);
    form->addRow(LabelOf(lstUserName, u"Label1"_s, u"利用者一覧(&L)："_s), lstUserName);
    auto *const content = new QWidget(this);
    content->setObjectName(u"content"_s);
    auto *const grid = new QGridLayout(content);
    grid->addWidget(lblComment, 0, 0, 1, 2);
    grid->addLayout(form, 1, 0);
    grid->addWidget(buttons, 1, 1);
    new FailureTeller(
        m_services, m_msg, [this] { return this; }, this);
    Form_Load();
    FitToScreen(this, content);
    move(screen()->availableGeometry().center() - rect().center());
}

void frmLogin::Form_Load()
{
    WriteTrace(u"■frmLogin.Form_Load");
    setWindowTitle(ProductName() + u" Ver"_s + VersionText() + u" ログイン画面"_s);
    lblComment->setText(u"利用者一覧に自分の名前があればそれを選択。\r\nなければ，自分の名前を入力してください。"_s);
    m_names = ReadUserNames(m_userListPath);
    lstUserName->addItems(m_names);
    if (!m_lastUser.isEmpty()) // an empty line of the list is nobody's name
        lstUserName->setCurrentRow(int(m_names.indexOf(m_lastUser)));
}

void frmLogin::showEvent(QShowEvent *event)
{
    QDialog::showEvent(event);
    if (!event->spontaneous()) // not when it was only minimised
        Form_Activate();
}

// Esc is ignored: QDialog would close, and the program would continue without a user name.
void frmLogin::keyPressEvent(QKeyEvent *event)
{
    if (event->key() != Qt::Key_Escape)
        QDialog::keyPressEvent(event);
}

void frmLogin::Form_Activate()
{
    WriteTrace(u"■frmLogin.Form_Activate");
    activateWindow();
    txtUserName->setFocus();
    txtUserName->selectAll(); // typing replaces the last user's name
}

void frmLogin::lstUserName_Click()
{
    WriteTrace(u"■frmLogin.lstUserName_Click");
    const QList<QListWidgetItem *> selected = lstUserName->selectedItems();
    if (!selected.isEmpty())
        txtUserName->setText(selected.front()->text());
}

void frmLogin::cmdOK_Click()
{
    WriteTrace(u"■frmLogin.cmdOK_Click");
    QString name = txtUserName->text();
    if (!IsUserListed(m_names, name))
        name.replace(u'〜', u'～'); // the wave dash of some input methods by the one that the list can store
    if (!CheckName(name)) {
        txtUserName->setFocus();
        return;
    }
    if (!IsUserListed(m_names, name))
        if (const FileFault fault = AppendUserName(m_userListPath, name))
            m_services.ShowMessage(FaultMessage(u"利用者一覧に書き込めません。"_s, fault));
    m_userName = name;
    Leave(LoginResult::Accepted);
}

/// Whether a name can be used; if not, the user has been told why or has declined the warning.
bool frmLogin::CheckName(const QString &name)
{
    const auto isBlank = [](QChar character) { return character == u' '; }; // an ideographic space is a valid name
    if (std::all_of(name.begin(), name.end(), isBlank))
        return m_msg.Refuse(this, u"利用者名は入力必須です。"_s);
    const QStringList refused = IsUserListed(m_names, name) ? QStringList() : CharactersNotForNames(name);
    if (!refused.isEmpty())
        return m_msg.Refuse(this, u"利用者名に使えない文字が含まれています。\r\n  "_s + refused.join(u' '));
    // The database statements contain the name between single quotes.
    return !name.contains(u'\'') ||
           m_msg.DispFrmMsg(this, u"名前に ' が含まれているため，学習の記録は残りません。\r\nこの名前で始めますか？"_s,
                            MsgStyle::OkCancel, u"notify.wav"_s) == MsgResult::Ok;
}

void frmLogin::cmdEnd_Click()
{
    WriteTrace(u"■frmLogin.cmdEnd_Click");
    Leave(LoginResult::EndProgram);
}

LoginResult frmLogin::Ask()
{
    exec();
    return m_result;
}

void frmLogin::Leave(LoginResult result)
{
    m_result = result;
    hide();
}
