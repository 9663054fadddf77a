// SPDX-FileCopyrightText: 2026 The Kotoban developers
// SPDX-License-Identifier: MIT

#include "history/HistoryPanel.h"

#include "base/modDateText.h"
#include "base/modFile.h"
#include "base/modLog.h"
#include "history/HistoryChart.h"
#include "history/HistoryModel.h"
#include "settings/modEditor.h"
#include "widgets/BlockedWindow.h"
#include "widgets/NamedControls.h"
#include "widgets/PageFont.h"
#include "widgets/ScreenFit.h"
#include "widgets/frmMsg.h"

#include <QBoxLayout>
#include <QDeadlineTimer>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QListView>
#include <QPushButton>
#include <QScrollBar>
#include <QSignalBlocker>
#include <QTimer>

#include <utility>

using namespace Qt::Literals::StringLiterals;

HistoryPanel::HistoryPanel(SystemServices &services, StudyDatabase &database, frmMsg &msg, const QString &reportFolder,
                           const Editor &editor, const QString &userName, QWidget *parent)
    : QWidget(parent), m_services(services), m_msg(msg), m_reportFolder(reportFolder), m_editor(editor),
      m_userName(userName), m_reader(database, userName), m_reading(new QTimer(this)),
      m_records(new HistoryModel(m_reader.Result(), this)), txtYmd(new QLineEdit(this)), txtWeekN(new QLineEdit(this)),
      lstRecord(new QListView(this)), picHistory(new HistoryChart(m_reader, this)),
      lblSumTime(NamedLabel(u"lblSumTime"_s, QString(), this)), lblSumAns(NamedLabel(u"lblSumAns"_s, QString(), this))
{
    setObjectName(u"historyPanel"_s);
    m_reading->setObjectName(u"tmrRecord"_s);
    m_reading->setSingleShot(true);
    connect(m_reading, &QTimer::timeout, this, &HistoryPanel::ReadOn);
    SetUpInputs();
    SetUpList();
    auto *const column = new QVBoxLayout(this);
    column->setContentsMargins(0, 0, 0, 0);
    column->addLayout(SpanRow());
    column->addWidget(lstRecord, 1);
    column->addWidget(picHistory);
    column->addLayout(TotalsRow());
}

void HistoryPanel::SetUpInputs()
{
    NameControl(txtWeekN, u"txtWeekN"_s, u"週の数"_s, u"何週間分の記録を表示するか (Alt+K)"_s);
    FitToText(txtWeekN, QString::number(MaxWeeks));
    txtWeekN->setAlignment(Qt::AlignRight);
    NameControl(txtYmd, u"txtYmd"_s, u"最後の日"_s, u"記録の最後の日（年/月/日） (Alt+D)"_s);
    FitToText(txtYmd, u"0000/00/00"_s);
    connect(txtWeekN, &QLineEdit::textChanged, this, &HistoryPanel::txtWeekN_Change);
    connect(txtYmd, &QLineEdit::textChanged, this, &HistoryPanel::txtYmd_Change);
    // The list is updated while typing, so Enter has nothing to submit, and it must not open a file.
    connect(txtWeekN, &QLineEdit::returnPressed, txtWeekN, &QLineEdit::selectAll);
    connect(txtYmd, &QLineEdit::returnPressed, txtYmd, &QLineEdit::selectAll);
}

void HistoryPanel::SetUpList()
{
    NameControl(lstRecord, u"lstRecord"_s, u"学習記録"_s);
    lstRecord->setModel(m_records);
    lstRecord->setFont(PageFont()); // fixed pitch, so that the numbers line up
    lstRecord->setUniformItemSizes(true);
    lstRecord->setLayoutMode(QListView::Batched); // lays out a long list in steps of a millisecond or two
    lstRecord->setEditTriggers(QAbstractItemView::NoEditTriggers);
    lstRecord->setMinimumSize(fontMetrics().averageCharWidth() * 40, fontMetrics().lineSpacing() * 4);
}

QBoxLayout *HistoryPanel::SpanRow()
{
    cmdInc = AddButton(this, u"cmdInc"_s, u"＋1週(&W)"_s, u"もう一週前まで表示します (Alt+W)"_s,
                       &HistoryPanel::cmdInc_Click);

    auto *const row = new QHBoxLayout;
    row->addWidget(LabelOf(txtYmd, u"lblYmd"_s, u"学習記録(&D)："_s));
    row->addWidget(txtYmd);
    row->addWidget(NamedLabel(u"lblUntil"_s, u"まで"_s, this));
    row->addWidget(txtWeekN);
    row->addWidget(LabelOf(txtWeekN, u"lblWeekN"_s, u"週間(&K)"_s));
    row->addWidget(cmdInc);
    row->addStretch();
    return row;
}

QBoxLayout *HistoryPanel::TotalsRow()
{
    lblSumTime->setAccessibleDescription(u"総学習時間"_s);
    lblSumAns->setAccessibleDescription(u"総回答数"_s);
    cmdFile = AddButton(this, u"cmdFile"_s, u"ファイルに出力(&F)"_s,
                        u"この学習記録を rec フォルダのファイルに書き出します (Alt+F)"_s, &HistoryPanel::cmdFile_Click);

    auto *const row = new QHBoxLayout;
    row->addWidget(NamedLabel(u"lblSumTimeCaption"_s, u"総学習時間："_s, this));
    row->addWidget(lblSumTime);
    row->addSpacing(fontMetrics().averageCharWidth() * 2);
    row->addWidget(NamedLabel(u"lblSumAnsCaption"_s, u"総回答数："_s, this));
    row->addWidget(lblSumAns);
    row->addStretch();
    row->addWidget(cmdFile);
    return row;
}

