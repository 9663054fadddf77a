// SPDX-FileCopyrightText: 2026 The Kotoban developers
// SPDX-License-Identifier: MIT

#include "store/modDB_SQLite.h"
#include "support/RecordingServices.h"
#include "support/TestFiles.h"

#include <gtest/gtest.h>
#include <sqlite3.h>

using namespace Qt::Literals::StringLiterals;

namespace {

class StoreTest : public testing::Test
{
  protected:
    StoreTest()
    {
        EXPECT_EQ(database.Open(folder.Path(u"k.splite3"_s)), SQLITE_OK);
        EXPECT_TRUE(DBCreateKotoban(database));
    }

    /// Records a complete session. Times are "yyyy/mm/dd hh:nn:ss".
    void AddSession(const QString &start, const QString &end, int answers)
    {
        const QDateTime startTime = QDateTime::fromString(start, u"yyyy/MM/dd HH:mm:ss"_s);
        DBInsRecKotoban(database, startTime, u"花子"_s, u"file"_s);
        services.now = QDateTime::fromString(end, u"yyyy/MM/dd HH:mm:ss"_s);
        DBUpdRecKotoban(database, services, startTime, u"花子"_s, answers);
    }

    TestFolder folder;
    RecordingServices services;
    StudyDatabase database{services};
    ResultTable table;
};

} // namespace

TEST_F(StoreTest, QueryEveryStorageClass_GivesTextTable)
{
    database.SQLite3Query(u"select 'a' as A, null as B, 7 as C, 2.5 as D, '日' as E, 4294967297 as F"_s, &table);
    EXPECT_EQ(table, (ResultTable{u"A\tB\tC\tD\tE\tF"_s, u"a\t\t7\t2.5\t日\t1"_s}));
    EXPECT_EQ(database.SQLite3GetColumn(table, 1, u"D"_s), u"2.5"_s);
    EXPECT_EQ(database.SQLite3GetColumn(table, 1, u"B"_s), QString());
    EXPECT_TRUE(services.TakeMessages().isEmpty());
    EXPECT_EQ(database.SQLite3GetColumn(table, 1, u"a"_s), QString()) << "column names are case-sensitive";
    EXPECT_EQ(services.TakeMessages(),
              QStringList(
                  u"Error!\r\n  Cannot find col[a]\r\n  cols=[A]  cols=[B]  cols=[C]  cols=[D]  cols=[E]  cols=[F]"_s));

    database.SQLite3Query(u"select * from t_kotoban"_s, &table);
    EXPECT_EQ(table, ResultTable{QString()}) << "without rows the header is empty too";
}

TEST_F(StoreTest, InvalidStatement_ShowsMessageAndFails)
{
    EXPECT_FALSE(database.SQLite3NonQuery(u"insert nonsense"_s));
    EXPECT_EQ(services.TakeMessages(), QStringList(u"Err:SQLite3 NonQuery"_s));
    database.SQLite3Query(u"select nonsense"_s, &table);
    EXPECT_EQ(services.TakeMessages(), QStringList(u"select nonsense\r\nSQLite3Step returned 21"_s));
    EXPECT_EQ(table, ResultTable{QString()});

    database.Close();
    EXPECT_FALSE(database.SQLite3NonQuery(u"delete from t_kotoban"_s));
    EXPECT_EQ(services.TakeMessages(), QStringList(u"Err:SQLite3 NonQuery"_s));
}

TEST_F(StoreTest, LockedByAnotherConnection_SaysSoAndFails)
{
    StudyDatabase other(services);
    EXPECT_EQ(other.Open(folder.Path(u"k.splite3"_s)), SQLITE_OK);
    EXPECT_TRUE(other.SQLite3NonQuery(u"begin exclusive"_s));
    AddSession(u"2024/03/05 09:00:00"_s, u"2024/03/05 09:10:00"_s, 3);
    const QStringList locked = {u"The database file is locked"_s, u"Err:SQLite3 NonQuery"_s};
    EXPECT_EQ(services.TakeMessages(), locked + locked);
    {
        const SilentFaults silent(database);
        EXPECT_FALSE(DBUpdRecKotoban(database, services, services.now, u"花子"_s, 3));
        EXPECT_TRUE(services.TakeMessages().isEmpty());
    }
    EXPECT_FALSE(DBUpdRecKotoban(database, services, services.now, u"花子"_s, 3));
    EXPECT_EQ(services.TakeMessages(), locked);
    EXPECT_EQ(DBSumAnsKotoban(database, services.now.date(), 7, u"花子"_s), 0);
    EXPECT_TRUE(services.TakeMessages().join(u'|').contains(u"SQLite3Step returned 5"_s));
    EXPECT_TRUE(other.SQLite3NonQuery(u"commit"_s));
    AddSession(u"2024/03/05 09:00:00"_s, u"2024/03/05 09:10:00"_s, 3);
    EXPECT_TRUE(services.TakeMessages().isEmpty()) << "works again";
}

