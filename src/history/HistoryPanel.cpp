// SPDX-FileCopyrightText: 2026 The Kotoban developers
// SPDX-License-Identifier: MIT

#include "history/HistoryPanel.h"

#include "base/modDateText.h"
#include "base/modFile.h"
#include "base/modLog.h"
#include "history/CalendarChart.h"
#include "history/HistoryChart.h"
#include "history/HistoryModel.h"
#include "platform/modReplaceFile.h"
#include "settings/modEditor.h"
#include "widgets/BlockedWindow.h"
#include "widgets/ElidedLabel.h"
#include "widgets/Measures.h"
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
#include <QStackedLayout>
#include <QTabBar>
#include <QTimer>

#include <utility>

using namespace Qt::Literals::StringLiterals;

HistoryPanel::HistoryPanel(SystemServices &services, StudyDatabase &database, frmMsg &msg, const QString &reportFolder,
                           const Editor &editor, const QString &userName, const StudyTallies &tallies, QWidget *parent)
    : QWidget(parent), m_services(services), m_msg(msg), m_reportFolder(reportFolder), m_editor(editor),
      m_userName(userName), m_tallies(tallies), m_reader(database, userName), m_reading(new QTimer(this)),
      m_records(new HistoryModel(m_reader.Result(), this)), txtYmd(new QLineEdit(this)), txtWeekN(new QLineEdit(this)),
      lstRecord(new QListView(this)), tabCharts(new QTabBar(this)), m_column(new QVBoxLayout(this)),
      m_charts(new QStackedLayout), m_totals(new QWidget(this)), picHistory(new HistoryChart(m_reader, this)),
      picCalendar(new CalendarChart(tallies, this)), tblFiles(new FileTable(this)),
      lblSentence(new ElidedLabel(u"lblSentence"_s, 60, this, Qt::ElideRight)),
      lblSumTime(NamedLabel(u"lblSumTime"_s, QString(), this)), lblSumAns(NamedLabel(u"lblSumAns"_s, QString(), this))
{
    setObjectName(u"historyPanel"_s);
    m_reading->setObjectName(u"tmrRecord"_s);
    m_reading->setSingleShot(true);
    connect(m_reading, &QTimer::timeout, this, &HistoryPanel::ReadOn);
    SetUpInputs();
    SetUpList();
    SetUpCharts();
    auto *const tabRow = new QHBoxLayout;
    tabRow->addWidget(tabCharts, 1);
    tabRow->addWidget(cmdFile);
    m_column->setContentsMargins(0, 0, 0, 0);
    m_column->addLayout(SpanRow());
    m_column->addWidget(lstRecord, 3);
    m_column->addLayout(tabRow);
    m_column->addLayout(m_charts, 2);
    m_column->addLayout(TotalsRow());
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
    connect(txtYmd, &QLineEdit::editingFinished, this, &HistoryPanel::txtYmd_LostFocus);
    connect(txtYmd, &QLineEdit::returnPressed, txtYmd, &QLineEdit::selectAll);
}

void HistoryPanel::SetUpCharts()
{
    cmdFile = AddButton(this, u"cmdFile"_s, u"ファイルに出力(&F)"_s,
                        u"この学習記録を rec フォルダのファイルに書き出します (Alt+F)"_s, &HistoryPanel::cmdFile_Click);
    NameControl(tabCharts, u"tabCharts"_s, u"図の種類"_s);
    tabCharts->setExpanding(false);
    tabCharts->setUsesScrollButtons(false);
    tabCharts->setElideMode(Qt::ElideNone);
    for (const QString &caption : {u"棒(&G)"_s, u"暦(&Y)"_s, u"ファイル別(&A)"_s})
        tabCharts->addTab(caption);
    for (QWidget *const chart : std::initializer_list<QWidget *>{picHistory, picCalendar, tblFiles})
        m_charts->addWidget(chart);
    connect(tabCharts, &QTabBar::currentChanged, this, &HistoryPanel::tabCharts_Click);
    for (DayChart *const chart : std::initializer_list<DayChart *>{picHistory, picCalendar}) {
        connect(chart, &DayChart::ChoiceChanged, this, &HistoryPanel::ShowSentence);
        connect(chart, &DayChart::ListAsked, this, &HistoryPanel::ShowDays);
    }
    connect(tblFiles, &FileTable::FileAsked, this, &HistoryPanel::FileAsked);
}

void HistoryPanel::SetUpList()
{
    NameControl(lstRecord, u"lstRecord"_s, u"学習記録"_s);
    lstRecord->setModel(m_records);
    lstRecord->setFont(PageFont()); // fixed pitch, so that the numbers line up
    lstRecord->setItemDelegate(new HistoryDelegate(lstRecord));
    lstRecord->setUniformItemSizes(true);
    lstRecord->setLayoutMode(QListView::Batched); // lays out a long list in steps of a millisecond or two
    lstRecord->setEditTriggers(QAbstractItemView::NoEditTriggers);
    lstRecord->setMinimumSize(fontMetrics().averageCharWidth() * 40, fontMetrics().lineSpacing() * 4);
}

