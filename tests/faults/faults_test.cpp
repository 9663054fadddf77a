// What a learner keeps when the program is ended at any moment, when the disk is full, locked or damaged, and when it
// is started twice.
#include "app/modMain.h"
#include "app/modUserList.h"
#include "files/modHistory.h"
#include "files/modPrintableCopy.h"
#include "files/modStudyFolder.h"
#include "platform/modProfile.h"
#include "platform/modReplaceFile.h"
#include "store/modDB_SQLite.h"
#include "support/RecordingServices.h"
#include "support/Rows.h"
#include "support/TestFiles.h"

#include <QElapsedTimer>
#include <QProcess>
#include <QRegularExpression>
#include <QThread>

#include <csignal>
#include <functional>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <random>
#include <sqlite3.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <unistd.h>

using namespace Qt::Literals::StringLiterals;

namespace {

std::vector<ino_t> synced; // what was brought to the disk, in that order

int Sync(int handle)
{
    struct stat file = {};
    fstat(handle, &file);
    synced.push_back(file.st_ino);
    return int(syscall(SYS_fsync, handle));
}

} // namespace

// The libraries call these in the place of the system's.
extern "C" int fsync(int handle)
{
    return Sync(handle);
}
extern "C" int fdatasync(int handle)
{
    return Sync(handle);
}

namespace {

const QString Driver = QStringLiteral(DRIVEN_SESSION);
const QByteArray PrintableCopy = "1\x94\xD4 [__]\r\n[\x81\x51\x81\x51] [___]\r\n";

/// First column of the first row of a query, or the fault.
QString Query(const QString &database, const QByteArray &sql)
{
    sqlite3 *handle = nullptr;
    QString value;
    char *fault = nullptr;
    const auto take = [](void *text, int, char **columns, char **) {
        *static_cast<QString *>(text) = QString::fromUtf8(columns[0]);
        return 0;
    };
    sqlite3_open(qPrintable(database), &handle);
    if (sqlite3_exec(handle, sql.constData(), take, &value, &fault) != SQLITE_OK)
        value = u"fault: "_s + QString::fromUtf8(fault);
    sqlite3_free(fault);
    sqlite3_close(handle);
    return value;
}

class Faults : public testing::Test
{
  protected:
    Faults()
    {
        for (const QStringView name : RequiredFolders.split(u','))
            folder.MakeFolder(name.toString());
        EXPECT_EQ(Query(databasePath, KotobanSchema.join(u';').toUtf8()), QString());
        folder.WriteStudyFile(u"txt/a.txt"_s, {u"1番 [ab]"_s, u"[漢字] [xyz]"_s});
        QStringList lines;
        for (int i = 0; i < 60; ++i)
            lines += u"[word%1] [語] 文"_s.arg(i);
        folder.WriteStudyFile(u"txt/b.txt"_s, lines);
    }

    /// Every file is one that some moment of the program has wanted to be so, whole.
    void ExpectWholeFiles()
    {
        EXPECT_EQ(Query(databasePath, "pragma integrity_check"), u"ok"_s);
        const QByteArray copy = folder.Read(u"txt/a_印刷用.txt"_s);
        EXPECT_TRUE(copy == PrintableCopy || copy == "(no file)") << copy.toPercentEncoding().toStdString();
        const QString ini = FromCodePage932(folder.Read(u"Kotoban.ini"_s));
        static const QRegularExpression wholeIni(
            u"^\\(no file\\)$|^\\[setting\\]\\r\\n((Fontsize|LineSpace|TextEditor|bolDispLineNum|Form(Left|Width|Height))=[^\\r\\n]+\\r\\n)+$"_s);
        EXPECT_TRUE(wholeIni.match(ini).hasMatch()) << ini.toStdString();
        for (const QString &name : QDir(folder.Path(u"rec"_s)).entryList({u"*.txt"_s}, QDir::Files)) {
            const QString report = FromCodePage932(folder.Read(u"rec/"_s + name));
            EXPECT_TRUE(report.section(u"\r\n"_s, -2).startsWith(u"総学習時間＝"_s)) << report.toStdString();
        }
    }

