// SPDX-FileCopyrightText: 2026 The Kotoban developers
// SPDX-License-Identifier: MIT

#include "widgets/frmWait.h"

#include "base/modLog.h"
#include "widgets/NamedControls.h"
#include "widgets/ScreenFit.h"

#include <QDeadlineTimer>
#include <QLabel>
#include <QProgressBar>
#include <QTimer>
#include <QVBoxLayout>

using namespace Qt::Literals::StringLiterals;

frmWait::frmWait(const QString &caption, QWidget *owner)
    : QDialog(owner), m_working(new QTimer(this)), prgDone(new QProgressBar(this)),
      cmdCancel(AddButton(this, u"cmdCancel"_s, u"中止"_s, u"途中でやめます (Esc)"_s, &frmWait::cmdCancel_Click))
{
    setObjectName(u"frmWait"_s);
    Form_Load(caption);
}

void frmWait::Form_Load(const QString &caption)
{
    WriteTrace(u"■frmWait.Form_Load");
    setWindowTitle(u"お待ちください"_s);
    prgDone->setObjectName(u"prgDone"_s);
    prgDone->setAccessibleName(caption);
    prgDone->setFocusPolicy(Qt::StrongFocus); // has the focus first: a key still held must not press the button
    prgDone->setFocus();
    connect(m_working, &QTimer::timeout, this, &frmWait::GoOn);
    auto *const content = new QWidget(this);
    content->setObjectName(u"content"_s);
    auto *const column = new QVBoxLayout(content);
    column->addWidget(NamedLabel(u"lblCaption"_s, caption, this));
    column->addWidget(prgDone);
    column->addWidget(cmdCancel, 0, Qt::AlignRight);
    FitToScreen(this, content, QSize(fontMetrics().averageCharWidth() * 50, 0));
}

bool frmWait::Run(const Slice &slice, const std::function<double()> &done)
{
    constexpr int unnoticedMs = 100; // so short a wait needs no window, which would only flicker
    m_slice = slice;
    m_done = done;
    m_isFinished = !m_slice(QDeadlineTimer(unnoticedMs, Qt::PreciseTimer));
    if (!m_isFinished) {
        m_working->start(0);
        exec();
        m_working->stop();
    }
    return m_isFinished;
}

void frmWait::GoOn()
{
    constexpr int sliceMs = 5;
    m_isFinished = !m_slice(QDeadlineTimer(sliceMs, Qt::PreciseTimer));
    prgDone->setValue(int(m_done() * prgDone->maximum()));
    if (m_isFinished)
        accept();
}

void frmWait::cmdCancel_Click()
{
    WriteTrace(u"■frmWait.cmdCancel_Click");
    reject();
}
