// SPDX-FileCopyrightText: 2026 The Kotoban developers
// SPDX-License-Identifier: MIT

// What is preserved when the program is killed at any moment or started twice, when the disk is full or not writable,
// and when the database is locked or damaged.
#include "app/modMain.h"
#include "app/modUserList.h"
#include "exchange/modExport.h"
#include "exchange/modPrintSheet.h"
#include "exchange/modPrintableCopy.h"
#include "exchange/modStudyFromTable.h"
#include "exchange/modStudyFromText.h"
#include "files/modStudyFolder.h"
#include "files/modTakeFiles.h"
#include "history/modHistory.h"
#include "platform/modProfile.h"
#include "platform/modReplaceFile.h"
#include "records/modHardNote.h"
#include "records/modPlaceList.h"
#include "settings/modSpeech.h"
#include "store/modCopyDatabase.h"
#include "store/modDB_SQLite.h"
#include "support/Pieces.h"
#include "support/Query.h"
#include "support/ReadHistory.h"
#include "support/RecordingServices.h"
#include "support/Rows.h"
#include "support/StudyText.h"
#include "support/TestFiles.h"
#include "support/WaitFor.h"
#include "write/modDraft.h"

#include <QHash>
#include <QProcess>
#include <QRegularExpression>
#include <QThread>

#include <array>
#include <csignal>
#include <fcntl.h>
#include <functional>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <random>
#include <sys/ptrace.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <sys/wait.h>
#include <unistd.h>

using namespace Qt::Literals::StringLiterals;

namespace {

std::vector<ino_t> synced; // inodes of synced files and folders, in order

int Sync(int handle)
{
    struct stat file = {};
    fstat(handle, &file);
    synced.push_back(file.st_ino);
    return int(syscall(SYS_fsync, handle));
}

} // namespace

// These replace the system's functions for all libraries.
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
constexpr int DrivenInterimSeconds = 10;
const QByteArray PrintableCopy = "1\x94\xD4 [__]\r\n[\x81\x51\x81\x51] [___]\r\n";
const QByteArray RowsAndIntegrity =
    "select (select count(*) from t_kotoban), integrity_check from pragma_integrity_check";

class Faults : public testing::Test
{
  protected:
    Faults()
    {
        for (const QStringView name : RequiredFolders)
            folder.MakeFolder(name.toString());
        EXPECT_EQ(Query(databasePath, QString(KotobanSchema[0] + u";"_s + KotobanSchema[1]).toUtf8()), QString());
        folder.WriteStudyFile(u"txt/a.txt"_s, {u"1番 [ab]"_s, u"[漢字] [xyz]"_s});
        QStringList lines;
        for (int i = 0; i < 60; ++i)
            lines += u"[word%1] [語] 文"_s.arg(i);
        folder.WriteStudyFile(u"txt/b.txt"_s, lines);
        folder.Write(u"dropped/dropped.txt"_s, added.toLatin1());
        folder.Write(u"marks"_s, u"u\ta\t1番 [ab]\t1\r\nu\ta\t[漢字] [xyz]\t1\r\n"_s.toUtf8());
    }

    /// Every file has complete contents, whether old or new.
    void ExpectWholeFiles()
    {
        EXPECT_EQ(Query(databasePath, "pragma integrity_check"), u"ok"_s);
        const QByteArray copy = folder.Read(u"txt/a_印刷用.txt"_s);
        EXPECT_TRUE(copy == PrintableCopy || copy == "(no file)") << copy.toPercentEncoding().toStdString();
        const QString ini = FromCodePage932(folder.Read(u"Kotoban.ini"_s));
        static const QRegularExpression wholeIni(
            u"^\\(no file\\)$|^\\[setting\\]\\r\\n((Fontsize|LineSpace|TextEditor|bolDispLineNum|PageColour|Wrap|Zoom|"
            u"Form(Left|Width|Height|Maximized))=[^\\r\\n]+\\r\\n)+$"_s);
        EXPECT_TRUE(wholeIni.match(ini).hasMatch()) << ini.toStdString();
        for (const QString &name : QDir(folder.Path(u"rec"_s)).entryList({u"*.txt"_s}, QDir::Files)) {
            const QString report = FromCodePage932(folder.Read(u"rec/"_s + name));
            EXPECT_TRUE(report.section(u"\r\n"_s, -2).startsWith(u"総学習時間＝"_s)) << report.toStdString();
        }
    }

