// SPDX-FileCopyrightText: 2026 The Kotoban developers
// SPDX-License-Identifier: MIT

#include "app/frmLogin.h"
#include "app/modMain.h"
#include "app/modUserList.h"
#include "base/modFile.h"
#include "base/modProduct.h"
#include "store/modDB_SQLite.h"
#include "support/Rows.h"
#include "support/WindowTest.h"

#include <QInputMethodEvent>
#include <QLineEdit>
#include <QListWidget>
#include <QLoggingCategory>
#include <QSignalSpy>
#include <QTest>
#include <QTimer>

#include <gtest/gtest.h>

using namespace Qt::Literals::StringLiterals;

namespace {

class StartTest : public testing::Test
{
  protected:
    StartTest()
    {
        for (const QStringView name : RequiredFolders)
            folder.MakeFolder(name.toString());
    }

    bool Prepare()
    {
        const InstanceMark instance(folder.Path());
        const bool isPrepared = PrepareRun(folder.Path(), instance, log, services, database);
        if (isPrepared)
            CompleteDatabase(folder.Path(), services, database);
        return isPrepared;
    }

    /// Makes a database as another program may have made it: with the table, if wanted, but without the index.
    QString MakeForeignDatabase(const QString &statement)
    {
        QString path = folder.Path(u"db/kotoban.splite3"_s);
        StudyDatabase other(services);
        EXPECT_EQ(other.Open(path), 0);
        EXPECT_TRUE(other.SQLite3NonQuery(statement));
        return path;
    }

    bool HasIndex()
    {
        ResultTable table;
        return database.SQLite3Query(u"select 1 from sqlite_master where type = 'index'"_s, &table) && table.size() > 1;
    }

    QStringList FilesIn(const QString &name) const
    {
        return QDir(folder.Path(name)).entryList(QDir::Files, QDir::Name);
    }

    TestFolder folder;
    RecordingServices services;
    StudyDatabase database{services};
    RunLog log{folder.Path(), u"Kotoban"_s, services.Clock()};
};

const QByteArray Header = ToCodePage932(QString(u"Kotoban.exe　Ver"_s + VersionText() + u"\r\n2024/03/05(火)\r\n"));

} // namespace

TEST_F(StartTest, FirstStart_CreatesLogDatabaseAndBackup)
{
    folder.Write(u"Kotoban_log.txt"_s, "previous run");
    EXPECT_TRUE(Prepare());
    EXPECT_EQ(services.title, u"瞬記帳"_s);
    EXPECT_EQ(folder.Read(u"Kotoban_log.txt"_s), Header);
    EXPECT_EQ(FilesIn(u"db_backup"_s), QStringList(u"kotoban_2024_0305-1430_15.splite3"_s));
    EXPECT_EQ(folder.Read(u"db_backup/kotoban_2024_0305-1430_15.splite3"_s), folder.Read(u"db/kotoban.splite3"_s));
    EXPECT_FALSE(database.LacksTable(u"t_kotoban"_s)) << "the first database is created";
    EXPECT_TRUE(services.messages.isEmpty());
}

TEST_F(StartTest, StartWithoutAndWithLoggingRule_TracesOnlyWithIt)
{
    static QStringList lines;
    lines.clear();
    const QtMessageHandler before =
        qInstallMessageHandler([](QtMsgType, const QMessageLogContext &context, const QString &line) {
            lines.append(QString::fromLatin1(context.category) + u' ' + line);
        });
    EXPECT_TRUE(Prepare());
    const QStringList byDefault = lines;
    database.Close();
    QDir(folder.Path(u"db_backup"_s)).removeRecursively();
    folder.MakeFolder(u"db_backup"_s);
    QLoggingCategory::setFilterRules(u"kotoban.trace.debug=true"_s);
    EXPECT_TRUE(Prepare());
    QLoggingCategory::setFilterRules(QString());
    qInstallMessageHandler(before);
    EXPECT_EQ(byDefault, QStringList());
    const QString all = lines.join(u'|');
    EXPECT_TRUE(all.startsWith(u"kotoban.trace ■Main().WriteYmdLogStart|kotoban.trace CPU="_s)) << all.toStdString();
    EXPECT_TRUE(all.endsWith(u"FileCopy|kotoban.trace FileCopyFinished|kotoban.trace KillOldBackup"_s))
        << all.toStdString();
}

