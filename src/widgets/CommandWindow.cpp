// SPDX-FileCopyrightText: 2026 The Kotoban developers
// SPDX-License-Identifier: MIT

#include "widgets/CommandWindow.h"

#include "base/modLog.h"
#include "widgets/ElidedLabel.h"
#include "widgets/NamedControls.h"
#include "widgets/ScreenFit.h"
#include "widgets/frmMsg.h"

#include <QCheckBox>
#include <QFormLayout>

using namespace Qt::Literals::StringLiterals;

CommandWindow::CommandWindow(const QString &name, frmMsg &msg, QWidget *owner)
    : QDialog(owner), m_msg(msg), m_content(new QWidget(this)), m_column(new QVBoxLayout(m_content))
{
    setObjectName(name);
    m_content->setObjectName(u"content"_s);
}

ElidedLabel *CommandWindow::AddFileLine(const QString &caption, const QString &name, int maxChars)
{
    auto *const label = new ElidedLabel(name, maxChars, this);
    label->SetText(QString(maxChars, u'n'));
    auto *const line = new QFormLayout;
    line->addRow(NamedLabel(name + u"Caption"_s, caption, this), label);
    m_column->addLayout(line);
    return label;
}

QCheckBox *CommandWindow::AddCheckBox(const QString &name, const QString &caption, const QString &toolTip)
{
    auto *const check = new QCheckBox(caption, this);
    check->setObjectName(name);
    check->setToolTip(toolTip);
    m_column->addWidget(check);
    return check;
}

void CommandWindow::AddAnswers(const QString &caption, const QString &toolTip, const QString &toolTipOfCancel,
                               QWidget *beside, const QSize &wanted)
{
    cmdOK = AddButton(this, u"cmdOK"_s, caption, toolTip, &CommandWindow::cmdOK_Click);
    cmdCancel = AddButton(this, u"cmdCancel"_s, u"キャンセル"_s, toolTipOfCancel, &CommandWindow::cmdCancel_Click);
    FitToScreen(this, m_content, wanted, AnswerRow(cmdOK, cmdCancel, beside));
}

bool CommandWindow::Refuse(const QString &message)
{
    return m_msg.Refuse(this, message);
}

bool CommandWindow::Agrees(const QString &question)
{
    return m_msg.Ask(this, question) == MsgResult::Ok;
}

void CommandWindow::cmdCancel_Click()
{
    WriteTrace(QString(u"■"_s + objectName() + u".cmdCancel_Click"));
    reject();
}