    /// Every session of a killed process has its row: a complete one with all its answers, the one under way with those
    /// that are older than the interval. @param lines  what the process has printed
    void ExpectAnswers(const QString &user, const QStringList &lines)
    {
        const qint64 completed = lines.filter(u"completed "_s).size();
        const QStringList told = lines.filter(u"answers "_s);
        std::vector<int> least(size_t(completed) + 2, -1); // by session, -1 for a row that is not complete
        for (const QString &line : told) {
            constexpr int tickSeconds = 5; // each look at the simulated clock takes a second
            const QStringList fields = line.split(u' ');
            const bool isComplete = fields[1].toInt() <= completed;
            const qint64 ageSeconds = told.last().section(u' ', -1).toLongLong() - fields[3].toLongLong();
            if (const int count = fields[2].toInt();
                isComplete || (count > 0 && ageSeconds > DrivenInterimSeconds + tickSeconds))
                least[size_t(fields[1].toInt())] = count;
        }
        const QStringList rows = Query(databasePath, "select group_concat(n) from (select ifnull(num_answer, -1) as n "
                                                     "from t_kotoban where user_name = '" +
                                                         user.toLatin1() + "' order by rowid)")
                                     .split(u',');
        for (size_t session = 1; session < least.size(); ++session)
            EXPECT_GE(rows.value(qsizetype(session) - 1, u"-1"_s).toInt(), least[session])
                << lines.join(u'\n').toStdString();
    }

    /// A list has whole entries, those of other users as they were after the last call.
    void ExpectWholeList(const QString &name, const QString &user, const QRegularExpression &entry)
    {
        const QByteArray bytes = QFile::exists(folder.Path(name)) ? folder.Read(name) : QByteArray();
        EXPECT_TRUE(bytes.isEmpty() || bytes.endsWith("\r\n")) << bytes.toStdString();
        const QStringList lines = QString::fromUtf8(bytes).split(u"\r\n"_s, Qt::SkipEmptyParts);
        EXPECT_EQ(lines.filter(entry), lines);
        QStringList others = lines;
        others.removeIf([&user](const QString &line) { return line.startsWith(user + u'\t'); });
        EXPECT_EQ(others, m_lists[name]);
        m_lists[name] = lines;
    }

    /// The lists hold the place and the marks of each complete session.
    void ExpectPlacesAndMarks(const QString &user, const QStringList &lines)
    {
        static const QRegularExpression mark(u"^user\\d+\t[ab]\t[^\t]*\\[[^\t]*\t[1-9]\\d*(\t\\d+)?$"_s);
        static const QRegularExpression place(
            u"^user\\d+\t[ab]\\.txt\t[1-9]\\d*(\t\\d+\t[0-9a-f]{40}\t[1-9]\\d*(-\\d+)?(,\\d+(-\\d+)?)*)?$"_s);
        ExpectWholeList(u"ListMark.txt"_s, user, mark);
        ExpectWholeList(u"ListPlace.txt"_s, user, place);
        QHash<QString, qsizetype> marks; // by title
        for (const QString &line : lines) {
            const QStringList fields = line.split(u' ');
            if (line == u"marking") {
                marks.clear(); // which of them are written already is unknown
            } else if (fields[0] == u"completed") {
                marks[fields[2]] = fields[3].toInt();
                EXPECT_GE(PlaceList(folder.Path(u"ListPlace.txt"_s)).Find(user, fields[2] + u".txt"_s).line, 1);
            }
        }
        for (auto title = marks.constBegin(); title != marks.constEnd(); ++title)
            EXPECT_EQ(m_lists[u"ListMark.txt"_s].filter(user + u'\t' + title.key() + u'\t').size(), title.value());
    }

    void AddSession()
    {
        const QByteArray session = "'2024/03/05','a','10:00:00','f','2024/03/05 11:00:00',5";
        EXPECT_EQ(Query(databasePath, "insert into t_kotoban values(" + session + ")"), QString());
    }

    /// Records a session of user "a". @return the messages shown
    QStringList Record(const QString &fileName = u"f"_s)
    {
        services.now = services.now.addSecs(1);
        DBInsRecKotoban(database, services.now, u"a"_s, fileName);
        DBUpdRecKotoban(database, services, services.now, u"a"_s, 6);
        return services.TakeMessages();
    }

    History Read()
    {
        return ReadHistory(database, services.now.date(), 1, u"a"_s);
    }

    bool BackUp(QString *error)
    {
        return BackupDatabase(folder.Path(u"db"_s), u"kotoban.splite3"_s, folder.Path(u"db_backup"_s), 20, services.now,
                              error);
    }

    /// Takes the reason of a fault. @return whether there is none
    bool Tell(const FileFault &fault)
    {
        reason = fault.reason;
        return !fault;
    }

    /// One of the program's ways to write a file. @return whether it was written; if not, reason may say why
    using Write = std::function<bool(const QString &path)>;

    struct Writer
    {
        QString name;      ///< of a file that it writes, in the folder
        QByteArray before; ///< contents that the file may have before; empty if there is none
        Write write;
    };

