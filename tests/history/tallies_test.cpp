// SPDX-FileCopyrightText: 2026 The Kotoban developers
// SPDX-License-Identifier: MIT

#include "base/modDateText.h"
#include "history/modCalendar.h"
#include "history/modReward.h"
#include "support/RecordingServices.h"
#include "support/Rows.h"
#include "support/TestFiles.h"

#include <QDeadlineTimer>

#include <gtest/gtest.h>

using namespace Qt::Literals::StringLiterals;

namespace {

constexpr int SessionSeconds = 25 * 60;

/// The record of a user with a session of these seconds and 9 answers on each of some days.
class TalliesTest : public testing::Test
{
  protected:
    TalliesTest()
    {
        EXPECT_EQ(database.Open(u":memory:"_s), 0);
        EXPECT_TRUE(DBCreateKotoban(database));
    }

    void Add(const QDateTime &start, const QString &user, int answers = 9, const QString &file = u"a"_s)
    {
        DBInsRecKotoban(database, start, user, file);
        services.now = start.addSecs(SessionSeconds);
        DBUpdRecKotoban(database, services, start, user, answers);
    }

    void AddDays(const QDate &last, const std::vector<int> &daysBefore)
    {
        for (const int days : daysBefore)
            Add(QDateTime(last.addDays(-days), QTime(9, 0)), u"花子"_s);
    }

    StudyTallies Read(const QDate &today)
    {
        StudyTallies tallies(database, u"花子"_s);
        EXPECT_TRUE(tallies.ReadRecent(today));
        tallies.ReadNext(QDeadlineTimer(QDeadlineTimer::Forever));
        return tallies;
    }

    RecordingServices services;
    StudyDatabase database{services};
};

const QDate Today(2024, 3, 5);

} // namespace

TEST_F(TalliesTest, AllYearsRead_CountsSessionsOfOneUser)
{
    AddDays(Today, {0, 367, 10655});
    Add(QDateTime(Today, QTime(10, 0)), u"太郎"_s);
    Add(QDateTime(Today.addDays(-1), QTime(9, 0)), u"花子"_s, 9, u"b"_s);
    Add(QDateTime(Today.addDays(-3), QTime(9, 0)), u"花子"_s, 0, u"c"_s);
    DBInsRecKotoban(database, QDateTime(Today.addDays(-4), QTime(9, 0)), u"花子"_s, u"c"_s);
    StudyTallies tallies(database, u"花子"_s);
    EXPECT_TRUE(tallies.ReadRecent(Today));
    EXPECT_EQ(tallies.Of(u"a"_s).times, 1) << "today's sessions are known immediately";
    int slices = 1;
    while (tallies.ReadNext(QDeadlineTimer(0)))
        ++slices;
    EXPECT_EQ(slices, 3) << "a day each, and none for the years between";
    EXPECT_TRUE(tallies.IsComplete());
    const Rows<QString, QDate, QString> texts = {
        {u"a"_s, Today, u"3回　最後 今日"_s},
        {u"b"_s, Today, u"1回　最後 3/4（月）"_s},
        {u"b"_s, QDate(2025, 1, 1), u"1回　最後 2024/3/4（月）"_s},
        {u"c"_s, Today, QString()},
    };
    for (const auto &[title, day, text] : texts)
        EXPECT_EQ(StudiedText(tallies.Of(title), day), text);

    Add(QDateTime(Today.addDays(1), QTime(9, 0)), u"花子"_s);
    EXPECT_TRUE(tallies.ReadRecent(QDate(2024, 3, 6)));
    EXPECT_FALSE(tallies.ReadNext(QDeadlineTimer(0))) << "earlier days are read only once";
    EXPECT_EQ(tallies.Of(u"a"_s).times, 4) << "neither lost nor counted twice after midnight";
    EXPECT_EQ(StudyFiguresSentence(5, 3, tallies.Of(u"a"_s), QDate(2024, 3, 7)),
              u"空欄5，苦手3，4回，最後は3/6（水）"_s);
}

TEST_F(TalliesTest, DatabaseFault_IsSilentAndReadAgainAtTheNextActivation)
{
    AddDays(Today, {0, 1, 2, 3, 400});                  // SQLite reads two days ahead
    const auto breakDay = [this](const QDate &broken) { // the end of its session cannot be read
        EXPECT_TRUE(database.SQLite3NonQuery(u"alter table t_kotoban drop column dt_end"_s));
        EXPECT_TRUE(database.SQLite3NonQuery(u"alter table t_kotoban add column dt_end text as (case ymd_sta when '%1' "
                                             u"then abs(-9223372036854775807 - 1) end)"_s.arg(DateText(broken))));
    };
    StudyTallies tallies(database, u"花子"_s);
    const auto readAll = [&] {
        breakDay(Today.addDays(-9)); // none
        EXPECT_TRUE(tallies.ReadRecent(Today));
        EXPECT_FALSE(tallies.ReadNext(QDeadlineTimer(QDeadlineTimer::Forever)));
        return tallies.Of(u"a"_s).times;
    };
    breakDay(Today);
    EXPECT_FALSE(tallies.ReadRecent(Today));
    EXPECT_FALSE(tallies.IsComplete());
    breakDay(Today.addDays(-400));
    EXPECT_TRUE(tallies.ReadRecent(Today));
    EXPECT_TRUE(tallies.ReadNext(QDeadlineTimer(0)));
    EXPECT_FALSE(tallies.ReadNext(QDeadlineTimer(QDeadlineTimer::Forever))) << "broken after some days";
    EXPECT_EQ(tallies.Of(u"a"_s).times, 0) << "absent rather than wrong";
    EXPECT_FALSE(tallies.IsComplete());
    EXPECT_EQ(readAll(), 5) << "no day is counted twice";
    breakDay(Today);
    EXPECT_FALSE(tallies.ReadRecent(Today)) << "when all is known but today's sessions";
    EXPECT_EQ(tallies.Of(u"a"_s).times, 0);
    EXPECT_EQ(readAll(), 5);
    EXPECT_EQ(services.messages, QStringList());
}