QBoxLayout *HistoryPanel::SpanRow()
{
    lblYmd = LabelOf(txtYmd, u"lblYmd"_s, u"学習記録(&D)："_s);
    lblUntil = NamedLabel(u"lblUntil"_s, u"まで"_s, this);
    cmdPrev = AddButton(this, u"cmdPrev"_s, u"←1週(&Q)"_s, u"最後の日を一週前にします (Alt+Q)"_s,
                        &HistoryPanel::cmdPrev_Click);
    cmdInc = AddButton(this, u"cmdInc"_s, u"＋1週(&W)"_s, u"もう一週前まで表示します (Alt+W)"_s,
                       &HistoryPanel::cmdInc_Click);

    auto *const row = new QHBoxLayout;
    row->addWidget(lblYmd);
    row->addWidget(txtYmd);
    row->addWidget(lblUntil);
    row->addWidget(txtWeekN);
    row->addWidget(LabelOf(txtWeekN, u"lblWeekN"_s, u"週間(&K)"_s));
    row->addWidget(cmdPrev);
    row->addWidget(cmdInc);
    row->addStretch();
    return row;
}

/// The sentence about the chart, then the totals.
QBoxLayout *HistoryPanel::TotalsRow()
{
    lblSumTime->setAccessibleDescription(u"総学習時間"_s);
    lblSumAns->setAccessibleDescription(u"総回答数"_s);
    auto *const totals = new QHBoxLayout(m_totals);
    totals->setContentsMargins(0, 0, 0, 0);
    totals->setSpacing(Ems(fontMetrics(), 0.2));
    totals->addWidget(NamedLabel(u"lblSumTimeCaption"_s, u"総学習時間："_s, this));
    totals->addWidget(lblSumTime);
    totals->addSpacing(fontMetrics().averageCharWidth() * 2);
    totals->addWidget(NamedLabel(u"lblSumAnsCaption"_s, u"総回答数："_s, this));
    totals->addWidget(lblSumAns);
    totals->addStretch();
    auto *const row = new QHBoxLayout;
    row->addWidget(lblSentence, 1);
    row->addWidget(m_totals);
    return row;
}

void HistoryPanel::SetTabOrderBetween(QWidget *before, QWidget *after)
{
    SetTabOrder({before, txtYmd, txtWeekN, cmdPrev, cmdInc, lstRecord, tabCharts, cmdFile, picHistory, picCalendar,
                 tblFiles, after});
}

void HistoryPanel::SetNarrow(bool isNarrow)
{
    if (isNarrow == IsNarrow())
        return;
    const QSignalBlocker noChange(tabCharts);
    const int shown = tabCharts->currentIndex();
    if (isNarrow) {
        tabCharts->insertTab(0, u"一覧"_s);
        m_charts->insertWidget(0, lstRecord);
    } else {
        tabCharts->removeTab(0);
        m_column->insertWidget(1, lstRecord, 3);
        lstRecord->show();
    }
    lblYmd->setText(isNarrow ? u"日(&D)："_s : u"学習記録(&D)："_s);
    lblUntil->setVisible(!isNarrow);
    tabCharts->setCurrentIndex(isNarrow ? 0 : qMax(0, shown - 1));
    m_charts->setCurrentIndex(tabCharts->currentIndex());
    ShowSentence();
}

void HistoryPanel::FocusRecords()
{
    ShowList();
    lstRecord->setFocus();
}

