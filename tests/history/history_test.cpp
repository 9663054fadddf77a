// SPDX-FileCopyrightText: 2026 The Kotoban developers
// SPDX-License-Identifier: MIT

#include "base/modDateText.h"
#include "base/modFile.h"
#include "exchange/modPrintableCopy.h"
#include "files/frmFile.h"
#include "history/DayChart.h"
#include "history/HistoryPanel.h"
#include "history/modCalendar.h"
#include "history/modHistoryBars.h"
#include "settings/modSettings.h"
#include "store/modDB_SQLite.h"
#include "support/ReadHistory.h"
#include "support/Rows.h"
#include "support/WindowTest.h"
#include "text/modCheckText.h"

#include <QAction>
#include <QDeadlineTimer>
#include <QLabel>
#include <QLineEdit>
#include <QListView>
#include <QSignalSpy>
#include <QTabBar>
#include <QTableView>
#include <QTest>

#include <gtest/gtest.h>
#include <set>

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

namespace {

History HistoryOf(const QDate &end, int weeks, const std::vector<std::pair<QDate, int>> &secondsOfDays)
{
    History history(end, weeks);
    for (const auto &[day, seconds] : secondsOfDays) {
        const QString ended = DateTimeText(QDateTime(day, QTime(10, 0)).addSecs(seconds));
        history.Append({DateText(day), u"10:00:00", u"a", ended, 10});
    }
    return history;
}

} // namespace

TEST(HistoryBars, EachLengthOfSpan_HasItsBars)
{
    const QDate end(2024, 3, 5);
    const std::vector<std::pair<QDate, int>> days = {
        {end.addDays(1), 9},   {end, 5},     {end.addDays(-1), 4},  {end.addDays(-6), 3},
        {end.addDays(-13), 2}, {QDate(), 9}, {end.addDays(-40), 7}, {QDate(2023, 12, 31), 6}};
    const Rows<const char *, int, std::vector<int>, QStringList> rows = {
        {"a bar a day", 2, {2, 0, 0, 0, 0, 0, 0, 3, 0, 0, 0, 0, 4, 5}, {u"水"_s, u"月"_s, u"今日"_s}},
        {"a bar a week, ending with the last day", 3, {0, 2, 12}, {u"2/14"_s, u"2/21"_s, u"2/28"_s}},
        {"a bar a month from the first with a session", 53, {6, 7, 5, 9}, {u"12月"_s, u"2月"_s, u"3月"_s}},
        {"no more bars for a span beyond all records", 9999, {6, 7, 5, 9}, {u"12月"_s, u"2月"_s, u"3月"_s}},
    };
    for (const auto &[name, weeks, seconds, names] : rows) {
        const std::vector<HistoryBar> bars = HistoryBars(HistoryOf(end, weeks, days));
        std::vector<int> barSeconds;
        barSeconds.reserve(bars.size());
        for (const HistoryBar &bar : bars)
            barSeconds.push_back(int(bar.sum.seconds));
        EXPECT_EQ(barSeconds, seconds) << name;
        const auto nameOf = [&, weeks = weeks](size_t bar) { return BarName(bars[bar], SpanOfBars(weeks), end); };
        EXPECT_EQ((QStringList{nameOf(0), nameOf(bars.size() - 2), nameOf(bars.size() - 1)}), names) << name;
    }
    EXPECT_TRUE(HistoryBars(History()).empty());
    EXPECT_EQ(HistoryBars(History(end, 60)).size(), 1u) << "no session";
}