    std::vector<Writer> Writers()
    {
        const QString source = folder.Path(u"txt/a.txt"_s);
        return {
            {u"a.txt"_s, old, [this](const QString &path) { return Tell(ReplaceFile(path, added.toLatin1())); }},
            {u"later.txt"_s, old,
             [this](const QString &path) { return Tell(ReplaceFile(path, added.toLatin1(), OnDisk::Later)); }},
            {u"list.txt"_s, old, [this](const QString &path) { return Tell(AppendUserName(path, added)); }},
            {u"a.ini"_s, "[setting]\r\nKey=" + old + "\r\n",
             [this](const QString &path) {
                 return WriteProfile(path, u"setting"_s, {{u"Key"_s, added}});
             }},
            {u"txt/a_印刷用.txt"_s, old,
             [this](const QString &path) {
                 return Tell(WritePrintableCopy(added.toLatin1(), path, OldCopy::Replaceable));
             }},
            {u"rec/a.csv"_s, old,
             [=, this](const QString &path) {
                 StudyExport made;
                 return !made.Read(source, ExportKind::Csv) && Tell(WriteAll(path, made));
             }},
            {u"rec/a_印刷.html"_s, old,
             [=, this](const QString &path) {
                 reason = WriteSheet(source, path, true);
                 return reason.isEmpty();
             }},
            {u"rec/report.txt"_s, old, [this](const QString &path) { return Tell(WriteReport(path, History())); }},
            {u"txt/converted.txt"_s, "short",
             [this](const QString &path) {
                 QString kept;
                 return Tell(ReplaceConverted(path, "short", added.toLatin1(), &kept));
             }},
            {u"txt/table.txt"_s, "short",
             [this](const QString &path) {
                 QString kept;
                 return Tell(ReplaceAndKeep(path, added.toLatin1(), &kept));
             }},
            {u"txt/written.txt"_s, "short",
             [this](const QString &path) {
                 WrittenFile file{.path = path, .digest = DigestOf("short"), .bytes = "short"};
                 const SaveResult saved = SaveDraft(added, &file, QDate::currentDate(), OnConflict::Stop);
                 return Tell(saved.fault) && saved.outcome == SaveResult::Saved;
             }},
            {u"txt/drafted.txt.draft"_s, old,
             [this](const QString &path) { return Tell(WriteDraft(added, {.path = path.chopped(6), .digest = {}})); }},
            {u"txt/dropped.txt"_s, "short",
             [this](const QString &path) {
                 FileTaking taking({folder.Path(u"dropped/dropped.txt"_s)}, QFileInfo(path).path());
                 taking.GoOn(QDeadlineTimer(QDeadlineTimer::Forever));
                 reason = taking.Failures().join(u'\n');
                 return reason.isEmpty();
             }},
            {u"ListMark.txt"_s, old,
             [this](const QString &path) {
                 return Tell(MarkList(path, added).Write(added, DisplayText(LinesOf({u"[a]"_s})), {1}));
             }},
            {u"ListPlace.txt"_s, old,
             [this](const QString &path) {
                 return Tell(PlaceList(path).Write(added, added, {1, 1, u"0a"_s, {{1, 2}}}));
             }},
            {u"rec/苦手帳.txt"_s, old,
             [=, this](const QString &path) {
                 HardNote note(MarkList(folder.Path(u"marks"_s), u"u"_s), {source});
                 note.GoOn(QDeadlineTimer(QDeadlineTimer::Forever));
                 return Tell(note.Write(path));
             }},
            {u"db_backup/copy"_s, QByteArray(),
             [this](const QString &path) { return Tell(CopyWholeFile(databasePath, path)); }},
        };
    }

    const QByteArray old = QByteArray(3000, 'o'); // enough not to fit on a full disk
    const QString added = QString(3000, u'n');
    QString reason;                      // why the last write failed
    QHash<QString, QStringList> m_lists; // their lines, by name
    TestFolder folder;
    QString databasePath = folder.Path(u"db/kotoban.splite3"_s);
    RecordingServices services;
    StudyDatabase database{services};
    const QStringList notWritten = QStringList(2, u"Err:SQLite3 NonQuery"_s);
};

} // namespace

