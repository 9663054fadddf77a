// SPDX-FileCopyrightText: 2026 The Kotoban developers
// SPDX-License-Identifier: MIT

#include "base/modDateText.h"
#include "base/modFile.h"
#include "exchange/modPrintableCopy.h"
#include "files/frmFile.h"
#include "history/HistoryPanel.h"
#include "history/modHistoryChart.h"
#include "settings/modSettings.h"
#include "store/modDB_SQLite.h"
#include "support/ReadHistory.h"
#include "support/Rows.h"
#include "support/WindowTest.h"
#include "text/modCheckText.h"

#include <QDeadlineTimer>
#include <QLabel>
#include <QLineEdit>
#include <QListView>
#include <QSignalSpy>
#include <QTest>

#include <gtest/gtest.h>

using namespace Qt::Literals::StringLiterals;

TEST(History, AnyValue_LineHasFixedWidthFields)
{
    const Rows<const char *, qint64, int, QString> rows = {
        {"under a minute", 59, 5, u"09:08      　59秒   5問 英単語"_s},
        {"one second", 1, 5, u"09:08      　 1秒   5問 英単語"_s},
        {"a minute", 60, 12, u"09:08     1分 0秒  12問 英単語"_s},
        {"hours are shown in minutes", 5999, 1234, u"09:08    99分59秒1234問 英単語"_s},
        {"digits that do not fit are lost", 60'000, 12345, u"09:08   000分 0秒2345問 英単語"_s},
    };
    for (const auto &[name, seconds, answers, line] : rows)
        EXPECT_EQ(HistoryLine(u"09:08:07"_s, seconds, answers, u"英単語"_s), line) << name;
    EXPECT_TRUE(HistoryLine(u"09:08:07"_s, 0, 0, u"a\tb\r\n\x1B"_s).endsWith(u"問 a b   "_s));
    EXPECT_EQ(HoursMinutesSeconds(3909), u"1時間 5分 9秒"_s);
    EXPECT_EQ(HoursMinutesSeconds(59), u"0分 59秒"_s);
    EXPECT_EQ(HoursMinutesSeconds(360'000), u"100時間 0分 0秒"_s);
}

TEST(History, InvalidWeeksOrDates_AreRejected)
{
    const Rows<QString, int> weeks = {{u"1"_s, 1},   {u"9999"_s, 9999}, {u"10000"_s, 0}, {u"0"_s, 0}, {u"-1"_s, 0},
                                      {u"1.5"_s, 0}, {QString(), 0},    {u"１"_s, 0},    {u" 2"_s, 0}};
    for (const auto &[text, count] : weeks)
        EXPECT_EQ(ReadWeeks(text), count) << text.toStdString();
    EXPECT_EQ(DateFromText(u"2024/02/29"), QDate(2024, 2, 29));
    for (const QString &text : {u"2023/02/29"_s, u"2024/2/9"_s, u"2024-02-29"_s, u"2024/02/2"_s, u"/-1//01/01"_s,
                                u"２０２４/02/02"_s, u"0000/01/01"_s, QString()})
        EXPECT_FALSE(DateFromText(text).isValid()) << text.toStdString();
}

TEST(History, UserNameWithPathCharacters_ReportStaysInFolder)
{
    const QDate today(2024, 3, 5);
    EXPECT_EQ(ReportFileName(u"花子"_s, today, 2), u"花子_瞬記帳学習記録2024_0305までの2週分.txt"_s);
    const QString name = ReportFileName(u"../a\\b:c"_s + QChar(0), today, 1);
    EXPECT_EQ(name, u".._a_b_c__瞬記帳学習記録2024_0305までの1週分.txt"_s);
    for (char16_t character = 0; character < u' '; ++character)
        EXPECT_FALSE(ReportFileName(QString(QChar(character)), today, 1).contains(QChar(character)));
}

TEST(HistoryBars, DaysOfSpan_AreGroupedOldestFirst)
{
    const QDate end(2024, 3, 5);
    History history(end, 2);
    for (const auto &[day, seconds] : std::initializer_list<std::pair<QDate, int>>{{end.addDays(1), 9},
                                                                                   {end, 5},
                                                                                   {end.addDays(-1), 4},
                                                                                   {end.addDays(-6), 3},
                                                                                   {end.addDays(-13), 2},
                                                                                   {QDate(), 9},
                                                                                   {end.addDays(-14), 9}}) {
        const QString ended = DateText(day) + u" 10:00:0"_s + QString::number(seconds);
        history.Append({DateText(day), u"10:00:00", u"a", ended, 10 * seconds});
    }
    const Rows<const char *, int, std::vector<int>> rows = {
        {"room for more than every day", 500, {2, 0, 0, 0, 0, 0, 0, 3, 0, 0, 0, 0, 4, 5}},
        {"a bar a day", 14, {2, 0, 0, 0, 0, 0, 0, 3, 0, 0, 0, 0, 4, 5}},
        {"a bar a week", 2, {2, 12}},
        {"bars of four and five days", 3, {2, 3, 9}},
        {"one bar", 1, {14}},
    };
    for (const auto &[name, maxBars, seconds] : rows) {
        std::vector<int> barSeconds;
        for (const HistoryBar &bar : HistoryBars(history, maxBars)) {
            barSeconds.push_back(int(bar.seconds));
            EXPECT_EQ(bar.answers, 10 * bar.seconds) << name;
        }
        EXPECT_EQ(barSeconds, seconds) << name;
    }
    EXPECT_TRUE(HistoryBars(History(), 14).empty());
}

TEST(PrintableCopy, Written_KeepsTextAndBlanksAnswers)
{
    const TestFolder folder;
    const QString source = folder.WriteStudyFile(u"week1.rev.txt"_s, {u"水は[H2O]で[塩ｱ]\t[]"_s, u"［全角］"_s});
    const QString copy = PrintableCopyPath(folder.Path(), source);
    EXPECT_EQ(copy, QDir::toNativeSeparators(folder.Path(u"week1_印刷用.txt"_s)));
    for (const QString &name : {u"..txt"_s, u"a\\..\\b.txt"_s, u"$(x) \"'`;\n.txt"_s, u"-rf.txt"_s})
        EXPECT_EQ(QFileInfo(PrintableCopyPath(folder.Path(), folder.Path(name))).path(), folder.Path())
            << name.toStdString();
    PrintableCopy made;
    EXPECT_FALSE(made.Read(source));
    EXPECT_FALSE(made.GoOn(QDeadlineTimer(QDeadlineTimer::Forever)));
    EXPECT_FALSE(WritePrintableCopy(made.Bytes(), copy, OldCopy::Replaceable));
    const QByteArray written = folder.Read(u"week1_印刷用.txt"_s);
    EXPECT_EQ(FromCodePage932(written), u"水は[___]で[＿_]  []\r\n［全角］\r\n"_s);

    const QString bad = folder.WriteStudyFile(u"bad.txt"_s, {u"[a"_s});
    EXPECT_EQ(made.Read(bad).message, BracketCountMessage(1, u"[a"));
    EXPECT_EQ(made.Bytes(), QByteArray()) << "nothing to write";
    const QString nowhere = folder.Path(u"none/x.txt"_s);
    EXPECT_EQ(WritePrintableCopy(written, nowhere, OldCopy::Replaceable).path, nowhere);
}

TEST(PrintableCopy, EditedByHand_IsAskedForOrBackedUp)
{
    const TestFolder folder;
    const QDateTime before(QDate(2024, 3, 5), QTime(9, 0));
    const Rows<const char *, QByteArray, int, OldCopy> rows = {
        {"unchanged", "x[_]\r\n", 60, OldCopy::Replaceable},
        {"unchanged, the study file saved again", "x[_]\r\n", -60, OldCopy::Replaceable},
        {"edited", "x[_]!\r\n", 60, OldCopy::Edited},
        {"edited, and the study file changed later", "x[_]!\r\n", -60, OldCopy::Outdated},
        {"edited at the same time", "y[_]\r\n", 0, OldCopy::Outdated},
        {"too large to read", QByteArray(MaxFileBytes + 1, 'x'), 60, OldCopy::Unreadable},
    };
    QFile source(folder.Write(u"a.txt"_s, "x[a]\r\n"));
    QFile copy(PrintableCopyPath(folder.Path(), source.fileName()));
    const QByteArray made = "x[_]\r\n";
    EXPECT_EQ(JudgeOldCopy(made, source.fileName(), copy.fileName()), OldCopy::Replaceable) << "no copy";
    for (const auto &[name, bytes, seconds, expected] : rows) {
        folder.Write(u"a_印刷用.txt"_s, bytes);
        folder.Write(u"a_印刷用.txt.bak"_s, "kept before");
        for (QFile *const file : {&source, &copy}) {
            ASSERT_TRUE(file->open(QIODevice::ReadWrite));
            file->setFileTime(before.addSecs(file == &copy ? seconds : 0), QFileDevice::FileModificationTime);
            file->close();
        }
        EXPECT_EQ(JudgeOldCopy(made, source.fileName(), copy.fileName()), expected) << name;
        EXPECT_FALSE(WritePrintableCopy(made, copy.fileName(), expected)) << name;
        EXPECT_EQ(folder.Read(u"a_印刷用.txt"_s), made) << name;
        EXPECT_EQ(folder.Read(u"a_印刷用.txt.bak"_s), expected == OldCopy::Outdated ? bytes : "kept before") << name;
        EXPECT_EQ(CopyMadeMessage(copy.fileName(), expected).contains(u"a_印刷用.txt.bak"_s),
                  expected == OldCopy::Outdated)
            << name;
    }
    folder.MakeFolder(u"b_印刷用.txt.bak"_s); // takes the place of the backup
    const QString other = folder.Write(u"b_印刷用.txt"_s, "by hand");
    EXPECT_EQ(WritePrintableCopy(made, other, OldCopy::Outdated).path, other + u".bak"_s);
    EXPECT_EQ(folder.Read(u"b_印刷用.txt"_s), "by hand");
}

namespace {

class HistoryWindowTest : public WindowTest
{
  protected:
    HistoryWindowTest()
    {
        folder.MakeFolder(u"rec"_s);
        folder.WriteStudyFile(u"txt/a.txt"_s, {u"[ok]"_s});
        EXPECT_EQ(database.Open(u":memory:"_s), 0);
        EXPECT_TRUE(DBCreateKotoban(database));
        AddSession(QDateTime(QDate(2024, 3, 5), QTime(10, 0)), 3609, 3);
        AddSession(QDateTime(QDate(2024, 3, 5), QTime(8, 0)), 30, 4);
        AddSession(QDateTime(QDate(2024, 2, 21), QTime(9, 0)), 60, 5);
        AddSession(QDateTime(QDate(2024, 2, 20), QTime(9, 0)), 60, 99);
    }

    void AddSession(const QDateTime &start, int seconds, int answers)
    {
        DBInsRecKotoban(database, start, u"花/子"_s, u"a"_s);
        RecordingServices clock;
        clock.now = start.addSecs(seconds);
        DBUpdRecKotoban(database, clock, start, u"花/子"_s, answers);
    }

    /// Lets the window read all that it shows; on a slow machine that takes more than one slice.
    void LetRead() const
    {
        EXPECT_TRUE(WaitFor([this] { return !window.findChild<HistoryPanel *>()->IsReading(); }));
    }

    QStringList Records() const
    {
        LetRead();
        const QAbstractItemModel *const model = window.findChild<QListView *>(u"lstRecord"_s)->model();
        QStringList lines;
        for (int row = 0; row < model->rowCount(); ++row)
            lines += model->index(row, 0).data().toString();
        return lines;
    }

    QString Label(const QString &name) const
    {
        LetRead();
        return window.findChild<QLabel *>(name)->text();
    }

    StudyDatabase database{services};
    SettingsFile settings{folder.Path(u"Kotoban.ini"_s)};
    frmFile window{services, database, msg, settings, folder.Path(), u"花/子"_s, nullptr};
};

} // namespace

TEST_F(HistoryWindowTest, SpanEntered_ShowsItsSessions)
{
    const QStringList thisWeek = {u"2024/03/05(火)"_s, u"08:00      　30秒   4問 a"_s, u"10:00    60分 9秒   3問 a"_s};
    const QStringList twoWeeks = thisWeek + QStringList{u"2024/02/21(水)"_s, u"09:00     1分 0秒   5問 a"_s};
    script.When(u"frmFile"_s, [&](QWidget *dialog) {
        auto *const weeks = dialog->findChild<QLineEdit *>(u"txtWeekN"_s);
        auto *const date = dialog->findChild<QLineEdit *>(u"txtYmd"_s);
        EXPECT_EQ(date->text(), u"2024/03/05"_s);
        EXPECT_EQ(Records(), thisWeek);
        dialog->findChild<QAbstractButton *>(u"cmdInc"_s)->click();
        EXPECT_EQ(weeks->text(), u"2"_s);
        EXPECT_EQ(Records(), twoWeeks);
        EXPECT_EQ(Label(u"lblSumTime"_s), u"1時間 1分 39秒"_s);
        EXPECT_EQ(Label(u"lblSumAns"_s), u"12"_s);
        weeks->setText(u"x"_s);
        date->setText(u"2024/02/3"_s);
        EXPECT_EQ(Records(), twoWeeks) << "invalid input changes nothing";
        weeks->setText(u"1"_s);
        date->setText(u"2024/02/21"_s);
        EXPECT_EQ(Records().size(), 4);
        weeks->setText(u"9999"_s);
        EXPECT_EQ(Records().size(), 4);
        dialog->findChild<QAbstractButton *>(u"cmdInc"_s)->click();
        EXPECT_EQ(weeks->text(), u"9999"_s) << "the maximum";
        dialog->close();
    });
    EXPECT_EQ(window.Choose(u"notepad.exe"_s), FileChoice::Cancelled);
    EXPECT_TRUE(services.messages.isEmpty());
}

TEST_F(HistoryWindowTest, ClockSetBack_CountsAsNoTime)
{
    EXPECT_TRUE(database.SQLite3NonQuery(u"delete from t_kotoban"_s));
    AddSession(QDateTime(QDate(2024, 3, 5), QTime(10, 0)), -3601, 3);
    window.show();
    EXPECT_EQ(Records().value(1), u"10:00      　 0秒   3問 a"_s);
    EXPECT_EQ(Label(u"lblSumTime"_s), u"0分 0秒"_s);
    EXPECT_EQ(Label(u"lblSumAns"_s), u"3"_s);
    AddSession(QDateTime(QDate(2024, 3, 5), QTime(12, 0)), 3602, 3);
    EXPECT_EQ(ReadHistory(database, QDate(2024, 3, 5), 1, u"花/子"_s).TotalTime(), u"0分 1秒"_s)
        << "the plain sum of the sessions";
}

TEST_F(HistoryWindowTest, ReportRequested_IsWrittenAndOffered)
{
    script.When(u"frmFile"_s, [](QWidget *dialog) {
        dialog->findChild<QLineEdit *>(u"txtYmd"_s)->setText(u"2024/02/21"_s);
        dialog->findChild<QAbstractButton *>(u"cmdFile"_s)->click();
    });
    script.Click(u"frmMsg"_s, u"cmdOK"_s);
    script.When(u"frmFile"_s, [this](QWidget *dialog) {
        QDir(folder.Path(u"rec"_s)).removeRecursively();
        dialog->findChild<QAbstractButton *>(u"cmdFile"_s)->click();
    });
    script.When(u"frmMsg"_s, [](QWidget *dialog) {
        EXPECT_FALSE(dialog->findChild<QAbstractButton *>(u"cmdCancel"_s)->isVisible());
        dialog->findChild<QAbstractButton *>(u"cmdOK"_s)->click();
    });
    script.Click(u"frmFile"_s, u"cmdCancel"_s);
    window.Choose(u"notepad.exe"_s);
    ASSERT_EQ(script.messages.size(), 2);
    EXPECT_EQ(script.messages[0], u"学習記録をファイルに出力しました。\nこのファイルを開きますか？\n"_s);
    EXPECT_TRUE(script.messages[1].startsWith(u"学習記録をファイルに出力できません。"_s));
    ASSERT_EQ(services.commands.size(), 1);
    EXPECT_TRUE(services.commands[0].endsWith(QDir::separator() + u"花_子_瞬記帳学習記録2024_0305までの1週分.txt\""_s))
        << "named by today's date";
}

TEST_F(HistoryWindowTest, HistoryNotRead_SaysSoAndKeepsTheReport)
{
    const QString report = u"rec/花_子_瞬記帳学習記録2024_0305までの1週分.txt"_s;
    auto *const weeks = window.findChild<QLineEdit *>(u"txtWeekN"_s);
    const auto *const chart = window.findChild<QWidget *>(u"picHistory"_s);
    window.show();
    script.Click(u"frmMsg"_s, u"cmdCancel"_s);
    window.findChild<QAbstractButton *>(u"cmdFile"_s)->click();
    const QByteArray written = folder.Read(report);
    EXPECT_EQ(FromCodePage932(written), ReportText(ReadHistory(database, QDate(2024, 3, 5), 1, u"花/子"_s)));
    EXPECT_EQ(chart->accessibleDescription(), QString());

    EXPECT_TRUE(database.SQLite3NonQuery(u"alter table t_kotoban rename to t_away"_s));
    weeks->setText(u"2"_s);
    weeks->setText(u"1"_s);
    EXPECT_EQ(services.TakeMessages().size(), 2) << "the access layer's, one for each span";
    EXPECT_TRUE(Records().isEmpty());
    EXPECT_EQ(chart->accessibleDescription(), u"読めませんでした"_s);
    EXPECT_EQ(Label(u"lblSumTime"_s) + Label(u"lblSumAns"_s), QString());
    script.Click(u"frmMsg"_s, u"cmdOK"_s);
    window.findChild<QAbstractButton *>(u"cmdFile"_s)->click();
    EXPECT_EQ(script.messages.last(), u"学習記録を読めなかったため，ファイルに出力できません。"_s);
    EXPECT_EQ(folder.Read(report), written);

    EXPECT_TRUE(database.SQLite3NonQuery(u"alter table t_away rename to t_kotoban"_s));
    weeks->setText(u"2"_s);
    EXPECT_EQ(Records().size(), 5);
    EXPECT_EQ(chart->accessibleDescription(), QString());
    window.findChild<QLineEdit *>(u"txtYmd"_s)->setText(u"2020/01/01"_s);
    EXPECT_EQ(chart->accessibleDescription(), u"この期間の記録はありません"_s);
}

TEST_F(HistoryWindowTest, TotalNotRead_LeavesHistoryEmpty)
{
    // Each value can be read, but not their sum.
    EXPECT_TRUE(database.SQLite3NonQuery(u"update t_kotoban set num_answer = 9223372036854775807"_s));
    HistoryReader reader(database, u"花/子"_s);
    reader.Begin(QDate(2024, 3, 5), 1);
    reader.GoOn(QDeadlineTimer(QDeadlineTimer::Forever));
    EXPECT_TRUE(reader.HasFailed());
    EXPECT_EQ(reader.Result().LineCount(), 0);
    EXPECT_FALSE(services.messages.isEmpty());
}

TEST_F(HistoryWindowTest, WeekWithSessions_ReportHasListAndTotals)
{
    const History history = ReadHistory(database, QDate(2024, 3, 5), 1, u"花/子"_s);
    EXPECT_EQ(ReportText(history), u"2024/03/05(火)\r\n08:00      　30秒   4問 a\r\n10:00    60分 9秒   3問 a\r\n"
                                   u"総学習時間＝1時間 0分 39秒  総回答数＝7\r\n"_s);
    ASSERT_EQ(history.Days().size(), 1u);
    EXPECT_EQ(history.Days()[0].seconds, 3639);
    EXPECT_EQ(history.Days()[0].answers, 7);
    database.Close();
    EXPECT_EQ(ReadHistory(database, QDate(2024, 3, 5), 1, u"花/子"_s).LineCount(), 0);
    EXPECT_EQ(services.messages.size(), 1) << "the totals must not report the same fault again";
}

TEST_F(HistoryWindowTest, ForeignTable_IsStillRead)
{
    const QDateTime start(QDate(2024, 3, 5), QTime(11, 0));
    EXPECT_TRUE(database.SQLite3NonQuery(u"update t_kotoban set ymd_sta = '2024/02/3x' where num_answer = 3"_s));
    const History foreign = ReadHistory(database, start.date(), 1, u"花/子"_s);
    ASSERT_EQ(foreign.LineCount(), 4);
    EXPECT_EQ(foreign.Line(2), u"2024/02/3x"_s) << "an invalid date is shown as recorded";
    EXPECT_EQ(foreign.Line(3), u"10:00      　 0秒   3問 a"_s) << "without a start there is no duration";
    AddSession(start, 1, 2'147'483'647);
    AddSession(start.addSecs(60), 1, 2'147'483'647);
    EXPECT_EQ(ReadHistory(database, start.date(), 1, u"花/子"_s).Days().at(0).answers, 2 * 2'147'483'647LL + 4);
    // SQLite reports column names in the case of their declaration.
    EXPECT_TRUE(database.SQLite3NonQuery(u"alter table t_kotoban rename column ymd_sta to YMD_STA"_s));
    EXPECT_EQ(ReadHistory(database, start.date(), 1, u"花/子"_s).LineCount(), 6);
    EXPECT_EQ(services.messages, QStringList());
}

namespace {

/// Adds sessions before the existing ones, ten per day, some of them never completed.
void AddManySessions(StudyDatabase *database, int count)
{
    const QString start = u"datetime('2024-02-01', '-' || (i / 10) || ' days', (8 + i % 10) || ' hours')"_s;
    EXPECT_TRUE(database->SQLite3NonQuery(
        u"insert into t_kotoban with recursive n(i) as (select 0 union all select i + 1 from n where i < %1) "
        u"select strftime('%Y/%m/%d', %2), '花/子', strftime('%H:%M:%S', %2), 'f' || (i % 7), "
        u"strftime('%Y/%m/%d %H:%M:%S', %2, (i % 3000) || ' seconds'), nullif(i % 13, 0) from n"_s.arg(count - 1)
            .arg(start)));
}

} // namespace

TEST_F(HistoryWindowTest, ReadInSlices_YieldsWholeHistory)
{
    AddManySessions(&database, 5000);
    // A slice can begin with none of these, because its statement would lack some of them or repeat others.
    const Rows<QString, QString> foreignDays = {
        {u"2023/11/29"_s, u"2023/11/31"_s}, {u"2023/11/02"_s, u"2023/11/02x"_s}, {u"2023/10/31"_s, u"2023/10/31 "_s}};
    for (const auto &[day, foreign] : foreignDays)
        EXPECT_TRUE(database.SQLite3NonQuery(
            u"update t_kotoban set ymd_sta = '%1' where ymd_sta = '%2' and num_answer < 6"_s.arg(foreign, day)));
    const QDate end(2024, 3, 5);
    constexpr int weeks = 100;
    ResultTable table;
    ASSERT_TRUE(DBSelRecKotoban(database, end, weeks * 7, u"花/子"_s, &table, false));
    QStringList expected;
    for (int row = 1; row < int(table.size()); ++row) {
        const auto value = [&](const QString &column) { return database.SQLite3GetColumn(table, row, column); };
        const QString dayText = value(u"ymd_sta"_s).left(10);
        const QDate day = DateFromText(dayText);
        const QString heading = day.isValid() ? DateWithWeekday(day) : dayText;
        if (!expected.contains(heading))
            expected += heading;
        expected += HistoryLine(value(u"hms_sta"_s), SecondsBetween(dayText, value(u"hms_sta"_s), value(u"dt_end"_s)),
                                value(u"num_answer"_s).toInt(), value(u"file_name"_s));
    }
    HistoryReader reader(database, u"花/子"_s);
    reader.Begin(end, weeks);
    int slices = 1;
    int most = 0;
    for (bool isMore = true; isMore; ++slices) {
        const int before = reader.Result().LineCount();
        isMore = reader.GoOn(QDeadlineTimer(0));
        most = qMax(most, reader.Result().LineCount() - before);
    }
    EXPECT_GT(slices, 400) << "a day each";
    EXPECT_LT(most, 40);
    QStringList lines;
    for (int line = 0; line < reader.Result().LineCount(); ++line)
        lines += reader.Result().Line(line);
    EXPECT_EQ(lines, expected);
    EXPECT_EQ(reader.Result().TotalTime(), HoursMinutesSeconds(DBSumTimeKotoban(database, end, weeks * 7, u"花/子"_s)));
    EXPECT_EQ(reader.Result().TotalAnswers(), QString::number(DBSumAnsKotoban(database, end, weeks * 7, u"花/子"_s)));
    reader.Begin(end, 1);
    EXPECT_FALSE(reader.GoOn(QDeadlineTimer(0)));
    EXPECT_EQ(reader.Result().LineCount(), 3) << "nothing remains of the previous history";
}

TEST_F(HistoryWindowTest, ReportRequestedWhileReading_IsWrittenOnceAllIsRead)
{
    AddManySessions(&database, 50'000);
    window.show();
    auto *const weeks = window.findChild<QLineEdit *>(u"txtWeekN"_s);
    weeks->setText(u"999"_s);
    const QString reading = window.findChild<QLabel *>(u"lblSumTime"_s)->text();
    EXPECT_TRUE(reading.startsWith(u"読み込み中…（20"_s)) << reading.toStdString();
    EXPECT_FALSE(Records().isEmpty());
    weeks->setText(u"9999"_s);
    script.Click(u"frmMsg"_s, u"cmdCancel"_s);
    window.findChild<QAbstractButton *>(u"cmdFile"_s)->click();
    EXPECT_TRUE(QDir(folder.Path(u"rec"_s)).isEmpty()) << "the report would be incomplete";
    EXPECT_TRUE(WaitFor([this] { return script.messages.size() == 1; }));
    EXPECT_EQ(Label(u"lblSumAns"_s), QString::number(DBSumAnsKotoban(database, QDate(2024, 3, 5), 69'993, u"花/子"_s)));
    EXPECT_GT(Records().size(), 50'000);
    EXPECT_FALSE(QDir(folder.Path(u"rec"_s)).isEmpty());
}

TEST_F(HistoryWindowTest, QuestionOpenWhileReading_ReportAndFaultsWaitForItsAnswer)
{
    AddManySessions(&database, 50'000);
    window.show();
    auto *const weeks = window.findChild<QLineEdit *>(u"txtWeekN"_s);
    auto *const reading = window.findChild<QTimer *>(u"tmrRecord"_s);
    const auto waitForSlices = [&](QWidget *) {
        const QSignalSpy slices(reading, &QTimer::timeout);
        EXPECT_TRUE(WaitFor([&slices] { return slices.size() >= 3; }));
        EXPECT_TRUE(services.messages.isEmpty());
        EXPECT_EQ(msg.findChild<QLabel *>(u"lblMsg"_s)->text(), u"続けますか？"_s);
        if (weeks->text() == u"999")
            script.Click(u"frmMsg"_s, u"cmdCancel"_s); // for the report
        msg.findChild<QAbstractButton *>(u"cmdCancel"_s)->click();
    };
    weeks->setText(u"999"_s);
    window.findChild<QAbstractButton *>(u"cmdFile"_s)->click();
    script.When(u"frmMsg"_s, waitForSlices);
    EXPECT_EQ(msg.DispFrmMsg(&window, u"続けますか？"_s, MsgStyle::YesNo, QString()), MsgResult::Cancel);
    EXPECT_TRUE(WaitFor([this] { return script.IsDone(); }));
    EXPECT_FALSE(QDir(folder.Path(u"rec"_s)).isEmpty());

    weeks->setText(u"998"_s);
    database.Close();
    script.When(u"frmMsg"_s, waitForSlices);
    EXPECT_EQ(msg.DispFrmMsg(&window, u"続けますか？"_s, MsgStyle::YesNo, QString()), MsgResult::Cancel);
    EXPECT_TRUE(WaitFor([this] { return services.messages.size() == 1; }));
}

TEST_F(HistoryWindowTest, WindowHiddenWhileReading_AllReadingStops)
{
    AddManySessions(&database, 50'000);
    window.show();
    window.findChild<QLineEdit *>(u"txtWeekN"_s)->setText(u"999"_s);
    const QList<QTimer *> reading = {window.findChild<QTimer *>(u"tmrRecord"_s),
                                     window.findChild<QTimer *>(u"tmrTally"_s)};
    for (const bool isShown : {true, false}) {
        window.setVisible(isShown);
        for (const QTimer *const timer : reading)
            EXPECT_EQ(timer->isActive(), isShown) << timer->objectName().toStdString();
    }
}

TEST_F(HistoryWindowTest, FaultAfterSomeSlices_EmptiesTheListAndWritesNoReport)
{
    AddManySessions(&database, 50'000);
    EXPECT_TRUE(database.SQLite3NonQuery(u"alter table t_kotoban drop column dt_end"_s));
    EXPECT_TRUE(database.SQLite3NonQuery(u"alter table t_kotoban add column dt_end text as "_s +
                                         u"(case ymd_sta when '2012/01/02' then abs(-9223372036854775807 - 1) end)"_s));
    window.show();
    window.findChild<QLineEdit *>(u"txtWeekN"_s)->setText(u"999"_s);
    auto *const list = window.findChild<QListView *>(u"lstRecord"_s);
    list->setCurrentIndex(list->model()->index(2, 0));
    script.Click(u"frmMsg"_s, u"cmdOK"_s);
    window.findChild<QAbstractButton *>(u"cmdFile"_s)->click();
    EXPECT_TRUE(WaitFor([this] { return script.messages.size() == 1; }));
    EXPECT_EQ(script.messages, QStringList(u"学習記録を読めなかったため，ファイルに出力できません。"_s));
    EXPECT_TRUE(QDir(folder.Path(u"rec"_s)).isEmpty());
    EXPECT_TRUE(Records().isEmpty());
    EXPECT_EQ(services.messages.filter(u"SQLite3Step returned"_s).size(), 1);
}

TEST_F(HistoryWindowTest, PrintableCopyRequested_IsMadeButNotOfACopy)
{
    const auto select = [](QWidget *dialog, int row) {
        auto *const list = dialog->findChild<QListView *>(u"lstFile"_s);
        list->setCurrentIndex(list->model()->index(row, 0));
        DialogScript::Press(dialog, u"cmdConvFile"_s);
    };
    script.When(u"frmFile"_s, [select](QWidget *dialog) { select(dialog, 0); });
    script.Click(u"frmMsg"_s, u"cmdOK"_s);
    script.When(u"frmFile"_s, [select](QWidget *dialog) { select(dialog, 1); });
    script.Click(u"frmMsg"_s, u"cmdOK"_s);
    script.When(u"frmFile"_s, [&](QWidget *dialog) {
        folder.Write(u"txt/a_印刷用.txt"_s, "by hand");
        select(dialog, 0);
    });
    script.Click(u"frmMsg"_s, u"cmdCancel"_s);
    script.Click(u"frmFile"_s, u"cmdCancel"_s);
    window.Choose(u"notepad.exe"_s);
    const QString copy = QDir::toNativeSeparators(folder.Path(u"txt/a_印刷用.txt"_s));
    ASSERT_EQ(script.messages.size(), 3);
    EXPECT_EQ(script.messages[0], CopyMadeMessage(copy, OldCopy::Replaceable).replace(u"\r\n"_s, u"\n"_s));
    ASSERT_EQ(services.commands.size(), 1) << "opened after the user accepted";
    EXPECT_TRUE(services.commands[0].contains(u"a_印刷用.txt")) << services.commands[0].toStdString();
    EXPECT_EQ(script.messages[1], u"印刷用ファイル以外を一つ選択してください。"_s);
    EXPECT_EQ(script.messages[2], ReplaceCopyQuestion(copy, OldCopy::Edited).replace(u"\r\n"_s, u"\n"_s));
    EXPECT_EQ(folder.Read(u"txt/a_印刷用.txt"_s), "by hand");
}