TEST(HistoryBars, EveryBar_SaysWhatItStandsFor)
{
    const QDate today(2026, 11, 24);
    const HistoryBar day{{today, today}, {25 * 60 + 59, 134}};
    const HistoryBar empty{{QDate(2025, 1, 1), QDate(2025, 1, 31)}};
    EXPECT_EQ(BarText(day, BarSpan::Day, today), u"11/24(火) 25分 134問"_s);
    EXPECT_EQ(BarText({{today.addDays(-6), today}, {3600, 2}}, BarSpan::Week, today),
              u"11/18(水)～11/24(火) 1時間0分 2問"_s);
    EXPECT_EQ(BarText(empty, BarSpan::Month, today), u"2025年1月 なし"_s);
    EXPECT_EQ(BarDetail(empty, BarSpan::Month), u"2025"_s);
    EXPECT_EQ(BarDetail(day, BarSpan::Day), u"134問"_s);
    const Rows<qint64, int, QString> values = {{0, 0, u"なし"_s},       {0, 1, u"0分"_s},        {1, 1, u"1分"_s},
                                               {59, 1, u"1分"_s},       {119, 1, u"1分"_s},      {3600, 1, u"60分"_s},
                                               {59'999, 1, u"999分"_s}, {60'000, 1, u"16時間"_s}};
    for (const auto &[seconds, answers, text] : values)
        EXPECT_EQ(BarValue({{}, {seconds, answers}}, 7), text) << seconds;
    EXPECT_EQ(BarValue(empty, 14), QString()) << "no room";
}

TEST(HistoryBars, BarsInArea_AreFoundWhereTheyStand)
{
    const QDate end(2024, 3, 5);
    const std::vector<HistoryBar> bars = HistoryBars(HistoryOf(end, 1, {{end, 3600}, {end.addDays(-1), 10}}));
    const BarPlaces places(bars, QSizeF(700, 200), 14);
    EXPECT_DOUBLE_EQ(places.Bar(6).top(), 1.7 * 14) << "the highest leaves room for its value";
    EXPECT_DOUBLE_EQ(places.Bar(5).height(), qMax(2.0, places.Bar(6).height() / 60));
    EXPECT_TRUE(places.Bar(4).isEmpty());
    EXPECT_LE(places.Bar(6).right(), 700);
    const Rows<double, int> hits = {{-0.1, -1}, {0, 0}, {99.9, 0}, {100, 1}, {699.9, 6}, {700, -1}};
    for (const auto &[x, bar] : hits)
        EXPECT_EQ(places.BarAt(QPointF(x, 100)), bar) << x;
    const BarPlaces narrow(bars, QSizeF(9, 200), 14);
    EXPECT_EQ(narrow.First(), 4u) << "the last three at three pixels each";
    EXPECT_EQ(narrow.BarAt(QPointF(8.9, 0)), 6);
    const std::vector<HistoryBar> minute = HistoryBars(HistoryOf(end, 1, {{end, 60}}));
    EXPECT_DOUBLE_EQ(BarPlaces(minute, QSizeF(700, 200), 14).Bar(6).height() * 10, places.Bar(6).height())
        << "a minute does not fill the chart";
}

TEST(HistoryBars, LittleRoom_LeavesOutNamesRegularly)
{
    const QDate end(2024, 3, 5);
    const auto named = [&](int weeks, double width, const QDate &first) {
        const std::vector<HistoryBar> bars = HistoryBars(HistoryOf(end, weeks, {{first, 60}}));
        const BarPlaces places(bars, QSizeF(width, 200), 14);
        QStringList names;
        for (size_t bar = places.First(); bar < bars.size(); ++bar)
            if (places.HasName(bar, SpanOfBars(weeks), 28))
                names += BarName(bars[bar], SpanOfBars(weeks), end) + BarDetail(bars[bar], SpanOfBars(weeks));
        return names.join(u' ');
    };
    EXPECT_EQ(named(1, 300, end), u"水 木 金 土 日 月 今日10問"_s);
    EXPECT_EQ(named(4, 100, end), u"2/14 2/2810問"_s);
    EXPECT_EQ(named(60, 14 * 14, QDate(2023, 2, 1)), u"4月 7月 10月 1月2024"_s);
    EXPECT_EQ(named(520, 122, QDate(2015, 1, 1)).count(u"1月"), 4) << "the months that fit";
}