TEST_F(Faults, KilledAtRandomMoments_LosesNothingCompleted)
{
    std::mt19937 random(200);
    QStringList users;
    int completed = 0;
    for (int run = 0; run < 200 && !HasFailure(); ++run) {
        const QString user = u"user%1"_s.arg(run);
        QProcess program;
        program.setProcessChannelMode(QProcess::ForwardedErrorChannel);
        program.start(Driver,
                      {folder.Path(), u"study"_s, user, QString::number(run), QString::number(DrivenInterimSeconds)});
        ASSERT_TRUE(program.waitForStarted(LongestWaitMs));
        // Before the first window, after a completed session however slow the machine is, while marks or places are
        // written, and mostly while studying.
        const std::array<QByteArray, 8> moments = {"",      "completed ", "marking",     "leaving",
                                                   "user ", "completed ", "answers 1 2", "user "};
        const QByteArray &awaited = moments[size_t(run) % moments.size()];
        const bool isWriting = awaited == "marking" || awaited == "leaving";
        QByteArray output;
        for (; !output.contains(awaited); output += program.readAllStandardOutput())
            ASSERT_TRUE(program.waitForReadyRead(LongestWaitMs));
        QThread::msleep(random() % (isWriting ? 30 : 300));
        program.kill();
        program.waitForFinished(LongestWaitMs);
        ASSERT_EQ(program.exitStatus(), QProcess::CrashExit) << "it exited by itself before it was killed";

        output += program.readAllStandardOutput();
        EXPECT_FALSE(output.contains("message")) << output.toStdString();
        if (output.contains("user "))
            users += user;
        completed += int(output.count("completed "));
        ExpectWholeFiles();
        const QStringList lines =
            QString::fromUtf8(output.first(output.lastIndexOf('\n') + 1)).split(u'\n', Qt::SkipEmptyParts);
        ExpectAnswers(user, lines);
        ExpectPlacesAndMarks(user, lines);
        const QStringList listed = ReadUserNames(folder.Path(u"ListUserName.txt"_s));
        if (listed.size() == users.size() + 1)
            users += user; // killed after adding the name, before printing it
        EXPECT_EQ(listed, users);
    }
    QStringList days;
    for (const QString &name : QDir(folder.Path(u"db_backup"_s)).entryList({u"kotoban_*"_s}, QDir::Files)) {
        EXPECT_EQ(Query(folder.Path(u"db_backup/"_s + name), "pragma integrity_check"), u"ok"_s) << name.toStdString();
        days += name.section(u'-', 0, 0);
    }
    EXPECT_EQ(days.removeDuplicates(), 0) << "one complete backup per day";
    EXPECT_GT(completed, 20) << "killed too early for a meaningful test";
}

namespace {

/// Whether a stopped process is about to change something on disk.
bool IsAboutToChange(pid_t process)
{
    __ptrace_syscall_info call = {};
    ptrace(PTRACE_GET_SYSCALL_INFO, process, sizeof call, &call);
    if (call.op != PTRACE_SYSCALL_INFO_ENTRY)
        return false;
    switch (call.entry.nr) {
    case SYS_openat:
        return (call.entry.args[2] & O_CREAT) != 0;
    case SYS_write:
    case SYS_pwrite64:
    case SYS_ftruncate:
    case SYS_fchmod:
    case SYS_renameat2:
    case SYS_linkat:
    case SYS_unlinkat:
#ifdef SYS_unlink // not on every processor
    case SYS_rename:
    case SYS_link:
    case SYS_unlink:
#endif
        return true;
    default:
        return false;
    }
}

/// Runs an action in a process of its own, which is killed before its n-th change on disk, counted from 1.
/// @return false if there are fewer changes, and the action has come to its end
bool KillAtChange(int n, const std::function<void()> &action)
{
    const pid_t process = fork();
    if (process == 0) {
        if (ptrace(PTRACE_TRACEME, 0, nullptr, nullptr) == 0 && std::raise(SIGSTOP) == 0)
            action();
        _exit(0);
    }
    int status = 0;
    waitpid(process, &status, 0);
    EXPECT_TRUE(WIFSTOPPED(status)) << "it cannot be traced";
    ptrace(PTRACE_SETOPTIONS, process, nullptr, PTRACE_O_TRACESYSGOOD | PTRACE_O_EXITKILL);
    constexpr int atCall = SIGTRAP | 0x80;
    int changes = 0;
    while (WIFSTOPPED(status)) {
        if (IsAboutToChange(process) && ++changes == n)
            kill(process, SIGKILL);
        const int signal = WSTOPSIG(status);
        ptrace(PTRACE_SYSCALL, process, nullptr, signal == atCall || signal == SIGSTOP ? 0 : signal);
        waitpid(process, &status, 0);
    }
    EXPECT_TRUE(changes == n || WIFEXITED(status)) << "it crashed";
    return changes == n;
}

} // namespace

TEST(FirstStart, KilledAtEachStep_NextStartHasNothingToSay)
{
    int step = 1;
    for (bool isKilled = true; isKilled && !testing::Test::HasFailure(); ++step) {
        const TestFolder folder;
        for (const QStringView name : RequiredFolders)
            folder.MakeFolder(name.toString());
        RecordingServices services;
        StudyDatabase database(services);
        const auto start = [&] {
            const InstanceMark instance(folder.Path());
            const RunLog log(folder.Path(), u"Kotoban"_s, services.Clock());
            return PrepareRun(folder.Path(), instance, log, services, database);
        };
        isKilled = KillAtChange(step, start);
        EXPECT_TRUE(start()) << step;
        EXPECT_EQ(services.messages, QStringList()) << step;
        EXPECT_FALSE(database.LacksTable(u"t_kotoban"_s)) << step;
        EXPECT_EQ(QDir(folder.Path(u"db"_s)).entryList(QDir::Files), QStringList(u"kotoban.splite3"_s)) << step;
        EXPECT_TRUE(folder.Read(u"db_backup/kotoban_2024_0305-1430_15.splite3"_s) ==
                    folder.Read(u"db/kotoban.splite3"_s))
            << step;
    }
    EXPECT_GT(step, 10);
}