TEST_F(StartTest, SecondInstance_IsRefusedAndWritesNothing)
{
    const InstanceMark first(folder.Path());
    EXPECT_FALSE(Prepare());
    EXPECT_EQ(services.TakeMessages(), QStringList(u"二重起動はできません。"_s));
    EXPECT_EQ(services.titles, QStringList(QString())) << "the title is set later";
    EXPECT_FALSE(QFile::exists(folder.Path(u"Kotoban_log.txt"_s)));
    EXPECT_TRUE(FilesIn(u"db_backup"_s).isEmpty());
}

TEST_F(StartTest, MissingFolders_FirstIsTheOnlyLogEntry)
{
    QDir(folder.Path(u"rec"_s)).removeRecursively();
    QDir(folder.Path(u"db_backup"_s)).removeRecursively();
    folder.Write(u"db_backup"_s, "a file, not a folder");
    EXPECT_FALSE(Prepare());
    EXPECT_TRUE(services.messages.isEmpty()) << "no message box";
    const QString entry = u"14:30:15 次のフォルダが存在しません。\r\n次のフォルダを作成してください。\r\n\r\n　"_s +
                          QDir::toNativeSeparators(folder.Path(u"db_backup"_s)) + u"\r\n"_s;
    EXPECT_EQ(folder.Read(u"Kotoban_log.txt"_s), QByteArray(Header + ToCodePage932(entry)));
}

TEST_F(StartTest, FolderWithoutBackup_GetsFirstDatabaseSilently)
{
    const Rows<const char *, QString, QByteArray> found = {
        {"file of 0 bytes", u"db/kotoban.splite3"_s, ""},
        {"journal of nothing", u"db/kotoban.splite3-journal"_s, QByteArray(5000, 'j')},
        {"half a database", u"db/unfinished.copy"_s, "SQLite format 3"},
        {"half a backup", u"db_backup/unfinished.copy.AbCdEf"_s, "SQLite format 3"},
        {"no backup, but something else", u"db_backup/about this folder.txt"_s, "text"},
    };
    for (const auto &[what, name, bytes] : found) {
        folder.Write(name, bytes);
        EXPECT_TRUE(Prepare()) << what;
        EXPECT_EQ(services.TakeMessages(), QStringList()) << what;
        EXPECT_FALSE(database.LacksTable(u"t_kotoban"_s)) << what;
        EXPECT_TRUE(HasIndex()) << what;
        database.Close();
        EXPECT_EQ(FilesIn(u"db"_s), QStringList(u"kotoban.splite3"_s)) << what;
        EXPECT_TRUE(FilesIn(u"db_backup"_s).contains(u"kotoban_2024_0305-1430_15.splite3"_s)) << what;
        for (const QString &used : {u"db"_s, u"db_backup"_s}) {
            QDir(folder.Path(used)).removeRecursively();
            folder.MakeFolder(used);
        }
    }
}

TEST_F(StartTest, LostDatabase_IsReportedAndNotRecreated)
{
    const QString name = u"db/kotoban.splite3"_s;
    for (const QString &backup : {u"kotoban_2024_0304-0800_00.splite3"_s, u"kotoban_2024_0305-0800_00.splite3"_s})
        for (const bool isEmpty : {false, true}) {
            folder.Write(u"db_backup/"_s + backup, "record");
            QFile::remove(folder.Path(name));
            if (isEmpty)
                folder.Write(name, "");
            EXPECT_FALSE(Prepare());
            const QString message = services.TakeMessages().join(u'|');
            EXPECT_TRUE(message.startsWith(u"データベースのバックアップに失敗しました。"_s)) << message.toStdString();
            EXPECT_TRUE(message.contains(u"データベースのファイルがありません。"_s)) << message.toStdString();
            EXPECT_EQ(QFileInfo(folder.Path(name)).size(), 0) << "an empty database would hide the loss";
            EXPECT_EQ(QFileInfo::exists(folder.Path(name)), isEmpty);
            EXPECT_EQ(FilesIn(u"db_backup"_s).last(), backup) << "no new backup";
        }
}