TEST(Calendar, Year_EndsWithTodayAndHasSundayOnTop)
{
    const Rows<const char *, QDate, double, QDate> rows = {
        {"Thursday", QDate(2026, 11, 26), 700, QDate(2025, 11, 27)},
        {"Sunday, alone in its week", QDate(2026, 11, 22), 700, QDate(2025, 11, 23)},
        {"Saturday", QDate(2026, 11, 28), 700, QDate(2025, 11, 29)},
        {"leap year", QDate(2024, 12, 31), 700, QDate(2024, 1, 2)},
        {"room for ten weeks", QDate(2026, 11, 26), 118, QDate(2026, 9, 20)},
    };
    for (const auto &[name, today, width, first] : rows) {
        const CalendarPlaces places(today, QSizeF(width, 110), 14);
        EXPECT_EQ(places.FirstDay(), first) << name;
        EXPECT_LE(places.Square(today).right(), width) << name;
        std::set<std::pair<double, double>> squares;
        for (QDate day = first; day <= today; day = day.addDays(1)) {
            const QRectF square = places.Square(day);
            squares.insert({square.x(), square.y()});
            EXPECT_EQ(places.DayAt(square.topLeft()), day) << name;
            EXPECT_EQ(square.y() == places.WeekdayName(0).y(), day.dayOfWeek() == Qt::Sunday) << name;
        }
        EXPECT_EQ(qint64(squares.size()), first.daysTo(today) + 1) << name;
        EXPECT_FALSE(places.DayAt(places.Square(today.addDays(1)).center()).isValid()) << name;
        const QPointF before =
            first.dayOfWeek() == Qt::Sunday ? QPointF(1, 50) : places.Square(first.addDays(-1)).center();
        EXPECT_FALSE(places.DayAt(before).isValid()) << name;
    }
    const Rows<qint64, int, int> steps = {{0, 0, 0},    {0, 1, 1},    {899, 1, 1},  {900, 1, 2},
                                          {1799, 1, 2}, {1800, 1, 3}, {3599, 1, 3}, {3600, 1, 4}};
    for (const auto &[seconds, answers, step] : steps)
        EXPECT_EQ(CalendarStep({seconds, answers}), step) << seconds;
}