    /// A backup that bears its name is a database.
    void ExpectWholeBackups()
    {
        QStringList days;
        for (const QString &name : QDir(folder.Path(u"db_backup"_s)).entryList({u"kotoban_*"_s}, QDir::Files)) {
            EXPECT_EQ(Query(folder.Path(u"db_backup/"_s + name), "pragma integrity_check"), u"ok"_s)
                << name.toStdString();
            days += name.section(u'-', 0, 0);
        }
        EXPECT_EQ(days.removeDuplicates(), 0);
    }

    void AddSession()
    {
        const QByteArray session = "'2024/03/05','a','10:00:00','f','2024/03/05 11:00:00',5";
        EXPECT_EQ(Query(databasePath, "insert into t_kotoban values(" + session + ")"), QString());
    }

    bool BackUp(QString *error)
    {
        return BackupDatabase(folder.Path(u"db"_s), u"kotoban.splite3"_s, folder.Path(u"db_backup"_s), 20, services.now,
                              error);
    }

    TestFolder folder;
    QString databasePath = folder.Path(u"db/kotoban.splite3"_s);
    RecordingServices services;
};

} // namespace

TEST_F(Faults, DeathAtAnyMomentLosesNothingThatWasComplete)
{
    std::mt19937 random(200);
    QStringList users;
    int completed = 0;
    for (int death = 0; death < 200 && !HasFailure(); ++death) {
        const QString user = u"user%1"_s.arg(death);
        QProcess program;
        program.setProcessChannelMode(QProcess::ForwardedErrorChannel);
        program.start(Driver, {folder.Path(), u"study"_s, user, QString::number(death)});
        ASSERT_TRUE(program.waitForStarted());
        // Some die before the first window, most when they study, and some when there is a session to lose, however
        // slow the machine is.
        ASSERT_TRUE(death % 8 == 0 || program.waitForReadyRead());
        QByteArray said;
        while (death % 4 == 1 && !said.contains("completed")) {
            said += program.readAllStandardOutput();
            ASSERT_TRUE(said.contains("completed") || program.waitForReadyRead());
        }
        QThread::msleep(random() % 300);
        program.kill();
        program.waitForFinished();
        ASSERT_EQ(program.exitStatus(), QProcess::CrashExit) << "it was to be killed, not to end by itself";

        int completedNow = 0;
        said += program.readAllStandardOutput();
        for (const QByteArray &line : said.split('\n')) {
            if (line.startsWith("completed "))
                completedNow = line.mid(10).toInt();
            EXPECT_FALSE(line.startsWith("message")) << line.toStdString();
            if (line.startsWith("user "))
                users += user;
        }
        completed += completedNow;
        ExpectWholeFiles();
        const QString rows = Query(databasePath, "select count(*) from t_kotoban where dt_end is not null and "
                                                 "num_answer is not null and user_name = '" +
                                                     user.toLatin1() + "'");
        EXPECT_GE(rows.toInt(), completedNow) << rows.toStdString();
        const QStringList listed = ReadUserNames(folder.Path(u"ListUserName.txt"_s));
        if (listed.size() == users.size() + 1)
            users += user; // it was in the list, but there was no time left to say so
        EXPECT_EQ(listed, users);
    }
    ExpectWholeBackups();
    EXPECT_GT(completed, 20) << "it was killed too early to have much to lose";
}

TEST_F(Faults, APowerCutTakesNothingBackThatWasWritten)
{
    StudyDatabase database(services);
    ASSERT_EQ(database.Open(databasePath), 0);
    QString error;
    const QString list = folder.Path(u"ListUserName.txt"_s);
    const Rows<const char *, std::function<void()>, QString, QString> writes = {
        {"insert", [&] { DBInsRecKotoban(database, services.now, u"a"_s, u"f"_s); }, databasePath, u"db"_s},
        {"update", [&] { DBUpdRecKotoban(database, services, services.now, u"a"_s, 5); }, databasePath, u"db"_s},
        {"backup", [&] { BackUp(&error); }, u"db_backup/kotoban_2024_0305-1430_15.splite3"_s, u"db_backup"_s},
        {"user list", [&] { AppendUserName(list, u"a"_s, &error); }, list, QString()},
    };
    for (const auto &[name, write, file, fileFolder] : writes) {
        const auto inode = [this](const QString &path) {
            struct stat about = {};
            stat(qPrintable(QDir(folder.Path()).filePath(path)), &about);
            return about.st_ino;
        };
        synced.clear();
        write();
        // Without the folder last, the journal that was removed or the name of the file before could come back.
        ASSERT_GE(synced.size(), 2u) << name;
        EXPECT_THAT(synced, testing::Contains(inode(file))) << name;
        EXPECT_EQ(synced.back(), inode(fileFolder)) << name;
    }
}