TEST_F(StoreTest, OpenNonDatabase_ReportsErrorAndLeavesFileUntouched)
{
    StudyDatabase broken(services);
    EXPECT_EQ(broken.Open(folder.Write(u"text.splite3"_s, QByteArray(5000, 'x'))), SQLITE_OK);
    EXPECT_FALSE(broken.LacksTable(u"t_kotoban"_s)) << "unknown, as it cannot be read";
    DBInsRecKotoban(broken, services.now, u"a"_s, u"f"_s);
    EXPECT_EQ(services.TakeMessages(), QStringList(u"Err:SQLite3 NonQuery"_s));
    EXPECT_EQ(folder.Read(u"text.splite3"_s), QByteArray(5000, 'x'));
    EXPECT_NE(StudyDatabase(services).Open(folder.Path()), SQLITE_OK) << "a folder is not a database";
    // SQLite would follow a link that has one of these names.
    for (const QString &ending : {u"-journal"_s, u"-wal"_s, u"-shm"_s}) {
        folder.MakeFolder(u"beside.splite3"_s + ending);
        EXPECT_NE(StudyDatabase(services).Open(folder.Path(u"beside.splite3"_s)), SQLITE_OK) << ending.toStdString();
        EXPECT_TRUE(QDir().rmdir(folder.Path(u"beside.splite3"_s + ending)));
    }
}

TEST_F(StoreTest, QueryWithoutTable_ReportsErrorAndGivesZero)
{
    StudyDatabase empty(services);
    EXPECT_EQ(empty.Open(folder.Path(u"empty.splite3"_s)), SQLITE_OK);
    EXPECT_TRUE(empty.LacksTable(u"t_kotoban"_s));
    EXPECT_FALSE(database.LacksTable(u"T_Kotoban"_s)) << "SQLite ignores the case of names";
    EXPECT_EQ(DBSumAnsKotoban(empty, services.now.date(), 7, u"a"_s), 0);
    EXPECT_EQ(services.TakeMessages().size(), 1);
}

TEST_F(StoreTest, BuildStatements_GivesExactText)
{
    const QDateTime start(QDate(2024, 3, 5), QTime(9, 8, 7));
    EXPECT_EQ(InsertStatement(start, u"花子 "_s, u"week1"_s),
              u"insert into t_kotoban (ymd_sta,user_name,hms_sta,file_name) values(\r\n   '2024/03/05'\r\n"
              u"  ,'花子 '\r\n  ,'09:08:07'\r\n  ,'week1'\r\n)"_s);
    EXPECT_EQ(UpdateStatement(services.now, start, u"花子"_s, 12),
              u"update t_kotoban set\r\n   dt_end = '2024/03/05 14:30:15'\r\n  ,num_answer = 12\r\n"
              u"where ymd_sta = '2024/03/05'\r\n  and user_name = '花子'\r\n  and hms_sta = '09:08:07'\r\n"_s);
    const QString condition = u"where  ymd_sta between '2024/02/28' and '2024/03/05'\r\n"
                              u"  and  user_name = '花子'\r\n  and  num_answer >= 1\r\n"_s;
    EXPECT_EQ(SelectStatement(start.date(), 7, u"花子"_s, false),
              u"select ymd_sta\r\n      ,hms_sta\r\n      ,file_name\r\n      ,dt_end\r\n      ,num_answer\r\n"
              u"from   t_kotoban\r\n"_s +
                  condition + u"order by\r\n       ymd_sta desc\r\n      ,hms_sta\r\n"_s);
    EXPECT_EQ(SumTimeStatement(start.date(), 7, u"花子"_s),
              u"select ymd_sta\r\n      ,hms_sta\r\n      ,dt_end\r\nfrom   t_kotoban\r\n"_s + condition);
    EXPECT_EQ(SumAnswersStatement(start.date(), 7, u"花子"_s),
              u"select ifnull(sum(num_answer),0) as sum_a\r\nfrom   t_kotoban\r\n"_s + condition);
    EXPECT_TRUE(SelectStatement(QDate(2023, 3, 5), 7, u"a"_s, true).contains(u"'2023/02/27'"_s)) << "not a leap year";
}