TEST_F(StartTest, DatabaseWithoutTable_GetsOneWithSingleMessage)
{
    MakeForeignDatabase(u"create table other (a)"_s);
    const QByteArray before = folder.Read(u"db/kotoban.splite3"_s);
    {
        const InstanceMark instance(folder.Path());
        EXPECT_TRUE(PrepareRun(folder.Path(), instance, log, services, database));
        database.Close();
    }
    EXPECT_TRUE(services.messages.isEmpty()) << "nothing is told before the first window";
    EXPECT_EQ(folder.Read(u"db/kotoban.splite3"_s), before);
    EXPECT_TRUE(Prepare());
    const QStringList messages = services.TakeMessages();
    ASSERT_EQ(messages.size(), 1);
    EXPECT_TRUE(messages[0].contains(QDir::toNativeSeparators(folder.Path(u"db_backup"_s))))
        << messages[0].toStdString();
    EXPECT_FALSE(database.LacksTable(u"t_kotoban"_s));
    database.Close();
    EXPECT_TRUE(Prepare());
    EXPECT_TRUE(services.messages.isEmpty());
}

TEST_F(StartTest, DatabaseWithoutIndex_GetsOneSilentlyOnceItIsNotLocked)
{
    const QString path = MakeForeignDatabase(KotobanSchema.front().toString());
    const QByteArray before = folder.Read(u"db/kotoban.splite3"_s);
    StudyDatabase other(services);
    EXPECT_EQ(other.Open(path), 0);
    EXPECT_TRUE(other.SQLite3NonQuery(u"begin immediate"_s));
    EXPECT_TRUE(Prepare());
    EXPECT_FALSE(HasIndex()) << "another program is writing";
    database.Close();
    other.Close();
    EXPECT_TRUE(Prepare());
    EXPECT_TRUE(HasIndex());
    EXPECT_TRUE(services.messages.isEmpty());
    EXPECT_TRUE(folder.Read(u"db_backup/kotoban_2024_0305-1430_15.splite3"_s) == before) << "the backup comes first";
}

TEST_F(StartTest, FolderInPlaceOfFile_IsReportedAndEndsStart)
{
    folder.Write(u"db_backup/by hand_2024_0305.txt"_s, ""); // counts as today's backup
    for (const auto &[name, message] : {std::pair(u"Kotoban_log.txt"_s, u"実行ログに書き込めません。"_s),
                                        {u"db/kotoban.splite3"_s, u"DBFile Open Error"_s}}) {
        folder.MakeFolder(name);
        EXPECT_FALSE(Prepare());
        const QString shown = services.TakeMessages().value(0);
        EXPECT_TRUE(shown.startsWith(message)) << message.toStdString();
        EXPECT_EQ(shown.contains(u"書き込める場所へフォルダごと移してから"_s), name == u"Kotoban_log.txt"_s);
        QDir().rmdir(folder.Path(name));
    }
}

TEST_F(StartTest, BackupOverManyDays_KeepsOnePerDayAndNeverPrunes)
{
    QString error;
    const auto backUp = [&](int day, int hour) {
        return BackupDatabase(folder.Path(u"db"_s), u"kotoban.splite3"_s, folder.Path(u"db_backup"_s), 20,
                              QDateTime(QDate(2024, 3, 1).addDays(day), QTime(hour, 0)), &error);
    };
    folder.Write(u"db/kotoban.splite3"_s, "records");
    for (int day = 0; day < 25; ++day) {
        EXPECT_TRUE(backUp(day, 8));
        EXPECT_TRUE(backUp(day, 9));
    }
    EXPECT_EQ(FilesIn(u"db_backup"_s).size(), 25);
    EXPECT_EQ(folder.Read(u"db_backup/kotoban_2024_0325-0800_00.splite3"_s), "records");
    folder.Write(u"db_backup/note_2024_0326.txt"_s, "");
    EXPECT_TRUE(backUp(25, 8));
    EXPECT_EQ(FilesIn(u"db_backup"_s).size(), 26) << "any file with the day's date suppresses the backup";
}

