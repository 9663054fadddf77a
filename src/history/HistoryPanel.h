// SPDX-FileCopyrightText: 2026 The Kotoban developers
// SPDX-License-Identifier: MIT

// The study history in the file selection window: the fields for its span, the list of sessions, the three charts on
// tabs, the totals and the commands that write the report.
#pragma once

#include "history/FileTable.h"
#include "history/modHistory.h"
#include "platform/modSystemServices.h"
#include "settings/modEditor.h"

#include <QElapsedTimer>
#include <QWidget>

class CalendarChart;
class ElidedLabel;
class frmMsg;
class HistoryChart;
class HistoryModel;
class QBoxLayout;
class QLabel;
class QLineEdit;
class QListView;
class QPushButton;
class QStackedLayout;
class QTabBar;
class QTimer;

class HistoryPanel : public QWidget
{
    Q_OBJECT

  public:
    /// @param reportFolder  where reports are written
    /// @param editor  opens reports; must outlive the panel
    /// @param userName  whose history to show
    /// @param tallies  the record of that user, for calendar and table; must outlive the panel
    HistoryPanel(SystemServices &services, StudyDatabase &database, frmMsg &msg, const QString &reportFolder,
                 const Editor &editor, const QString &userName, const StudyTallies &tallies, QWidget *parent);

    /// Resets the panel to the week ending today. @param session  start of the session to choose; may be invalid
    void ShowThisWeek(const QDateTime &session);

    /// Shows what has been read of the tallies by now. @param files  the study files that there are
    void ShowTallies(const HardByTitle &files);

    /// Whether there is more to read.
    bool IsReading() const
    {
        return m_isReading;
    }

    /// Stops reading. A report that was to be written afterwards is not.
    void Stop();

    /// Puts the controls between two others in the tab order.
    void SetTabOrderBetween(QWidget *before, QWidget *after);

    /// Puts the list of sessions on a tab of its own, where there is no room for it above a chart.
    void SetNarrow(bool isNarrow);

    /// Moves the focus to the list of sessions.
    void FocusRecords();

    /// Writes the sessions shown as a table for spreadsheets.
    void WriteTable();

  Q_SIGNALS:
    void FileAsked(const QString &title); ///< the user wants to study the file with this recorded title

  protected:
    void keyPressEvent(QKeyEvent *event) override;

  private:
    // Traced under the name of the window, frmFile.
    void txtWeekN_Change();
    void txtYmd_Change();
    void txtYmd_LostFocus();
    void cmdPrev_Click();
    void cmdInc_Click();
    void cmdFile_Click();
    void tabCharts_Click();

    /// What is written as soon as all has been read.
    enum class Wanted
    {
        Nothing,
        Report,
        Table,
    };

    void SetUpInputs();
    void SetUpList();
    void SetUpCharts();
    QBoxLayout *SpanRow();
    QBoxLayout *TotalsRow();
    bool IsNarrow() const;
    void ShowList();
    QDate DayInField() const;
    void ShowSentence();
    void ChooseWanted();
    void ShowDays(const DaySpan &days);
    void Write(Wanted wanted);
    void ShowRecordWhenValid();
    void ShowRecord(int weeks);
    void ReadOn();
    void ShowRead();

    SystemServices &m_services;
    frmMsg &m_msg;
    QString m_reportFolder;
    const Editor &m_editor;
    QString m_userName;
    const StudyTallies &m_tallies;
    HistoryReader m_reader;
    QTimer *m_reading; // to the next slice; not running during one, in which a message box may process events
    bool m_isReading = false;
    Wanted m_wanted = Wanted::Nothing;
    QDateTime m_session; // the session to choose once it has been read; invalid if there is none
    DaySpan m_days;      // the days to scroll to once they have been read
    QElapsedTimer m_sinceShown;

    HistoryModel *m_records;
    QLineEdit *txtYmd;
    QLineEdit *txtWeekN;
    QLabel *lblYmd;
    QLabel *lblUntil;
    QPushButton *cmdPrev;
    QPushButton *cmdInc;
    QListView *lstRecord;
    QTabBar *tabCharts;
    QBoxLayout *m_column;
    QStackedLayout *m_charts; // in the order of the tabs
    QWidget *m_totals;
    HistoryChart *picHistory;
    CalendarChart *picCalendar;
    FileTable *tblFiles;
    ElidedLabel *lblSentence;
    QLabel *lblSumTime;
    QLabel *lblSumAns;
    QPushButton *cmdFile;
};