TEST(Writing, KilledAtEachStep_LosesNoText)
{
    const QString last = u"[last]\n"_s;
    int step = 1;
    for (bool isKilled = true; isKilled && !testing::Test::HasFailure(); ++step) {
        const TestFolder folder;
        const QString path = folder.Write(u"a.txt"_s, "[old]\n");
        WrittenFile file;
        QString text;
        bool isChanged = false;
        ASSERT_EQ(OpenToWrite(path, &file, &text, &isChanged), QString());
        ASSERT_FALSE(WriteDraft(u"[first]\n"_s, file));
        isKilled = KillAtChange(step, [&] {
            if (!WriteDraft(last, file))
                SaveDraft(last, &file, QDate::currentDate(), OnConflict::Stop);
        });
        const QByteArray saved = folder.Read(u"a.txt"_s);
        Draft draft;
        const bool hasDraft = ReadDraft(path, &draft);
        EXPECT_TRUE(saved == "[old]\n" || saved == "[last]\n") << step << saved.toStdString();
        EXPECT_TRUE(saved == "[last]\n" || hasDraft) << step << " the text is lost";
        EXPECT_TRUE(!hasDraft || draft.text == last || draft.text == u"[first]\n") << step;
        EXPECT_TRUE(saved == "[old]\n" || folder.Read(u"a.txt.bak"_s) == "[old]\n") << step << " no backup";
        for (const QFileInfo &each : QDir(folder.Path()).entryInfoList({u"*.draft*"_s}, QDir::Files | QDir::Hidden))
            EXPECT_FALSE(each.permission(QFile::ReadGroup) || each.permission(QFile::ReadOther)) << step;
    }
    EXPECT_GT(step, 10);
}

TEST_F(Faults, EachWrite_SyncsFileAndThenFolder)
{
    ASSERT_EQ(database.Open(databasePath), 0);
    QString error;
    const QString list = folder.Path(u"ListUserName.txt"_s);
    folder.Write(u"ListUserName.txt"_s, "first\r\n");
    const Rows<const char *, std::function<void()>, QString, QString> writes = {
        {"insert", [&] { DBInsRecKotoban(database, services.now, u"a"_s, u"f"_s); }, databasePath, u"db"_s},
        {"update", [&] { DBUpdRecKotoban(database, services, services.now, u"a"_s, 5); }, databasePath, u"db"_s},
        {"backup", [&] { BackUp(&error); }, u"db_backup/kotoban_2024_0305-1430_15.splite3"_s, u"db_backup"_s},
        {"first database",
         [&] {
             NewDatabase made(folder.Path(u"db/first.splite3"_s));
             {
                 StudyDatabase first(services);
                 EXPECT_TRUE(first.Open(made.Path()) == 0 && DBFillNewKotoban(first));
             }
             EXPECT_FALSE(made.Finish());
         },
         u"db/first.splite3"_s, u"db"_s},
        {"user list", [&] { EXPECT_FALSE(AppendUserName(list, u"a"_s)); }, list, QString()},
    };
    for (const auto &[name, write, file, fileFolder] : writes) {
        const auto inode = [this](const QString &path) {
            struct stat about = {};
            stat(qPrintable(QDir(folder.Path()).filePath(path)), &about);
            return about.st_ino;
        };
        synced.clear();
        write();
        // If the folder were not synced last, a power cut could bring back the removed journal or the old file.
        ASSERT_GE(synced.size(), 2u) << name;
        EXPECT_THAT(synced, testing::Contains(inode(file))) << name;
        EXPECT_EQ(synced.back(), inode(fileFolder)) << name;
    }
}