void HistoryPanel::SetTabOrderBetween(QWidget *before, QWidget *after)
{
    SetTabOrder({before, txtYmd, txtWeekN, cmdInc, lstRecord, cmdFile, after});
}

void HistoryPanel::FocusRecords()
{
    lstRecord->setFocus();
}

void HistoryPanel::ShowThisWeek()
{
    const QSignalBlocker noChangeOfWeeks(txtWeekN);
    const QSignalBlocker noChangeOfDate(txtYmd);
    txtYmd->setText(DateText(m_services.Now().date()));
    txtWeekN->setText(u"1"_s);
    ShowRecordWhenValid();
}

void HistoryPanel::Stop()
{
    m_reading->stop();
    m_isReading = false;
    m_isReportWanted = false;
}

void HistoryPanel::keyPressEvent(QKeyEvent *event)
{
    const bool isEnter = event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter;
    if (isEnter && (txtWeekN->hasFocus() || txtYmd->hasFocus()))
        event->accept();
    else
        QWidget::keyPressEvent(event);
}

void HistoryPanel::txtWeekN_Change()
{
    WriteTrace(u"■frmFile.txtWeekN_Change");
    ShowRecordWhenValid();
}

void HistoryPanel::txtYmd_Change()
{
    WriteTrace(u"■frmFile.txtYmd_Change");
    ShowRecordWhenValid();
}

void HistoryPanel::cmdInc_Click()
{
    WriteTrace(u"■frmFile.cmdInc_Click");
    txtWeekN->setText(QString::number(qMin(MaxWeeks, m_reader.Result().Weeks() + 1)));
}

void HistoryPanel::cmdFile_Click()
{
    WriteTrace(u"■frmFile.cmdFile_Click");
    if (m_isReading) {
        m_isReportWanted = true; // a report must be complete; a disabled button would lose the focus
        return;
    }
    if (m_reader.HasFailed()) {
        m_msg.Refuse(window(), u"学習記録を読めなかったため，ファイルに出力できません。"_s);
        return;
    }
    const QString path =
        JoinPath(m_reportFolder, ReportFileName(m_userName, m_services.Now().date(), m_reader.Result().Weeks()));
    if (const FileFault fault = WriteReport(path, m_reader.Result())) {
        m_msg.Refuse(window(), FaultMessage(u"学習記録をファイルに出力できません。"_s, fault));
        return;
    }
    const QString question = u"学習記録をファイルに出力しました。\r\nこのファイルを開きますか？\r\n"_s;
    if (m_msg.DispFrmMsg(window(), question, MsgStyle::YesNo, u"start.wav"_s) == MsgResult::Ok)
        OpenInEditor(m_services, m_editor, path, 1);
}

/// Shows the history for the two fields. While either is invalid, the previous one stays.
void HistoryPanel::ShowRecordWhenValid()
{
    const int weeks = ReadWeeks(txtWeekN->text());
    if (weeks > 0 && DateFromText(txtYmd->text()).isValid())
        ShowRecord(weeks);
}

void HistoryPanel::ShowRecord(int weeks)
{
    m_reading->stop();
    m_records->Clear();
    m_reader.Begin(DateFromText(txtYmd->text()), weeks);
    m_isReading = true;
    m_isReportWanted = false;
    m_sinceShown.invalidate();
    ReadOn();
}

/// Reads for a few milliseconds. Updates the display when all is read, and at intervals until then. Pauses while
/// another window is open over this one, because a fault would be reported, and a report that was asked for is offered.
void HistoryPanel::ReadOn()
{
    constexpr int sliceMs = 3;
    constexpr int pauseMs = 100;
    if (IsBlocked(this)) {
        m_reading->start(pauseMs);
        return;
    }
    constexpr int msBetweenUpdates = 200;
    m_isReading = m_reader.GoOn(QDeadlineTimer(sliceMs, Qt::PreciseTimer)) && m_isReading; // Stop may have been called
    if (!m_isReading || !m_sinceShown.isValid() || m_sinceShown.hasExpired(msBetweenUpdates))
        ShowRead();
    if (m_isReading)
        m_reading->start(0);
    else if (std::exchange(m_isReportWanted, false))
        cmdFile_Click();
}

void HistoryPanel::ShowRead()
{
    const History &history = m_reader.Result();
    // Every insertion lays the list out again from its first line, so insert only when the list doubles.
    if (!m_isReading || history.LineCount() >= 2 * m_records->rowCount()) {
        constexpr int linesLaidOut = 20'000;                                             // takes a millisecond or two
        lstRecord->setBatchSize(linesLaidOut + lstRecord->verticalScrollBar()->value()); // keeps the scroll position
        m_records->ShowRead();
    }
    if (m_isReading) {
        lblSumTime->setText(u"読み込み中…（"_s + QString::number(m_reader.UnreadUpTo().year()) + u"年）"_s);
        lblSumAns->setText(u"…"_s);
    } else {
        lblSumTime->setText(m_reader.HasFailed() ? QString() : history.TotalTime());
        lblSumAns->setText(m_reader.HasFailed() ? QString() : history.TotalAnswers());
    }
    picHistory->ShowRead();
    m_sinceShown.start();
}