TEST_F(StoreTest, QuerySpan_CountsOnlyItsCompletedSessions)
{
    AddSession(u"2024/03/05 10:00:00"_s, u"2024/03/05 10:05:09"_s, 3);
    AddSession(u"2024/03/05 08:00:00"_s, u"2024/03/05 08:00:59"_s, 1);
    AddSession(u"2024/03/04 23:59:50"_s, u"2024/03/05 00:01:00"_s, 5);
    AddSession(u"2024/02/28 12:00:00"_s, u"2024/02/28 13:00:00"_s, 7);
    AddSession(u"2024/02/27 12:00:00"_s, u"2024/02/27 13:00:00"_s, 100);
    AddSession(u"2024/03/05 11:00:00"_s, u"2024/03/05 12:00:00"_s, 0);
    DBInsRecKotoban(database, QDateTime(QDate(2024, 3, 5), QTime(15, 0)), u"花子"_s, u"not ended"_s);

    const QDate end(2024, 3, 5);
    EXPECT_TRUE(DBSelRecKotoban(database, end, 7, u"花子"_s, &table, false));
    QStringList starts;
    for (int row = 1; row < int(table.size()); ++row)
        starts += database.SQLite3GetColumn(table, row, u"ymd_sta"_s).right(2) + u' ' +
                  database.SQLite3GetColumn(table, row, u"hms_sta"_s);
    EXPECT_EQ(starts, QStringList({u"05 08:00:00"_s, u"05 10:00:00"_s, u"04 23:59:50"_s, u"28 12:00:00"_s}));
    EXPECT_EQ(DBSumTimeKotoban(database, end, 7, u"花子"_s), 309 + 59 + 70 + 3600);
    EXPECT_EQ(DBSumAnsKotoban(database, end, 7, u"花子"_s), 16);
    EXPECT_EQ(DBSumTimeKotoban(database, end, 7, u"太郎"_s), 0);
    EXPECT_EQ(DBSumAnsKotoban(database, end, 7, u"太郎"_s), 0);
    EXPECT_TRUE(DBSelRecKotoban(database, end, 7, u"太郎"_s, &table, false)) << "an empty result is not an error";
    EXPECT_EQ(table, ResultTable{QString()});
    EXPECT_TRUE(services.messages.isEmpty());
}

TEST_F(StoreTest, SecondsBetween_FollowsWallClockAndGivesZeroForInvalidText)
{
    EXPECT_EQ(SecondsBetween(u"2024/02/28", u"23:59:50", u"2024/02/29 00:00:10"), 20);
    EXPECT_EQ(SecondsBetween(u"2023/02/28", u"23:59:50", u"2023/03/01 00:00:10"), 20);
    EXPECT_EQ(SecondsBetween(u"2023/12/31", u"23:00:00", u"2024/01/01 01:00:00"), 7200);
    EXPECT_EQ(SecondsBetween(u"2024/03/31", u"01:59:00", u"2024/03/31 03:01:00"), 3720) << "daylight saving is ignored";
    EXPECT_EQ(SecondsBetween(u"2024/03/05", u"10:00:00", u"2024/03/05 09:00:00"), -3600) << "clock set back";
    EXPECT_EQ(SecondsBetween(u"2024/03/05", u"10:00:00", u"nonsense"), 0);
    EXPECT_EQ(SecondsBetween(u"2024/02/30", u"10:00:00", u"2024/03/05 10:00:00"), 0);
}

TEST_F(StoreTest, NameWithQuote_FailsItsStatementsAndChangesNothing)
{
    AddSession(u"2024/03/05 10:00:00"_s, u"2024/03/05 10:05:00"_s, 3);
    database.SQLite3Query(u"select * from t_kotoban"_s, &table);
    const ResultTable before = table;
    const QString names = u"O'Hara|''|x' or ''='|x' or 1=1 --|'; delete from t_kotoban; --|a\0b|"
                          u"a','b','c','d'); drop table t_kotoban; --"_s;
    for (const QString &name : names.split(u'|')) {
        DBInsRecKotoban(database, services.now, name, u"file"_s);
        DBInsRecKotoban(database, services.now, u"花子"_s, name);
        DBUpdRecKotoban(database, services, services.now, name, 9);
        EXPECT_EQ(services.TakeMessages(), QStringList(3, u"Err:SQLite3 NonQuery"_s)) << name.toStdString();
        EXPECT_FALSE(DBSelRecKotoban(database, QDate(2024, 3, 5), 7, name, &table, false));
        EXPECT_EQ(DBSumTimeKotoban(database, QDate(2024, 3, 5), 7, name), 0);
        EXPECT_EQ(DBSumAnsKotoban(database, QDate(2024, 3, 5), 7, name), 0);
        const QStringList messages = services.TakeMessages();
        EXPECT_EQ(messages.filter(u"\r\nSQLite3Step returned 21"_s).size(), 3) << messages.join(u'|').toStdString();
        database.SQLite3Query(u"select * from t_kotoban"_s, &table);
        EXPECT_EQ(table, before) << name.toStdString();
    }
    DBUpdRecKotoban(database, services, services.now, u"nobody"_s, 9);
    EXPECT_TRUE(services.TakeMessages().isEmpty()) << "updating a missing row is not an error";
}

TEST_F(StoreTest, NameWithoutQuote_RoundTrips)
{
    const QString names = u" |\"; --|’＇％_%|../../x|\u0001\u001B\u007F|José 𠮷 한글|"_s + QString(10'000, u'長');
    for (const QString &name : names.split(u'|')) {
        DBInsRecKotoban(database, services.now, name, name);
        DBUpdRecKotoban(database, services, services.now, name, 2);
        EXPECT_TRUE(DBSelRecKotoban(database, services.now.date(), 7, name, &table, false));
        ASSERT_EQ(table.size(), 2u) << name.toStdString();
        EXPECT_EQ(database.SQLite3GetColumn(table, 1, u"file_name"_s), name);
    }
    EXPECT_TRUE(services.messages.isEmpty());
}