TEST_F(Faults, EndSignalDuringLongWork_GivesItUpAndKeepsAnswers)
{
    QHash<QString, QByteArray> files = {
        {u"txt/a.txt"_s, QByteArray("[a]\r\n").repeated(400'000)},
        {u"txt/b.txt"_s, QByteArray("\xC3\xA9\n").repeated(1'000'000)}, // in UTF-8, with accents
        {u"rec/a_印刷.html"_s, "old"},
        {u"table.csv"_s, QByteArray("a,b\n").repeated(1'000'000)},
    };
    for (auto file = files.constBegin(); file != files.constEnd(); ++file)
        folder.Write(file.key(), file.value());
    constexpr int droppedCount = 3000;
    for (int number = 0; number < droppedCount; ++number)
        folder.Write(u"many/n%1.txt"_s.arg(number), added.toLatin1());
    int sessions = 0;
    for (const QString &work : {u"Print"_s, u"Export"_s, u"Copy"_s, u"Table"_s, u"Convert"_s, u"Take"_s}) {
        SCOPED_TRACE(work.toStdString());
        QProcess program;
        program.setProcessChannelMode(QProcess::ForwardedErrorChannel);
        program.start(Driver, {folder.Path(), u"end"_s, work});
        ASSERT_TRUE(program.waitForFinished(1'200'000));
        EXPECT_EQ(program.exitStatus(), QProcess::NormalExit);
        EXPECT_EQ(program.exitCode(), 0) << "the work was done before the signal came";
        EXPECT_EQ(Query(databasePath, "select count(*) from t_kotoban where num_answer = 1").toInt(), ++sessions);
        for (auto file = files.constBegin(); file != files.constEnd(); ++file)
            EXPECT_TRUE(folder.Read(file.key()) == file.value()) << file.key().toStdString();
        EXPECT_EQ(QDir(folder.Path(u"rec"_s)).entryList(QDir::Files), QStringList(u"a_印刷.html"_s));
        const QStringList names = QDir(folder.Path(u"txt"_s)).entryList(QDir::Files);
        const QStringList taken = names.filter(QRegularExpression(u"^n\\d+\\.txt$"_s));
        EXPECT_EQ(names.size(), taken.size() + 2) << names.join(u' ').toStdString();
        EXPECT_LT(taken.size(), droppedCount);
        for (const QString &name : taken)
            EXPECT_EQ(folder.Read(u"txt/"_s + name), added.toLatin1());
    }
}

TEST_F(Faults, TwoSimultaneousStarts_ExactlyOneRuns)
{
    for (int round = 0; round < 50; ++round) {
        QProcess programs[2];
        for (QProcess &program : programs)
            program.start(Driver, {folder.Path(), u"start"_s});
        QByteArrayList outputs;
        for (QProcess &program : programs) {
            program.waitForReadyRead(LongestWaitMs);
            outputs += program.readAllStandardOutput().trimmed();
        }
        std::sort(outputs.begin(), outputs.end());
        EXPECT_EQ(outputs, QByteArrayList({"message 二重起動はできません。", "runs"}));
        for (QProcess &program : programs) {
            program.closeWriteChannel();
            program.waitForFinished(LongestWaitMs);
        }
    }
}

TEST_F(Faults, TenThousandActions_LeakNeitherMemoryNorFiles)
{
    QProcess program;
    program.setProcessChannelMode(QProcess::ForwardedErrorChannel);
    program.start(Driver, {folder.Path(), u"actions"_s, u"10000"_s});
    ASSERT_TRUE(program.waitForFinished(1'200'000));
    EXPECT_EQ(program.exitCode(), 0) << "includes the leak sanitizer's verdict";
    const QByteArray output = program.readAllStandardOutput();
    EXPECT_FALSE(output.contains("message")) << output.toStdString();
    const QByteArray last = output.trimmed().split('\n').back();
    ASSERT_TRUE(last.startsWith("grown by ")) << output.toStdString();
    EXPECT_LT(last.mid(9, last.size() - 11).toDouble(), 5) << last.toStdString();
}

namespace {

/// Runs an action while writes beyond the given file size fail, as on a full disk.
void OnFullDisk(qint64 bytes, const std::function<void()> &action)
{
    rlimit before{};
    getrlimit(RLIMIT_FSIZE, &before);
    const rlimit limit{rlim_t(bytes), before.rlim_max};
    std::signal(SIGXFSZ, SIG_IGN);
    setrlimit(RLIMIT_FSIZE, &limit);
    action();
    setrlimit(RLIMIT_FSIZE, &before);
}

/// Runs an action as an unprivileged user, because root may write everywhere.
void AsNobody(const std::function<void()> &action)
{
    const bool isRoot = getuid() == 0;
    ASSERT_TRUE(!isRoot || seteuid(65534) == 0);
    action();
    ASSERT_TRUE(!isRoot || seteuid(0) == 0);
}

} // namespace

TEST_F(Faults, FailedWrite_LeavesOldFileIntact)
{
    const auto writeAll = [this] {
        for (const Writer &writer : Writers())
            EXPECT_FALSE(writer.write(folder.Path(writer.name))) << writer.name.toStdString();
    };
    const auto permit = [this](QFile::Permissions permissions) {
        for (const QString &name : {QString(), u"txt"_s, u"rec"_s, u"db_backup"_s})
            QFile::setPermissions(folder.Path(name), permissions);
    };
    for (const Writer &writer : Writers())
        if (!writer.before.isEmpty())
            folder.Write(writer.name, writer.before);
    OnFullDisk(20, writeAll);
    permit(QFile::Permissions(0x5055));
    AsNobody(writeAll);
    permit(QFile::Permissions(0x7000));
    for (const Writer &writer : Writers())
        EXPECT_EQ(folder.Read(writer.name), writer.before.isEmpty() ? "(no file)" : writer.before)
            << writer.name.toStdString();
    EXPECT_EQ(QDir(folder.Path(u"db_backup"_s)).entryList(QDir::Files), QStringList()) << "no partial copy";
    EXPECT_EQ(QDir(folder.Path(u"rec"_s)).entryList(QDir::Files).size(), 4) << "no partial sheet or export";
    EXPECT_EQ(QDir(folder.Path(u"txt"_s)).entryList({u"*.bak*"_s}), QStringList()) << "no stray backup";
}

TEST_F(Faults, LinkOutOfTheFolder_IsNeverWrittenThrough)
{
    const TestFolder elsewhere;
    std::vector<Writer> writers = Writers();
    const RunLog log(folder.Path(), u"Kotoban"_s, services.Clock());
    const QString speech = u"speak.js"_s;
    writers.push_back({u"Kotoban_log.txt"_s, "log", [&](const QString &) { return Tell(log.WriteYmdLogStart()); }});
    writers.push_back({u"Kotoban_log.txt"_s, "log", [&](const QString &) { return Tell(log.WriteLog(added)); }});
    writers.push_back({speech, "script", [&](const QString &) {
                           SpeakWord(services, folder.Path(), u"word"_s);
                           return elsewhere.Read(u"target"_s).contains("word");
                       }});
    writers.push_back({u"txt/a_印刷用.txt.bak"_s, "kept", [&](const QString &) {
                           folder.Write(u"txt/a_印刷用.txt"_s, "older");
                           return Tell(
                               WritePrintableCopy("newer", folder.Path(u"txt/a_印刷用.txt"_s), OldCopy::Outdated));
                       }});
    writers.push_back({u"db/linked.splite3"_s, folder.Read(u"db/kotoban.splite3"_s),
                       [&](const QString &path) { return database.Open(path) == 0; }});
    const QDir::Filters all = QDir::AllEntries | QDir::Hidden | QDir::System | QDir::NoDotAndDotDot;
    elsewhere.MakeFolder(u"deep"_s);
    const Rows<bool, bool> rows = {{false, false}, {true, false}, {false, true}, {true, true}};
    for (const auto &[isDangling, isUpFromLinkedFolder] : rows) {
        for (const Writer &writer : writers) {
            const QString path = folder.Path(writer.name);
            const QString target = elsewhere.Path(u"target"_s);
            QFile::link(elsewhere.Path(u"deep"_s), QFileInfo(path).path() + u"/hop"_s); // once in each folder
            QFile::remove(target);
            if (!isDangling)
                elsewhere.Write(u"target"_s, writer.before);
            QFile::remove(path);
            ASSERT_TRUE(QFile::link(isUpFromLinkedFolder ? u"hop/../target"_s : target, path));
            reason.clear();
            EXPECT_FALSE(writer.write(path)) << writer.name.toStdString();
            EXPECT_TRUE(elsewhere.Read(u"target"_s) == (isDangling ? "(no file)" : writer.before))
                << writer.name.toStdString();
            EXPECT_EQ(QDir(elsewhere.Path()).entryList(all).size(), isDangling ? 1 : 2) << writer.name.toStdString();
            EXPECT_TRUE(QFileInfo(path).isSymLink()) << writer.name.toStdString();
            EXPECT_TRUE(reason.isEmpty() || reason.contains(u"リンク"_s) || isDangling)
                << writer.name.toStdString() << reason.toStdString();
            QFile::remove(path);
        }
    }
    EXPECT_EQ(services.spoken.size(), qsizetype(rows.size()))
        << "a word is spoken although its script cannot be written";
}

TEST_F(Faults, DatabaseOnFullDisk_KeepsRowsAndRecovers)
{
    ASSERT_EQ(database.Open(databasePath), 0);
    EXPECT_TRUE(Record().isEmpty());
    OnFullDisk(QFileInfo(databasePath).size(), [this] {
        EXPECT_EQ(Record(QString(10'000, u'漢')), notWritten.first(1)) << "there is no row to update";
    });
    EXPECT_EQ(Query(databasePath, RowsAndIntegrity), u"1|ok"_s);
    EXPECT_TRUE(Record().isEmpty());
    EXPECT_EQ(Query(databasePath, RowsAndIntegrity), u"2|ok"_s);
}

TEST_F(Faults, ReadOnlyDatabase_IsReadButNotWritten)
{
    AddSession();
    EXPECT_EQ(Query(databasePath, "drop index i_kotoban_user_start"), QString());
    for (const QString &path : {QString(), u"db"_s})
        QFile::setPermissions(folder.Path(path), QFile::Permissions(0x7055));
    QFile::setPermissions(databasePath, QFile::Permissions(0x4044));
    AsNobody([this] {
        ASSERT_EQ(database.Open(databasePath), 0);
        EXPECT_EQ(Record(), notWritten);
        EXPECT_EQ(Read().TotalAnswers(), u"5"_s);
        DBIndexKotoban(database);
        EXPECT_TRUE(services.messages.isEmpty());
    });
}

TEST_F(Faults, DamagedDatabase_IsReportedAndNotOverwritten)
{
    AddSession();
    QByteArray bytes = folder.Read(u"db/kotoban.splite3"_s);
    bytes.replace(4096, bytes.size() - 4096, QByteArray(bytes.size() - 4096, 'x')); // all pages except the first
    folder.Write(u"db/kotoban.splite3"_s, bytes);
    ASSERT_EQ(database.Open(databasePath), 0);
    EXPECT_EQ(Read().LineCount(), 0);
    EXPECT_EQ(services.TakeMessages().filter(u"SQLite3Step returned"_s).size(), 1);
    EXPECT_EQ(Record(), notWritten);
    database.Close();
    EXPECT_EQ(folder.Read(u"db/kotoban.splite3"_s), bytes);
}

TEST_F(Faults, UnfinishedBackup_IsNotCountedAndIsRemoved)
{
    for (const QString &name : {u"unfinished.copy"_s, u"unfinished.copy.AbCdEf"_s, u"unfinished.copy-journal.AbCdEf"_s})
        folder.Write(u"db_backup/"_s + name, "half");
    folder.Write(u"db_backup/unfinished.copy of May"_s, "the user's own file");
    QString error;
    OnFullDisk(QFileInfo(databasePath).size() / 2, [&] { EXPECT_FALSE(BackUp(&error)); });
    EXPECT_TRUE(error.startsWith(u"データベースのバックアップに失敗しました。"_s));
    EXPECT_FALSE(ExistsFileOfDay(folder.Path(u"db_backup"_s), u"_2024_0305"_s)) << "the next start tries again";
    EXPECT_TRUE(BackUp(&error));
    EXPECT_EQ(QDir(folder.Path(u"db_backup"_s)).entryList(QDir::Files, QDir::Name),
              QStringList({u"kotoban_2024_0305-1430_15.splite3"_s, u"unfinished.copy of May"_s}));
    EXPECT_EQ(folder.Read(u"db_backup/kotoban_2024_0305-1430_15.splite3"_s), folder.Read(u"db/kotoban.splite3"_s));
}

TEST_F(Faults, Backup_HasPermissionsOfDatabase)
{
    const QByteArray backup = QFile::encodeName(folder.Path(u"db_backup/kotoban_2024_0305-1430_15.splite3"_s));
    for (const mode_t mode : {0600U, 0640U, 0444U, 0666U}) {
        chmod(qPrintable(databasePath), mode);
        QString error;
        EXPECT_TRUE(BackUp(&error)) << error.toStdString();
        struct stat about = {};
        stat(backup.constData(), &about);
        EXPECT_EQ(about.st_mode & 0777, mode);
        unlink(backup.constData());
    }
}

TEST_F(Faults, BackupAfterCrash_ContainsAllCommittedRows)
{
    const QByteArray insert = "with recursive n(i) as (select 1 union all select i+1 from n where i<5000) insert into "
                              "t_kotoban select '2024/03/05','b',i,'f',null,null from n;";
    const Rows<const char *, QByteArray, QString, QString> crashes = {
        {"during a write", "pragma cache_size=1; begin;" + insert, u"-journal"_s, u"1"_s},
        {"with a write in the log", "pragma journal_mode=wal;" + insert, u"-wal"_s, u"5001"_s},
    };
    AddSession();
    const QString name = u"db/kotoban.splite3"_s;
    const QString backup = folder.Path(u"db_backup/kotoban_2024_0305-1430_15.splite3"_s);
    for (const auto &[crash, sql, ending, rows] : crashes) {
        // The files as they are on disk while the database is open.
        sqlite3 *writing = nullptr;
        sqlite3_open(qPrintable(databasePath), &writing);
        EXPECT_EQ(sqlite3_exec(writing, sql.constData(), nullptr, nullptr, nullptr), SQLITE_OK) << crash;
        const QByteArray written = folder.Read(name);
        const QByteArray beside = folder.Read(name + ending);
        sqlite3_close(writing);
        folder.Write(name, written);
        folder.Write(name + ending, beside);

        QString error;
        EXPECT_TRUE(BackUp(&error)) << crash;
        EXPECT_EQ(QDir(folder.Path(u"db_backup"_s)).entryList(QDir::Files).size(), 1) << crash;
        EXPECT_EQ(Query(backup, RowsAndIntegrity), rows + u"|ok"_s) << crash;
        EXPECT_EQ(folder.Read(name), written) << crash << ": the database itself is only read";
        EXPECT_EQ(folder.Read(name + ending), beside) << crash;
        QFile::remove(backup);
    }
}

TEST_F(Faults, NonRegularFile_IsListedWithRemarkAndNeverOpened)
{
    const QString fifo = folder.Path(u"rec/a.txt"_s);
    ASSERT_EQ(mkfifo(QFile::encodeName(fifo).constData(), 0600), 0);
    ASSERT_TRUE(QFile::link(fifo, folder.Path(u"rec/b.txt"_s)));
    StudyFolder files(folder.Path(u"rec"_s));
    files.Refresh();
    EXPECT_EQ(files.Names(), QStringList({u"a.txt"_s, u"b.txt"_s}));
    for (const QString &name : files.Names()) {
        files.Check(name);
        EXPECT_EQ(files.Facts(name).remarks, u"読み込み不可"_s);
    }
    EXPECT_EQ(database.Open(fifo), SQLITE_CANTOPEN);
}