TEST_F(Faults, OfTwoStartsAtTheSameInstantExactlyOneRuns)
{
    for (int round = 0; round < 50; ++round) {
        QProcess programs[2];
        for (QProcess &program : programs)
            program.start(Driver, {folder.Path(), u"start"_s});
        QByteArrayList said;
        for (QProcess &program : programs) {
            program.waitForReadyRead();
            said += program.readAllStandardOutput().trimmed();
        }
        std::sort(said.begin(), said.end());
        EXPECT_EQ(said, QByteArrayList({"message 二重起動はできません。", "runs"}));
        for (QProcess &program : programs) {
            program.closeWriteChannel();
            program.waitForFinished();
        }
    }
}

TEST_F(Faults, TenThousandActionsLeaveNothingBehind)
{
    QProcess program;
    program.setProcessChannelMode(QProcess::ForwardedErrorChannel);
    program.start(Driver, {folder.Path(), u"actions"_s, u"10000"_s});
    ASSERT_TRUE(program.waitForFinished(240'000));
    EXPECT_EQ(program.exitCode(), 0) << "among others, the leak sanitizer has found nothing";
    const QByteArray output = program.readAllStandardOutput();
    EXPECT_FALSE(output.contains("message")) << output.toStdString();
    const QByteArray last = output.trimmed().split('\n').back();
    ASSERT_TRUE(last.startsWith("grown by ")) << output.toStdString();
    EXPECT_LT(last.mid(9, last.size() - 11).toDouble(), 5) << last.toStdString();
}

namespace {

/// Writes fail beyond so many bytes of a file, as on a full disk.
class FullDisk
{
  public:
    explicit FullDisk(rlim_t bytes)
    {
        std::signal(SIGXFSZ, SIG_IGN);
        getrlimit(RLIMIT_FSIZE, &m_before);
        const rlimit limit{bytes, m_before.rlim_max};
        setrlimit(RLIMIT_FSIZE, &limit);
    }
    ~FullDisk()
    {
        setrlimit(RLIMIT_FSIZE, &m_before);
    }

  private:
    rlimit m_before{};
};

/// Root may write everywhere, so what must not be written is tried as somebody else.
class AsNobody
{
  public:
    AsNobody()
    {
        if (geteuid() == 0 && seteuid(65534) != 0)
            ADD_FAILURE() << "cannot become somebody else";
    }
    ~AsNobody()
    {
        if (getuid() == 0 && seteuid(0) != 0)
            ADD_FAILURE() << "cannot become root again";
    }
};

} // namespace

TEST_F(Faults, WhatCannotBeWrittenStaysAsItWas)
{
    const QByteArray old(3000, 'o');
    const QByteArray name(3000, 'n');
    for (const bool isFull : {true, false}) {
        folder.Write(u"list.txt"_s, old);
        folder.Write(u"a.ini"_s, "[setting]\r\nKey=" + old + "\r\n");
        folder.Write(u"txt/a_印刷用.txt"_s, old);
        QFile(folder.Path(u"db_backup/copy"_s)).remove();
        for (const QString &path : {QString(), u"txt"_s, u"db_backup"_s})
            QFile::setPermissions(folder.Path(path), isFull ? QFile::Permissions(0x7000) : QFile::Permissions(0x5055));
        {
            std::optional<FullDisk> full;
            std::optional<AsNobody> nobody;
            if (isFull)
                full.emplace(20);
            else
                nobody.emplace();
            QString error;
            EXPECT_FALSE(ReplaceFile(folder.Path(u"list.txt"_s), name, &error));
            EXPECT_FALSE(error.isEmpty());
            EXPECT_FALSE(AppendUserName(folder.Path(u"list.txt"_s), QString::fromLatin1(name), &error));
            EXPECT_FALSE(WriteProfile(folder.Path(u"a.ini"_s), u"setting"_s, u"Key"_s, QString::fromLatin1(name)));
            error.clear();
            EXPECT_FALSE(WritePrintableCopy(folder.Path(u"txt/a.txt"_s), folder.Path(u"txt/a_印刷用.txt"_s), &error));
            EXPECT_TRUE(error.startsWith(u"印刷用ファイルを書き込めません。\r\n"_s)) << error.toStdString();
            EXPECT_FALSE(CopyWholeFile(databasePath, folder.Path(u"db_backup/copy"_s), &error));
        }
        for (const QString &path : {QString(), u"txt"_s, u"db_backup"_s})
            QFile::setPermissions(folder.Path(path), QFile::Permissions(0x7000));
        EXPECT_EQ(folder.Read(u"list.txt"_s), old);
        EXPECT_EQ(folder.Read(u"a.ini"_s), "[setting]\r\nKey=" + old + "\r\n");
        EXPECT_EQ(folder.Read(u"txt/a_印刷用.txt"_s), old);
        EXPECT_EQ(QDir(folder.Path(u"db_backup"_s)).entryList(QDir::Files), QStringList()) << "no part of a copy";
    }
}

TEST_F(Faults, ADatabaseThatCannotGrowKeepsItsRowsAndWorksAgain)
{
    StudyDatabase database(services);
    ASSERT_EQ(database.Open(databasePath), 0);
    const auto insert = [&](int count) {
        for (int i = 0; i < count; ++i)
            DBInsRecKotoban(database, services.now.addSecs(i), QString(200, u'漢'), u"file"_s);
    };
    insert(10);
    EXPECT_TRUE(services.TakeMessages().isEmpty());
    {
        const FullDisk full(rlim_t(QFileInfo(databasePath).size()));
        insert(30);
    }
    EXPECT_TRUE(services.TakeMessages().contains(u"Err:SQLite3 NonQuery"_s));
    EXPECT_EQ(Query(databasePath, "pragma integrity_check"), u"ok"_s);
    const int kept = Query(databasePath, "select count(*) from t_kotoban").toInt();
    EXPECT_GE(kept, 10);
    insert(1);
    EXPECT_TRUE(services.TakeMessages().isEmpty());
    EXPECT_EQ(Query(databasePath, "select count(*) from t_kotoban").toInt(), kept + 1);
}

TEST_F(Faults, ALockedDatabaseIsToldOfAtOnceAndNotWaitedFor)
{
    StudyDatabase database(services);
    ASSERT_EQ(database.Open(databasePath), 0);
    ReadHistory(database, services.now.date(), 1, u"花子"_s); // it knows the table before the lock
    DBInsRecKotoban(database, services.now, u"花子"_s, u"file"_s);
    QProcess other;
    other.start(u"sqlite3"_s, {databasePath});
    other.write("begin exclusive; select 'locked';\n");
    ASSERT_TRUE(other.waitForReadyRead());
    const QStringList told = {u"The database file is locked"_s, u"Err:SQLite3 NonQuery"_s};
    DBInsRecKotoban(database, services.now, u"花子"_s, u"file"_s);
    EXPECT_EQ(services.TakeMessages(), told);
    DBUpdRecKotoban(database, services, services.now, u"花子"_s, 5);
    EXPECT_EQ(services.TakeMessages(), told);
    EXPECT_TRUE(ReadHistory(database, services.now.date(), 1, u"花子"_s).lines.isEmpty());
    EXPECT_EQ(services.TakeMessages().filter(u"SQLite3Step returned"_s).size(), 1);
    other.closeWriteChannel();
    other.waitForFinished();
    EXPECT_EQ(Query(databasePath, "select count(*), num_answer from t_kotoban"), u"1"_s);
    DBUpdRecKotoban(database, services, services.now, u"花子"_s, 6);
    EXPECT_TRUE(services.messages.isEmpty());
    EXPECT_EQ(Query(databasePath, "select num_answer from t_kotoban"), u"6"_s) << "it works again";
}

TEST_F(Faults, AReadOnlyDatabaseIsReadAndNotWritten)
{
    AddSession();
    for (const QString &path : {QString(), u"db"_s})
        QFile::setPermissions(folder.Path(path), QFile::Permissions(0x7055));
    QFile::setPermissions(databasePath, QFile::Permissions(0x4044));
    const AsNobody nobody;
    StudyDatabase database(services);
    ASSERT_EQ(database.Open(databasePath), 0);
    DBInsRecKotoban(database, services.now, u"a"_s, u"f"_s);
    EXPECT_EQ(services.TakeMessages(), QStringList(u"Err:SQLite3 NonQuery"_s));
    EXPECT_EQ(ReadHistory(database, services.now.date(), 1, u"a"_s).totalAnswers, u"5"_s);
    EXPECT_TRUE(services.messages.isEmpty());
}

TEST_F(Faults, ADamagedPageIsToldOfAndNothingIsWrittenOverIt)
{
    AddSession();
    QByteArray bytes = folder.Read(u"db/kotoban.splite3"_s);
    bytes.replace(4096, bytes.size() - 4096, QByteArray(bytes.size() - 4096, 'x')); // all pages but the first
    folder.Write(u"db/kotoban.splite3"_s, bytes);
    StudyDatabase database(services);
    ASSERT_EQ(database.Open(databasePath), 0);
    EXPECT_TRUE(ReadHistory(database, QDate(2024, 3, 5), 1, u"a"_s).lines.isEmpty());
    EXPECT_EQ(services.TakeMessages().filter(u"SQLite3Step returned"_s).size(), 1);
    DBInsRecKotoban(database, services.now, u"a"_s, u"f"_s);
    EXPECT_EQ(services.TakeMessages(), QStringList(u"Err:SQLite3 NonQuery"_s));
    database.Close();
    EXPECT_EQ(folder.Read(u"db/kotoban.splite3"_s), bytes);
}

TEST_F(Faults, AHalfBackupIsNoneAndIsCleanedUp)
{
    for (const QString &name : {u"unfinished.copy"_s, u"unfinished.copy.AbCdEf"_s, u"unfinished.copy-journal.AbCdEf"_s})
        folder.Write(u"db_backup/"_s + name, "half");
    folder.Write(u"db_backup/unfinished.copy of May"_s, "the learner's own");
    {
        const FullDisk full(rlim_t(QFileInfo(databasePath).size()) / 2);
        QString error;
        EXPECT_FALSE(BackUp(&error));
        EXPECT_TRUE(error.startsWith(u"データベースのバックアップに失敗しました。"_s));
    }
    EXPECT_FALSE(ExistsFileOfDay(folder.Path(u"db_backup"_s), u"_2024_0305"_s)) << "the next start tries again";
    QString error;
    EXPECT_TRUE(BackUp(&error));
    EXPECT_EQ(QDir(folder.Path(u"db_backup"_s)).entryList(QDir::Files, QDir::Name),
              QStringList({u"kotoban_2024_0305-1430_15.splite3"_s, u"unfinished.copy of May"_s}));
    EXPECT_EQ(folder.Read(u"db_backup/kotoban_2024_0305-1430_15.splite3"_s), folder.Read(u"db/kotoban.splite3"_s));
}

TEST_F(Faults, ABackupAfterACrashHoldsWhatWasCommitted)
{
    const QByteArray insert = "with recursive n(i) as (select 1 union all select i+1 from n where i<5000) insert into "
                              "t_kotoban select '2024/03/05','b',i,'f',null,null from n;";
    const Rows<const char *, QByteArray, QString, QString> crashes = {
        {"in the middle of a write", "pragma cache_size=1; begin;" + insert, u"-journal"_s, u"1"_s},
        {"with a write in the log", "pragma journal_mode=wal;" + insert, u"-wal"_s, u"5001"_s},
    };
    AddSession();
    for (const auto &[name, sql, ending, rows] : crashes) {
        // The files as they stand on the disk while the database is open.
        sqlite3 *writing = nullptr;
        sqlite3_open(qPrintable(databasePath), &writing);
        EXPECT_EQ(sqlite3_exec(writing, sql.constData(), nullptr, nullptr, nullptr), SQLITE_OK) << name;
        const QByteArray database = folder.Read(u"db/kotoban.splite3"_s);
        const QByteArray beside = folder.Read(u"db/kotoban.splite3"_s + ending);
        sqlite3_close(writing);
        folder.Write(u"db/kotoban.splite3"_s, database);
        folder.Write(u"db/kotoban.splite3"_s + ending, beside);

        QString error;
        EXPECT_TRUE(BackUp(&error)) << name;
        EXPECT_EQ(QDir(folder.Path(u"db_backup"_s)).entryList(QDir::Files),
                  QStringList(u"kotoban_2024_0305-1430_15.splite3"_s))
            << name;
        const QString backup = folder.Path(u"db_backup/kotoban_2024_0305-1430_15.splite3"_s);
        EXPECT_EQ(Query(backup, "pragma integrity_check"), u"ok"_s) << name;
        EXPECT_EQ(Query(backup, "select count(*) from t_kotoban"), rows) << name;
        EXPECT_EQ(folder.Read(u"db/kotoban.splite3"_s), database) << name << ": the database itself is only read";
        EXPECT_EQ(folder.Read(u"db/kotoban.splite3"_s + ending), beside) << name;
        QFile::remove(backup);
    }
}

TEST_F(Faults, AFolderWhereAFileShouldBeAndTheReverse)
{
    RunLog log(folder.Path(), u"Kotoban"_s, services.Clock());
    StudyDatabase database(services);
    const auto prepare = [&] {
        return PrepareRun(folder.Path(), InstanceMark(folder.Path()), log, services, database);
    };
    folder.MakeFolder(u"Kotoban_log.txt"_s);
    EXPECT_FALSE(prepare());
    EXPECT_TRUE(services.TakeMessages().value(0).startsWith(u"実行ログに書き込めません。"_s));
    QDir().rmdir(folder.Path(u"Kotoban_log.txt"_s));

    folder.MakeFolder(u"ListUserName.txt"_s);
    QString error;
    EXPECT_TRUE(ReadUserNames(folder.Path(u"ListUserName.txt"_s)).isEmpty());
    EXPECT_FALSE(AppendUserName(folder.Path(u"ListUserName.txt"_s), u"a"_s, &error));
    EXPECT_FALSE(error.isEmpty());
    EXPECT_EQ(ReadProfile(folder.Path(u"txt"_s), u"setting"_s, u"a"_s, u"default"_s, 99), u"default"_s);
    EXPECT_FALSE(WriteProfile(folder.Path(u"txt"_s), u"setting"_s, u"a"_s, u"b"_s));
    EXPECT_FALSE(WritePrintableCopy(folder.Path(u"txt"_s), folder.Path(u"txt/x_印刷用.txt"_s), &error));
    folder.Write(u"log"_s, "a file");
    EXPECT_TRUE(prepare()) << "the folder of logs need not be there";
    EXPECT_TRUE(services.messages.isEmpty());
}

TEST(Places, ThatAreNoRegularFilesAreListedWithTheirRemarkAndNeverOpened)
{
    const TestFolder folder;
    const QString fifo = folder.Path(u"a.txt"_s);
    ASSERT_EQ(mkfifo(QFile::encodeName(fifo).constData(), 0600), 0);
    ASSERT_TRUE(QFile::link(fifo, folder.Path(u"b.txt"_s)));
    StudyFolder files(folder.Path());
    files.Refresh();
    EXPECT_EQ(files.Names(), QStringList({u"a.txt"_s, u"b.txt"_s}));
    for (const QString &name : files.Names()) {
        files.Check(name);
        EXPECT_EQ(files.Fault(name), u"読み込み不可"_s);
    }
    RecordingServices services;
    StudyDatabase database(services);
    EXPECT_EQ(database.Open(fifo), SQLITE_CANTOPEN);
}
