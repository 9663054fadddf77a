// SPDX-FileCopyrightText: 2026 The Kotoban developers
// SPDX-License-Identifier: MIT

#include "widgets/CommandWindow.h"

#include "base/modLog.h"
#include "widgets/Contrast.h"
#include "widgets/ElidedLabel.h"
#include "widgets/Measures.h"
#include "widgets/NamedControls.h"
#include "widgets/ScreenFit.h"
#include "widgets/frmMsg.h"

#include <QFormLayout>
#include <QGuiApplication>
#include <QLabel>
#include <QRadioButton>

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

void CommandWindow::AddHead(const QString &name, const QString &text)
{
    QLabel *const label = NamedLabel(name, text, this);
    QFont bold = label->font();
    bold.setBold(true);
    label->setFont(bold);
    m_column->addWidget(label);
}

void CommandWindow::Place(QAbstractButton *choice, const QString &name, const QString &toolTip, const QString &meaning)
{
    choice->setObjectName(name);
    choice->setToolTip(toolTip);
    if (meaning.isEmpty()) {
        m_column->addWidget(choice);
        return;
    }
    if (qobject_cast<QRadioButton *>(choice)) // the tooltip of a check box tells more
        choice->setAccessibleDescription(meaning);
    QLabel *const phrase = NamedLabel(u"lbl"_s + name.sliced(3), meaning, this);
    const QPalette desktop = QGuiApplication::palette();
    QPalette dimmed;
    dimmed.setColor(QPalette::WindowText, Dimmed(desktop.color(QPalette::WindowText), desktop.color(QPalette::Window)));
    phrase->setPalette(dimmed);
    phrase->setIndent(IndicatorSize(fontMetrics()) + IndicatorGap(fontMetrics()));
    auto *const rows = new QVBoxLayout;
    rows->setSpacing(FocusRingReach);
    rows->addWidget(choice);
    rows->addWidget(phrase);
    m_column->addLayout(rows);
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