TEST(History, DayTyped_IsTheLastSuchDay)
{
    const QDate today(2026, 11, 26);
    const Rows<QString, QDate> rows = {
        {u"2026/01/05"_s, QDate(2026, 1, 5)},
        {u"2026/1/5"_s, QDate(2026, 1, 5)},
        {u"1/5"_s, QDate(2026, 1, 5)},
        {u"11/26"_s, today},
        {u"11/27"_s, QDate(2025, 11, 27)},
        {u"2/29"_s, QDate(2024, 2, 29)},
        {u"2027/12/31"_s, QDate(2027, 12, 31)},
        {u"2/30"_s, QDate()},
        {u"26/1/5"_s, QDate()},
        {u"0000/1/1"_s, QDate()},
        {u"1/"_s, QDate()},
        {u"１/５"_s, QDate()},
        {QString(), QDate()},
    };
    for (const auto &[text, day] : rows)
        EXPECT_EQ(ReadDay(text, today), day) << text.toStdString();
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

TEST(PrintableCopy, OtherFileWithTheSameCopy_IsNamed)
{
    const TestFolder folder;
    const QString source = folder.Write(u"txt/a.txt"_s, "");
    const QString copy = PrintableCopyPath(QFileInfo(source).path(), source);
    folder.Write(u"txt/a_印刷用.txt"_s, "");
    folder.Write(u"txt/ab.txt"_s, "");
    EXPECT_EQ(ReplaceCopyQuestion(source, copy, OldCopy::Edited),
              u"次の印刷用ファイルは，作った後で変更されています。\r\n    ファイル名＝a_印刷用.txt"
              u"\r\n\r\n変更した内容を捨てて，作り直しますか？"_s);
    folder.Write(u"txt/a.2.txt"_s, "");
    EXPECT_EQ(ReplaceCopyQuestion(source, copy, OldCopy::Edited),
              u"次の印刷用ファイルは，作った後で変更されたか，ほかの学習ファイルから作られています。\r\n"
              u"    ファイル名＝a_印刷用.txt\r\n    選んだ学習ファイル＝a.txt\r\n    ほかの学習ファイル＝a.2.txt"
              u"\r\n\r\n今の内容を捨てて，選んだ学習ファイルから作り直しますか？"_s);
    for (int part = 3; part <= 9; ++part)
        folder.Write(u"txt/a.%1.txt"_s.arg(part), "");
    EXPECT_TRUE(ReplaceCopyQuestion(source, copy, OldCopy::Edited)
                    .contains(u"ほかの学習ファイル＝a.2.txt，a.3.txt，a.4.txt …\r\n"));
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
    const QStringList thisWeek = {u"2024/03/05(火)　1時間0分 7問"_s, u"08:00      　30秒   4問 a"_s,
                                  u"10:00    60分 9秒   3問 a"_s};
    const QStringList twoWeeks = thisWeek + QStringList{u"2024/02/21(水)　1分 5問"_s, u"09:00     1分 0秒   5問 a"_s};
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
        date->setText(u"2024/02/30"_s);
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

TEST_F(HistoryWindowTest, DateTypedShort_IsWrittenInFullOnLeavingTheField)
{
    window.show();
    auto *const date = window.findChild<QLineEdit *>(u"txtYmd"_s);
    window.activateWindow();
    date->setFocus();
    ASSERT_TRUE(WaitFor([date] { return date->hasFocus(); }));
    date->selectAll();
    QTest::keyClicks(date, u"2/21"_s);
    EXPECT_EQ(date->text(), u"2/21"_s) << "not while typing";
    EXPECT_EQ(Records().size(), 4);
    QTest::keyClick(date, Qt::Key_Return);
    EXPECT_EQ(date->text(), u"2024/02/21"_s);
    EXPECT_TRUE(window.isVisible()) << "Enter must not open a file";
    window.findChild<QAbstractButton *>(u"cmdPrev"_s)->click();
    EXPECT_EQ(date->text(), u"2024/02/14"_s);
    EXPECT_EQ(Records(), QStringList());
    date->setText(u"2/2x"_s);
    window.findChild<QWidget *>(u"lstFile"_s)->setFocus();
    EXPECT_EQ(date->text(), u"2/2x"_s) << "what is no date stays for its author";
}

TEST_F(HistoryWindowTest, SessionJustEnded_IsChosenAndPraised)
{
    AddSession(QDateTime(QDate(2024, 3, 5), QTime(19, 32)), 760, 67);
    const QDateTime start(QDate(2024, 3, 5), QTime(19, 32, 10));
    script.When(u"frmFile"_s, [this](QWidget *dialog) {
        LetRead();
        EXPECT_EQ(dialog->findChild<QListView *>(u"lstRecord"_s)->currentIndex().data(),
                  u"19:32    12分40秒  67問 a"_s);
        EXPECT_EQ(dialog->findChild<QLabel *>(u"lblReward"_s)->accessibleName().section(u'　', -2),
                  u"今日 1時間13分 74問　今回 12分40秒 67問"_s);
        dialog->close();
    });
    window.Choose(u"notepad.exe"_s, {start, {760, 67}});
    script.When(u"frmFile"_s, [this](QWidget *dialog) {
        LetRead();
        EXPECT_FALSE(dialog->findChild<QListView *>(u"lstRecord"_s)->currentIndex().isValid());
        dialog->close();
    });
    window.Choose(u"notepad.exe"_s, {start, {760, 0}});
}

TEST_F(HistoryWindowTest, BarOrDayChosen_ListGoesThere)
{
    window.show();
    const auto *const records = window.findChild<QListView *>(u"lstRecord"_s);
    const auto *const sentence = window.findChild<QLabel *>(u"lblSentence"_s);
    auto *const bars = window.findChild<DayChart *>(u"picHistory"_s);
    auto *const tabs = window.findChild<QTabBar *>(u"tabCharts"_s);
    window.findChild<QLineEdit *>(u"txtWeekN"_s)->setText(u"2"_s);
    LetRead();
    EXPECT_EQ(sentence->text(), u"この2週間は 2日，1時間1分，12問"_s);
    for (const Qt::Key key : {Qt::Key_Left, Qt::Key_Home, Qt::Key_Return})
        QTest::keyClick(bars, key);
    EXPECT_EQ(records->currentIndex().row(), 3);
    EXPECT_EQ(sentence->text(), u"2/21(水) 1分 5問"_s);
    EXPECT_EQ(bars->accessibleName(), u"学習時間の棒グラフ 2/21(水) 1分 5問"_s);
    const QPoint today(bars->width() - 30, bars->height() / 2);
    QTest::mouseClick(bars, Qt::LeftButton, {}, today);
    EXPECT_EQ(records->currentIndex().row(), 0);
    QTest::mouseClick(bars, Qt::LeftButton, {}, today);
    EXPECT_EQ(sentence->text(), u"この2週間は 2日，1時間1分，12問"_s) << "chosen no more";
    QTest::mouseClick(bars, Qt::LeftButton, {}, today);
    window.findChild<QAbstractButton *>(u"cmdPrev"_s)->click();
    LetRead();
    EXPECT_EQ(sentence->text(), u"2024/02/27(火)までの2週間は 2日，2分，104問"_s) << "another history";
    EXPECT_EQ(bars->accessibleName(), u"学習時間の棒グラフ"_s);
    window.findChild<QLineEdit *>(u"txtYmd"_s)->setText(u"2024/03/05"_s);
    LetRead();

    tabs->setCurrentIndex(1);
    auto *const calendar = window.findChild<DayChart *>(u"picCalendar"_s);
    EXPECT_TRUE(WaitFor([&] { return sentence->text() == u"2024/03/05(火)　1時間0分 7問"_s; }));
    EXPECT_EQ(calendar->accessibleDescription(), u"この1年は 3日，1時間2分　最長 2日連続"_s);
    for (const Qt::Key key : {Qt::Key_End, Qt::Key_Left, Qt::Key_Left, Qt::Key_Return})
        QTest::keyClick(calendar, key);
    EXPECT_EQ(sentence->text(), u"2024/02/20(火)　1分 99問"_s);
    LetRead();
    EXPECT_EQ(window.findChild<QLineEdit *>(u"txtYmd"_s)->text(), u"2024/02/20"_s) << "was not in the list";
    EXPECT_EQ(records->currentIndex().data(), u"2024/02/20(火)　1分 99問"_s);
}

TEST_F(HistoryWindowTest, FileTable_SortsAndOpensTheFile)
{
    DBInsRecKotoban(database, QDateTime(QDate(2024, 3, 4), QTime(9, 0)), u"花/子"_s, u"gone"_s);
    services.now = QDateTime(QDate(2024, 3, 4), QTime(9, 2));
    DBUpdRecKotoban(database, services, QDateTime(QDate(2024, 3, 4), QTime(9, 0)), u"花/子"_s, 50);
    services.now = QDateTime(QDate(2024, 3, 5), QTime(12, 0));
    script.When(u"frmFile"_s, [](QWidget *dialog) {
        auto *const table = dialog->findChild<QTableView *>(u"tblFiles"_s);
        dialog->findChild<QTabBar *>(u"tabCharts"_s)->setCurrentIndex(2);
        const auto *const sentence = dialog->findChild<QLabel *>(u"lblSentence"_s);
        EXPECT_TRUE(WaitFor([&] { return sentence->text() == u"これまでに 2ファイル，5回，1時間4分"_s; }));
        const auto row = [table](int number) {
            QStringList cells;
            for (int column = 0; column < table->model()->columnCount(); ++column)
                cells += table->model()->index(number, column).data().toString();
            return cells.join(u'|');
        };
        EXPECT_EQ(row(0), u"a|1時間2分|4|111|今日|"_s);
        EXPECT_EQ(row(1), u"gone|2分|1|50|3/4（月）|"_s);
        QTest::keyClick(table, Qt::Key_3);
        QTest::keyClick(table, Qt::Key_3);
        EXPECT_TRUE(row(0).startsWith(u"gone")) << "by times, the fewest first";
        table->setCurrentIndex(table->model()->index(0, 0));
        QTest::keyClick(table, Qt::Key_Return);
    });
    script.Click(u"frmMsg"_s, u"cmdOK"_s);
    script.When(u"frmFile"_s, [](QWidget *dialog) {
        auto *const table = dialog->findChild<QTableView *>(u"tblFiles"_s);
        table->setCurrentIndex(table->model()->index(1, 0));
        QTest::keyClick(table, Qt::Key_Return);
    });
    EXPECT_EQ(window.Choose(u"notepad.exe"_s), FileChoice::Chosen);
    EXPECT_EQ(script.messages.value(0), u"この学習ファイルは，フォルダにありません。\n    gone"_s);
    EXPECT_TRUE(window.ChosenPath().endsWith(u"a.txt"_s));
}

TEST_F(HistoryWindowTest, TableRequested_HasARowForEachSession)
{
    EXPECT_TRUE(database.SQLite3NonQuery(u"update t_kotoban set file_name = '=a,\"b' where num_answer = 3"_s));
    window.show();
    LetRead();
    window.findChild<QLineEdit *>(u"txtWeekN"_s)->setText(u"x"_s);
    script.Click(u"frmMsg"_s, u"cmdOK"_s);
    window.findChild<QAction *>(u"cmdRecordTable"_s)->trigger();
    EXPECT_EQ(script.messages.value(0),
              u"学習記録をCSVに出力しました。\n    ファイル名＝花_子_瞬記帳学習記録2024_0305までの1週分.csv\n"_s);
    EXPECT_EQ(folder.Read(u"rec/花_子_瞬記帳学習記録2024_0305までの1週分.csv"_s),
              QString(u"\uFEFF利用者,日付,開始,秒,回答数,ファイル\r\n花/子,2024/03/05,08:00,30,4,a\r\n"
                      u"花/子,2024/03/05,10:00,3609,3,\"'=a,\"\"b\"\r\n"_s)
                  .toUtf8());
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
    EXPECT_EQ(chart->accessibleDescription(), u"この1週間は 1日，1時間0分，7問"_s);

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
    EXPECT_EQ(chart->accessibleDescription(), u"この2週間は 2日，1時間1分，12問"_s);
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
    EXPECT_EQ(ReportText(ReadHistory(database, QDate(2024, 3, 5), 1, u"花/子"_s)),
              u"2024/03/05(火)　1時間0分 7問\r\n08:00      　30秒   4問 a\r\n10:00    60分 9秒   3問 a\r\n"
              u"総学習時間＝1時間 0分 39秒  総回答数＝7\r\n"_s);
}

TEST_F(HistoryWindowTest, ForeignTable_IsStillRead)
{
    const QDateTime start(QDate(2024, 3, 5), QTime(11, 0));
    EXPECT_TRUE(database.SQLite3NonQuery(u"update t_kotoban set ymd_sta = '2024/02/3x' where num_answer = 3"_s));
    const History foreign = ReadHistory(database, start.date(), 1, u"花/子"_s);
    ASSERT_EQ(foreign.LineCount(), 4);
    EXPECT_EQ(foreign.Line(2), u"2024/02/3x　0分 3問"_s) << "an invalid date is shown as recorded";
    EXPECT_EQ(foreign.Line(3), u"10:00      　 0秒   3問 a"_s) << "without a start there is no duration";
    AddSession(start, 1, 2'147'483'647);
    AddSession(start.addSecs(60), 1, 2'147'483'647);
    EXPECT_EQ(ReadHistory(database, start.date(), 1, u"花/子"_s).Days().at(0).sum.answers, 2 * 2'147'483'647LL + 4);
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
        lines += reader.Result().Line(line).section(u'　', 0, reader.Result().IsHeading(line) ? 0 : -1);
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
    EXPECT_EQ(script.messages[2],
              ReplaceCopyQuestion(folder.Path(u"txt/a.txt"_s), copy, OldCopy::Edited).replace(u"\r\n"_s, u"\n"_s));
    EXPECT_EQ(folder.Read(u"txt/a_印刷用.txt"_s), "by hand");
}
