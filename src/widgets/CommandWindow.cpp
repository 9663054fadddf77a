// SPDX-FileCopyrightText: 2026 The Kotoban developers
// SPDX-License-Identifier: MIT

#include "widgets/CommandWindow.h"

#include "base/modFile.h"
#include "base/modLog.h"
#include "widgets/Contrast.h"
#include "widgets/ElidedLabel.h"
#include "widgets/Measures.h"
#include "widgets/NamedControls.h"
#include "widgets/ScreenFit.h"
#include "widgets/frmMsg.h"

#include <QDeadlineTimer>
#include <QFileInfo>
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

QString CommandWindow::NameOfFiles(const QStringList &paths)
{
    return paths.size() == 1 ? QFileInfo(paths.front()).fileName()
                             : QString(QString::number(paths.size()) + u"個のファイル"_s);
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

DoneFiles CommandWindow::CarryOutForEach(const QString &caption, const QStringList &paths,
                                         const std::function<frmWait::Slice(const QString &path)> &begin)
{
    DoneFiles files;
    m_several = &files;
    qsizetype next = 0;
    frmWait::Slice work;
    const auto goOn = [&](const QDeadlineTimer &deadline) {
        while (next < paths.size()) {
            m_fileName = NameInLine(QFileInfo(paths[next]).fileName());
            const qsizetype failed = files.failed.size();
            if (!work)
                work = begin(paths[next]);
            if (work && work(deadline))
                return true;
            if (files.failed.size() == failed)
                files.done += m_fileName;
            work = nullptr;
            ++next;
            if (deadline.hasExpired())
                break;
        }
        return next < paths.size();
    };
    frmWait(caption, this).Run(goOn, [&] { return double(next) / double(paths.size()); });
    for (const QString &path : paths.sliced(next))
        files.left += NameInLine(QFileInfo(path).fileName());
    m_several = nullptr;
    return files;
}

namespace {

/// A message on one line.
QString Shortened(const QString &message)
{
    return message.section(u"\r\n"_s, 0, 0);
}

} // namespace

bool CommandWindow::Refuse(const QString &message)
{
    if (m_several) {
        m_several->failed += m_fileName + u'：' + Shortened(message);
        return false;
    }
    return m_msg.Refuse(this, message);
}

bool CommandWindow::Agrees(const QString &question, const QString &remark)
{
    if (m_several) {
        m_several->remarks += m_fileName + u'：' + (remark.isEmpty() ? Shortened(question) : remark);
        return true;
    }
    return m_msg.Ask(this, question) == MsgResult::Ok;
}

void CommandWindow::cmdCancel_Click()
{
    WriteTrace(QString(u"■"_s + objectName() + u".cmdCancel_Click"));
    reject();
}