TEST_F(StartTest, OldLogFiles_ArePrunedToNewestByName)
{
    for (int i = 10; i < 22; ++i)
        folder.Write(u"log/Log2024_"_s + QString::number(i) + u".txt"_s, "");
    folder.Write(u"log/Other.txt"_s, "");
    folder.Write(u"log/Log2000.doc"_s, "");
    EXPECT_TRUE(Prepare());
    QStringList left = FilesIn(u"log"_s);
    EXPECT_EQ(left.size(), 12);
    EXPECT_FALSE(left.contains(u"Log2024_10.txt"_s) || left.contains(u"Log2024_11.txt"_s));
}

TEST(UserList, AppendName_AddsOneLineAndNeverReplacesUnreadableList)
{
    const TestFolder folder;
    const QString path = folder.Path(u"ListUserName.txt"_s);
    EXPECT_TRUE(ReadUserNames(path).isEmpty());
    EXPECT_FALSE(AppendUserName(path, u" 花子 "_s));
    EXPECT_EQ(folder.Read(u"ListUserName.txt"_s), " \x89\xD4\x8Eq \r\n");
    folder.Write(u"ListUserName.txt"_s, "taro\n\xB1\xB2");
    EXPECT_FALSE(AppendUserName(path, u"Taro"_s));
    EXPECT_EQ(folder.Read(u"ListUserName.txt"_s), "taro\n\xB1\xB2\r\nTaro\r\n");
    EXPECT_EQ(ReadUserNames(path), QStringList({u"taro"_s, u"ｱｲ"_s, u"Taro"_s})) << "bytes that are also valid EUC";
    const QByteArray largest = QByteArray(MaxUserListBytes - 3, 'x') + "\n";
    folder.Write(u"ListUserName.txt"_s, largest);
    EXPECT_EQ(AppendUserName(path, u"x"_s).reason, u"1MBを超えるので，書き込みません。"_s);
    EXPECT_EQ(ReadUserNames(path).size(), 1);
    EXPECT_FALSE(AppendUserName(path, u""_s));
    EXPECT_EQ(ReadUserNames(path).size(), 2) << "as large as may be";
    folder.Write(u"ListUserName.txt"_s, largest + "abc");
    EXPECT_TRUE(ReadUserNames(path).isEmpty());
    EXPECT_TRUE(AppendUserName(path, u""_s)) << "an unreadable list is not replaced";
    EXPECT_EQ(folder.Read(u"ListUserName.txt"_s), largest + "abc");
}

namespace {

class LoginTest : public WindowTest
{
  protected:
    void Type(const QString &name)
    {
        script.When(u"frmLogin"_s, [name](QWidget *window) {
            auto *const text = window->findChild<QLineEdit *>(u"txtUserName"_s);
            EXPECT_TRUE(text->hasFocus());
            text->setText(name);
            QTest::keyClick(text, Qt::Key_Return);
        });
    }

    QString path = folder.Write(u"ListUserName.txt"_s, "taro\r\n\x89\xD4\x8Eq\r\n");
    frmLogin login{services, msg, path, QString()};
};

} // namespace