TEST_F(TalliesTest, Streak_EndsTodayOrYesterdayAtTheFirstGap)
{
    const Rows<const char *, std::vector<int>, int, QString> rows = {
        {"nothing", {}, 0, u"今日から始めましょう。"_s},
        {"only today", {0}, 1, u"今日 25分 9問"_s},
        {"only yesterday", {1}, 1, u"今日から始めましょう。"_s},
        {"today and before", {0, 1, 2, 4, 5}, 3, u"3日連続　今日 25分 9問"_s},
        {"until yesterday", {1, 2, 3}, 3, u"3日連続　今日はこれからです。"_s},
        {"ended the day before yesterday", {2, 3}, 0, u"今日から始めましょう。"_s},
        {"a clock that was ahead", {-1, -2, 0, 1}, 2, u"2日連続　今日 25分 9問"_s},
    };
    for (const auto &[name, days, streak, text] : rows) {
        EXPECT_TRUE(database.SQLite3NonQuery(u"delete from t_kotoban"_s));
        AddDays(Today, days);
        const StudyTallies tallies = Read(Today);
        EXPECT_EQ(StudyStreak(tallies, Today), streak) << name;
        EXPECT_EQ(RewardText(RewardOf(tallies, {}, Today)), text) << name;
    }
}

TEST_F(TalliesTest, Streak_CountsOnlyAnsweredSessionsOfTheUserByTheirFirstDay)
{
    AddDays(Today, {0, 2, 3});
    Add(QDateTime(Today.addDays(-1), QTime(9, 0)), u"太郎"_s);
    Add(QDateTime(Today.addDays(-1), QTime(10, 0)), u"花子"_s, 0);
    EXPECT_EQ(StudyStreak(Read(Today), Today), 1);
    Add(QDateTime(Today.addDays(-1), QTime(23, 50)), u"花子"_s); // until after midnight
    EXPECT_EQ(StudyStreak(Read(Today), Today), 4);
    EXPECT_EQ(Read(Today).OnDay(Today.addDays(-1)), (StudySum{SessionSeconds, 9}));
}

TEST_F(TalliesTest, StreakNotReadToItsEnd_IsUnknown)
{
    AddDays(Today, {0, 1, 2});
    StudyTallies tallies(database, u"花子"_s);
    EXPECT_EQ(StudyStreak(tallies, Today), -1);
    EXPECT_TRUE(tallies.ReadRecent(Today));
    EXPECT_EQ(StudyStreak(tallies, Today), -1);
    EXPECT_EQ(RewardText(RewardOf(tallies, {QDateTime(), {760, 67}}, Today)), u"今日 25分 9問　今回 12分40秒 67問"_s);
    EXPECT_EQ(SessionTimeText(20), u"20秒"_s);
    EXPECT_TRUE(tallies.ReadNext(QDeadlineTimer(0)));
    EXPECT_EQ(StudyStreak(tallies, Today), -1) << "yesterday is not its end";
    tallies.ReadNext(QDeadlineTimer(QDeadlineTimer::Forever));
    EXPECT_EQ(StudyStreak(tallies, Today), 3);
}

TEST_F(TalliesTest, ClockSetBackWhileRunning_ReadsTheEarlierDaysAgain)
{
    AddDays(Today, {0, 1, 2});
    StudyTallies tallies = Read(Today);
    const QDate earlier = Today.addDays(-1);
    Add(QDateTime(earlier, QTime(12, 0)), u"花子"_s);
    EXPECT_TRUE(tallies.ReadRecent(earlier));
    tallies.ReadNext(QDeadlineTimer(QDeadlineTimer::Forever));
    EXPECT_EQ(tallies.OnDay(earlier).answers, 18);
    EXPECT_EQ(tallies.Of(u"a"_s).times, 3) << "without the day after";
    EXPECT_EQ(StudyStreak(tallies, earlier), 2);
}

TEST_F(TalliesTest, Sentences_SumUpYearAndRecord)
{
    AddDays(Today, {0, 1, 10, 11, 12, 364, 365});
    const StudyTallies tallies = Read(Today);
    EXPECT_EQ(YearSentence(tallies, Today), u"この1年は 6日，2時間30分　最長 3日連続"_s);
    EXPECT_EQ(AllTalliesSentence(tallies.OfAll()), u"これまでに 1ファイル，7回，2時間55分"_s);
    EXPECT_EQ(DaySentence(Today, tallies.OnDay(Today)), u"2024/03/05(火)　25分 9問"_s);
}
