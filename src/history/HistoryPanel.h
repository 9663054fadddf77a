// SPDX-FileCopyrightText: 2026 The Kotoban developers
// SPDX-License-Identifier: MIT

// The study history in the file selection window: the fields for its span, the list of sessions, the chart, the totals
// and the button that writes the report.
#pragma once

#include "history/modHistory.h"
#include "platform/modSystemServices.h"
#include "settings/modEditor.h"

#include <QElapsedTimer>
#include <QWidget>

class frmMsg;
class HistoryChart;
class HistoryModel;
class QBoxLayout;
class QLabel;
class QLineEdit;
class QListView;
class QPushButton;
class QTimer;

class HistoryPanel : public QWidget
{
    Q_OBJECT

  public:
    /// @param reportFolder  where reports are written
    /// @param editor  opens reports; must outlive the panel
    /// @param userName  whose history to show
    HistoryPanel(SystemServices &services, StudyDatabase &database, frmMsg &msg, const QString &reportFolder,
                 const Editor &editor, const QString &userName, QWidget *parent);

    /// Resets the panel to the week ending today.
    void ShowThisWeek();

    /// Whether there is more to read.
    bool IsReading() const
    {
        return m_isReading;
    }

    /// Stops reading. A report that was to be written afterwards is not.
    void Stop();

    /// Puts the controls between two others in the tab order.
    void SetTabOrderBetween(QWidget *before, QWidget *after);

    /// Moves the focus to the list of sessions.
    void FocusRecords();

  protected:
    void keyPressEvent(QKeyEvent *event) override;

  private:
    // Traced under the name of the window, frmFile.
    void txtWeekN_Change();
    void txtYmd_Change();
    void cmdInc_Click();
    void cmdFile_Click();

    void SetUpInputs();
    void SetUpList();
    QBoxLayout *SpanRow();
    QBoxLayout *TotalsRow();
    void ShowRecordWhenValid();
    void ShowRecord(int weeks);
    void ReadOn();
    void ShowRead();

    SystemServices &m_services;
    frmMsg &m_msg;
    QString m_reportFolder;
    const Editor &m_editor;
    QString m_userName;
    HistoryReader m_reader;
    QTimer *m_reading; // to the next slice; not running during one, in which a message box may process events
    bool m_isReading = false;
    bool m_isReportWanted = false; // as soon as all is read
    QElapsedTimer m_sinceShown;

    HistoryModel *m_records;
    QLineEdit *txtYmd;
    QLineEdit *txtWeekN;
    QPushButton *cmdInc;
    QListView *lstRecord;
    HistoryChart *picHistory;
    QLabel *lblSumTime;
    QLabel *lblSumAns;
    QPushButton *cmdFile;
};