void HistoryPanel::ShowThisWeek(const QDateTime &session)
{
    m_session = session;
    picHistory->ForgetChoice();
    picCalendar->ForgetChoice();
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
    m_wanted = Wanted::Nothing;
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

/// Writes the date in full, but only if it is one: what the user typed is theirs to correct.
void HistoryPanel::txtYmd_LostFocus()
{
    WriteTrace(u"■frmFile.txtYmd_LostFocus");
    const QSignalBlocker noChange(txtYmd); // of the day
    if (const QDate day = DayInField(); day.isValid())
        txtYmd->setText(DateText(day));
}

void HistoryPanel::cmdPrev_Click()
{
    WriteTrace(u"■frmFile.cmdPrev_Click");
    constexpr int daysPerWeek = 7;
    if (const QDate day = m_reader.Result().EndDate().addDays(-daysPerWeek); day.year() >= 1)
        txtYmd->setText(DateText(day));
}

void HistoryPanel::cmdInc_Click()
{
    WriteTrace(u"■frmFile.cmdInc_Click");
    txtWeekN->setText(QString::number(qMin(MaxWeeks, m_reader.Result().Weeks() + 1)));
}

void HistoryPanel::cmdFile_Click()
{
    WriteTrace(u"■frmFile.cmdFile_Click");
    Write(Wanted::Report);
}

void HistoryPanel::WriteTable()
{
    Write(Wanted::Table);
}

void HistoryPanel::Write(Wanted wanted)
{
    if (m_isReading) {
        m_wanted = wanted; // a file must be complete; a disabled button would lose the focus
        return;
    }
    if (m_reader.HasFailed()) {
        m_msg.Refuse(window(), u"学習記録を読めなかったため，ファイルに出力できません。"_s);
        return;
    }
    const History &history = m_reader.Result();
    const int typed = ReadWeeks(txtWeekN->text());
    const int weeks = typed > 0 ? typed : history.Weeks();
    const QDate today = m_services.Now().date();
    const bool isTable = wanted == Wanted::Table;
    const QString name = isTable ? TableFileName(m_userName, today, weeks) : ReportFileName(m_userName, today, weeks);
    const QString path = JoinPath(m_reportFolder, name);
    if (const FileFault fault =
            isTable ? ReplaceFile(path, HistoryTable(history, m_userName)) : WriteReport(path, history)) {
        m_msg.Refuse(window(), FaultMessage(u"学習記録をファイルに出力できません。"_s, fault));
        return;
    }
    if (isTable) {
        m_msg.DispFrmMsg(window(), u"学習記録をCSVに出力しました。\r\n    ファイル名＝"_s + name + u"\r\n"_s,
                         MsgStyle::Ok, u"start.wav"_s);
        return;
    }
    const QString question = u"学習記録をファイルに出力しました。\r\nこのファイルを開きますか？\r\n"_s;
    if (m_msg.DispFrmMsg(window(), question, MsgStyle::YesNo, u"start.wav"_s) == MsgResult::Ok)
        OpenInEditor(m_services, m_editor, path, 1);
}

void HistoryPanel::tabCharts_Click()
{
    WriteTrace(u"■frmFile.tabCharts_Click");
    m_charts->setCurrentIndex(tabCharts->currentIndex());
    ShowSentence();
}

bool HistoryPanel::IsNarrow() const
{
    return m_charts->indexOf(lstRecord) >= 0;
}

/// Shows the tab with the list, if it has one.
void HistoryPanel::ShowList()
{
    if (IsNarrow())
        tabCharts->setCurrentIndex(m_charts->indexOf(lstRecord));
}

/// Scrolls the list to some days, and shows other ones for that if they are not in it.
void HistoryPanel::ShowDays(const DaySpan &days)
{
    const History &history = m_reader.Result();
    m_days = days;
    ShowList();
    if (days.last < history.StartDate() || days.first > history.EndDate())
        txtYmd->setText(DateText(days.last));
    else
        ShowRead();
}

/// The day in the field for the last day; invalid if there is none.
QDate HistoryPanel::DayInField() const
{
    return ReadDay(txtYmd->text(), m_services.Now().date());
}

/// Shows the history for the two fields. While either is invalid, the previous one stays.
void HistoryPanel::ShowRecordWhenValid()
{
    const int weeks = ReadWeeks(txtWeekN->text());
    if (weeks > 0 && DayInField().isValid())
        ShowRecord(weeks);
}

void HistoryPanel::ShowRecord(int weeks)
{
    m_reading->stop();
    m_records->Clear();
    m_reader.Begin(DayInField(), weeks);
    m_isReading = true;
    m_wanted = Wanted::Nothing;
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
    else if (const Wanted wanted = std::exchange(m_wanted, Wanted::Nothing); wanted != Wanted::Nothing)
        Write(wanted);
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
    picHistory->ShowRead(m_services.Now().date());
    ShowSentence();
    ChooseWanted();
    m_sinceShown.start();
}

/// Chooses the session that has just ended or the first line of the days asked for, once the list has them.
void HistoryPanel::ChooseWanted()
{
    if (!m_session.isValid() && m_days.IsEmpty())
        return;
    const History &history = m_reader.Result();
    const int line = m_session.isValid() ? history.LineOfSession(m_session) : history.HeadingIn(m_days);
    if (line < 0 || line >= m_records->rowCount()) {
        if (!m_isReading)
            m_session = QDateTime(); // its row was not written
        return;
    }
    const QModelIndex index = m_records->index(line);
    lstRecord->setCurrentIndex(index);
    lstRecord->scrollTo(index, m_session.isValid() ? QListView::EnsureVisible : QListView::PositionAtTop);
    m_session = QDateTime();
    m_days = DaySpan();
}

void HistoryPanel::ShowTallies(const HardByTitle &files)
{
    const QDate today = m_services.Now().date();
    picCalendar->ShowRead(today);
    tblFiles->ShowRead(m_tallies, files, today);
    ShowSentence();
}

/// The one sentence below the chart in view. Where there is room for one row, the list has only the totals there.
void HistoryPanel::ShowSentence()
{
    const QWidget *const shown = m_charts->currentWidget();
    const bool hasTotals = shown == lstRecord && !m_reader.HasFailed();
    lblSentence->setVisible(!hasTotals);
    m_totals->setVisible(!IsNarrow() || hasTotals);
    if (shown == tblFiles)
        lblSentence->SetText(tblFiles->Sentence());
    else
        lblSentence->SetText(shown == picCalendar ? picCalendar->Sentence() : picHistory->Sentence());
}