TEST_F(LoginTest, NameOutsideCodePage_IsRefusedAndOtherNameIsStoredExactly)
{
    EXPECT_EQ(login.windowTitle(), QString(u"瞬記帳 Ver"_s + VersionText() + u" ログイン画面"_s));
    for (const QString &name : {u"  "_s, u"José\u00A0𠮷田é"_s, u"a\n\tb\n"_s, u"\t"_s}) {
        Type(name);
        script.Click(u"frmMsg"_s, u"cmdOK"_s);
    }
    Type(u" 　"_s); // blank only if all characters are half-width spaces
    EXPECT_EQ(login.Ask(), LoginResult::Accepted);
    const QString refusal = u"利用者名に使えない文字が含まれています。\n  "_s;
    EXPECT_EQ(script.messages, QStringList({u"利用者名は入力必須です。"_s, refusal + u"é U+00A0 𠮷"_s,
                                            refusal + u"U+000A U+0009"_s, refusal + u"U+0009"_s}));
    EXPECT_EQ(login.UserName(), u" 　"_s);
    EXPECT_EQ(ReadUserNames(path), QStringList({u"taro"_s, u"花子"_s, u" 　"_s}));
}

TEST_F(LoginTest, HelpThatCannotBeOpened_IsToldThereWhenNoMessageIsOpen)
{
    auto *const telling = login.findChild<QTimer *>(u"tmrTell"_s);
    ASSERT_TRUE(telling);
    telling->setInterval(0);
    Type(QString());
    script.When(u"frmMsg"_s, [&](QWidget *message) {
        QSignalSpy tries(telling, &QTimer::timeout);
        services.tellFailure(u"no browser"_s);
        EXPECT_TRUE(WaitFor([&tries] { return tries.size() > 2; }));
        EXPECT_EQ(message->findChild<QLabel *>(u"lblMsg"_s)->text(), u"利用者名は入力必須です。"_s);
        script.Click(u"frmMsg"_s, u"cmdOK"_s);
        Type(u"花"_s);
        DialogScript::Press(message, u"cmdOK"_s);
    });
    EXPECT_EQ(login.Ask(), LoginResult::Accepted);
    EXPECT_EQ(script.messages, QStringList({u"利用者名は入力必須です。"_s, u"no browser"_s}));
}

TEST_F(LoginTest, NameWithQuote_WarnsThatNothingIsRecorded)
{
    Type(u"O'Hara"_s);
    script.Click(u"frmMsg"_s, u"cmdCancel"_s);
    script.When(u"frmLogin"_s, [this](QWidget *window) {
        EXPECT_EQ(ReadUserNames(path).size(), 2);
        QTest::keyClick(window->focusWidget(), Qt::Key_Escape);
        EXPECT_TRUE(window->isVisible()) << "Esc does nothing";
        QTest::keyClick(window->focusWidget(), Qt::Key_Return);
    });
    script.Click(u"frmMsg"_s, u"cmdOK"_s);
    EXPECT_EQ(login.Ask(), LoginResult::Accepted);
    EXPECT_EQ(script.messages.size(), 2);
    EXPECT_EQ(login.UserName(), u"O'Hara"_s);
}

TEST_F(LoginTest, ListedName_ReplacesTypedOneAndIsNotAddedAgain)
{
    script.When(u"frmLogin"_s, [](QWidget *window) {
        auto *const text = window->findChild<QLineEdit *>(u"txtUserName"_s);
        auto *const list = window->findChild<QListWidget *>(u"lstUserName"_s);
        text->setText(u"jiro"_s);
        for (const QString &control : {u"txtUserName"_s, u"lstUserName"_s, u"cmdOK"_s, u"cmdEnd"_s}) {
            EXPECT_EQ(window->focusWidget()->objectName(), control);
            QTest::keyClick(window->focusWidget(), Qt::Key_Tab);
        }
        QTest::keyClick(text, Qt::Key_Tab);
        EXPECT_TRUE(list->hasFocus());
        EXPECT_EQ(text->text(), u"jiro"_s);
        QTest::keyClick(list, Qt::Key_Down);
        EXPECT_EQ(text->text(), u"taro"_s);
        QTest::mouseClick(list->viewport(), Qt::LeftButton, {}, list->visualItemRect(list->item(1)).center());
        window->findChild<QAbstractButton *>(u"cmdOK"_s)->click();
    });
    EXPECT_EQ(login.Ask(), LoginResult::Accepted);
    EXPECT_EQ(login.UserName(), u"花子"_s);
    EXPECT_EQ(ReadUserNames(path).size(), 2);
}

TEST_F(LoginTest, LastUser_IsPreselectedIfListed)
{
    frmLogin again{services, msg, path, u"花子"_s};
    script.When(u"frmLogin"_s, [](QWidget *window) {
        const auto *const text = window->findChild<QLineEdit *>(u"txtUserName"_s);
        EXPECT_TRUE(text->hasFocus());
        EXPECT_EQ(text->selectedText(), u"花子"_s) << "typing replaces it";
        QTest::keyClick(window->focusWidget(), Qt::Key_Return);
    });
    EXPECT_EQ(again.Ask(), LoginResult::Accepted);
    EXPECT_EQ(again.UserName(), u"花子"_s);
    frmLogin other{services, msg, path, u"gone"_s};
    EXPECT_EQ(other.findChild<QLineEdit *>(u"txtUserName"_s)->text(), QString());
}

TEST_F(LoginTest, EmptyLineOfList_IsNotPreselected)
{
    folder.Write(u"ListUserName.txt"_s, "\r\ntaro\r\n");
    const frmLogin again{services, msg, path, QString()};
    EXPECT_TRUE(again.findChild<QListWidget *>(u"lstUserName"_s)->selectedItems().isEmpty());
}

TEST_F(LoginTest, WaveDash_IsReplacedByTheOneThatTheListCanStore)
{
    Type(u"は〜い"_s);
    EXPECT_EQ(login.Ask(), LoginResult::Accepted);
    EXPECT_EQ(login.UserName(), u"は～い"_s);
    EXPECT_EQ(ReadUserNames(path).back(), u"は～い"_s);
}

TEST_F(LoginTest, NameOfWhichTheListLostCharacters_IsTheNameOfItsRecords)
{
    const QByteArray list = "?\x93\x63\r\n\x82\xCD?\x82\xA2\r\n\xFDx\r\n"; // as version 1.0.0 wrote it
    folder.Write(u"ListUserName.txt"_s, list);
    for (const QString &name : {u"𠮷田"_s, u"は〜い"_s, u"?田"_s, u"\uFFFDx"_s}) {
        frmLogin again{services, msg, path, QString()};
        script.When(u"frmLogin"_s, [&name](QWidget *window) {
            window->findChild<QLineEdit *>(u"txtUserName"_s)->setText(name);
            QTest::keyClick(window->focusWidget(), Qt::Key_Return);
        });
        EXPECT_EQ(again.Ask(), LoginResult::Accepted);
        EXPECT_EQ(again.UserName(), name);
    }
    EXPECT_EQ(folder.Read(u"ListUserName.txt"_s), list);
}

TEST_F(LoginTest, EnterDuringComposition_DoesNotPressOk)
{
    script.When(u"frmLogin"_s, [](QWidget *window) {
        auto *const text = window->findChild<QLineEdit *>(u"txtUserName"_s);
        QInputMethodEvent composing(u"はなこ"_s, {});
        QApplication::sendEvent(text, &composing);
        QTest::keyClick(text, Qt::Key_Return);
        EXPECT_TRUE(window->isVisible());
        QInputMethodEvent converted;
        converted.setCommitString(u"次郎"_s);
        QApplication::sendEvent(text, &converted);
        QTest::keyClick(text, Qt::Key_Return);
    });
    EXPECT_EQ(login.Ask(), LoginResult::Accepted);
    EXPECT_EQ(login.UserName(), u"次郎"_s);
}

TEST_F(LoginTest, CloseAndEndButton_GiveDifferentResults)
{
    script.When(u"frmLogin"_s, [](QWidget *window) { window->close(); });
    EXPECT_EQ(login.Ask(), LoginResult::Closed);
    EXPECT_TRUE(login.UserName().isEmpty());
    script.Click(u"frmLogin"_s, u"cmdEnd"_s);
    EXPECT_EQ(login.Ask(), LoginResult::EndProgram);
}
