// SPDX-FileCopyrightText: 2026 The Kotoban developers
// SPDX-License-Identifier: MIT

// Tests of platform/ on systems other than Windows.
#include "base/modFile.h"
#include "base/modLog.h"
#include "platform/modDarkMode.h"
#include "platform/modEndSignal.h"
#include "platform/modFolderNames.h"
#include "platform/modInputMethod.h"
#include "platform/modProcess.h"
#include "platform/modProfile.h"
#include "platform/modReplaceFile.h"
#include "platform/modVoice.h"
#include "support/RecordingServices.h"
#include "support/Rows.h"
#include "support/TestFiles.h"
#include "support/WaitFor.h"

#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusVariant>
#include <QDBusVirtualObject>
#include <QProcess>
#include <QSignalSpy>
#include <QTest>
#include <QThread>

#include <cerrno>
#include <csignal>
#include <cstdio>
#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/sysmacros.h>
#include <unistd.h>

using namespace Qt::Literals::StringLiterals;

TEST(Process, StartPathWithBlanks_PassesFileAsOneArgument)
{
    const TestFolder folder;
    const QString script =
        folder.Write(u"my tools/ed.sh"_s, "#!/bin/sh\nprintf %s \"$1\" > \"$(dirname \"$0\")/got\"\n");
    QFile::setPermissions(script, QFile::ReadOwner | QFile::ExeOwner);
    EXPECT_TRUE(StartProcess(script + u" \"a b.txt\""_s));
    EXPECT_TRUE(WaitFor([&] { return folder.Read(u"my tools/got"_s) == "a b.txt"; }));
    EXPECT_FALSE(StartProcess(folder.Path(u"missing"_s)));
    EXPECT_FALSE(StartProcess(QString()));
}

TEST(Process, StartNotepad_StartsDesktopsEditorUnlessItSpoilsFiles)
{
    const Rows<const char *, QByteArray, const char *, QByteArray> rows = {
        {"default spoils files, fitting editor installed", "org.xfce.mousepad.desktop", "gedit", "gedit"},
        {"default saves UTF-8, fitting editor installed", "org.gnome.TextEditor.desktop", "kate", "kate"},
        {"default spoils files, no other editor", "org.xfce.mousepad.desktop", "mousepad", "xdg-open"},
        {"fitting default", "org.kde.kwrite.desktop", "gedit", "xdg-open"},
        {"unknown default", "vim.desktop", "gedit", "xdg-open"},
        {"no default", "", "l3afpad", "l3afpad"},
        {"no editor, for which xdg-open does not count", "", "vi", ""},
    };
    const QByteArray path = qgetenv("PATH");
    for (const auto &[name, handler, installed, started] : rows) {
        const TestFolder folder;
        for (const QByteArray program : {"xdg-open", installed}) {
            const QString script =
                folder.Write(QString::fromLatin1(program), "#!/bin/sh\nprintf %s \"${0##*/} $1\" > \"${0%/*}/got\"\n");
            QFile::setPermissions(script, QFile::ReadOwner | QFile::ExeOwner);
        }
        QFile::setPermissions(folder.Write(u"xdg-mime"_s, "#!/bin/sh\necho " + handler + '\n'),
                              QFile::ReadOwner | QFile::ExeOwner);
        qputenv("PATH", QFile::encodeName(folder.Path()));
        EXPECT_EQ(StartProcess(u"notepad.exe \"a.txt\""_s), !started.isEmpty()) << name;
        EXPECT_TRUE(WaitFor([&, &started = started] {
            return started.isEmpty() || folder.Read(u"got"_s) == started + " a.txt";
        })) << name;
        qputenv("PATH", path);
    }
}

TEST(Process, StartedOpenerSoonFails_IsToldWithWhatToInstall)
{
    const TestFolder folder;
    folder.Write(u"page.htm"_s, "");
    folder.Write(u"good.htm"_s, "");
    const auto write = [&folder](const QString &name, const QByteArray &script) {
        QFile::setPermissions(folder.Write(name, "#!/bin/sh\n" + script), QFile::ReadOwner | QFile::ExeOwner);
    };
    const QByteArray path = qgetenv("PATH");
    qputenv("PATH", QFile::encodeName(folder.Path()));
    QStringList told;
    const auto tell = [&told](const QString &advice) { told += advice; };
    write(u"xdg-open"_s, "case $1 in *good.htm) : > \"${0%/*}/opened\";; *) exit 3;; esac\n");
    write(u"xdg-mime"_s, "echo ed.desktop\n");
    write(u"own.sh"_s, ": > \"${0%/*}/own\"; exit 1\n");
    EXPECT_TRUE(ShellOpen(folder.Path(u"good.htm"_s), folder.Path(), tell));
    EXPECT_TRUE(StartProcess(folder.Path(u"own.sh"_s), tell)) << "the user's own editor is not watched";
    const auto exists = [&folder](const QString &name) { return QFile::exists(folder.Path(name)); };
    EXPECT_TRUE(WaitFor([&] { return exists(u"opened"_s) && exists(u"own"_s); }));
    EXPECT_EQ(told, QStringList());
    EXPECT_TRUE(ShellOpen(folder.Path(u"page.htm"_s), folder.Path(), tell));
    EXPECT_TRUE(WaitFor([&] { return told.size() == 1; }));
    EXPECT_TRUE(ShellOpen(folder.Path(), u"c:\\"_s, tell));
    EXPECT_TRUE(WaitFor([&] { return told.size() == 2; }));
    EXPECT_TRUE(StartProcess(u"notepad.exe \"a.txt\""_s, tell));
    EXPECT_TRUE(WaitFor([&] { return told.size() == 3; }));
    EXPECT_EQ(told, QStringList({u"ブラウザ（Firefox など）をインストールしてください。"_s,
                                 u"ファイルマネージャー（PCManFM など）をインストールしてください。"_s,
                                 u"テキストエディタ（gedit，Kate など）をインストールしてください。"_s}));
    qputenv("PATH", path);
}

TEST(Voice, SpeakHostileText_PassesItAsOneArgument)
{
    const TestFolder folder;
    const QString service = folder.Write(u"spd-say"_s, "#!/bin/sh\nprintf '%s|' \"$@\" >> \"${0%/*}/said\"\n");
    QFile::setPermissions(service, QFile::ReadOwner | QFile::ExeOwner);
    const QByteArray path = qgetenv("PATH");
    qputenv("PATH", QFile::encodeName(folder.Path()));
    QByteArray said;
    Voice voice;
    for (const auto &[text, language] :
         {std::pair{u"\"+new A(\"B\").Run(\"c\")+\""_s, "en"}, {u"$(touch 漢)"_s, "ja"}, {u"--help"_s, "en"}}) {
        voice.Speak(text);
        said += QByteArray("-l|") + language + "|--|" + text.toUtf8() + '|';
        EXPECT_TRUE(WaitFor([&] { return folder.Read(u"said"_s) == said; })) << said.constData();
    }
    qputenv("PATH", path);
}

TEST(Voice, SpeakBeforeTheTextBeforeHasEnded_EndsIt)
{
    const TestFolder folder;
    const QString program =
        folder.Write(u"espeak-ng"_s, "#!/bin/sh\necho $$ >> \"${0%/*}/started\"\nexec /bin/sleep 1000\n");
    QFile::setPermissions(program, QFile::ReadOwner | QFile::ExeOwner);
    const QByteArray path = qgetenv("PATH");
    qputenv("PATH", QFile::encodeName(folder.Path()));
    const auto started = [&folder](qsizetype count) {
        return WaitFor([&] { return folder.Read(u"started"_s).count('\n') == count; });
    };
    const auto hasEnded = [&folder](qsizetype index) {
        const int id = folder.Read(u"started"_s).split('\n')[index].toInt();
        return WaitFor([id] { return id > 0 && kill(id, 0) != 0; });
    };
    {
        Voice voice;
        voice.Speak(u"first"_s);
        ASSERT_TRUE(started(1));
        voice.Speak(u"second"_s);
        ASSERT_TRUE(started(2));
        EXPECT_TRUE(hasEnded(0));
    }
    EXPECT_TRUE(hasEnded(1)) << "with the program";
    qputenv("PATH", path);
}

// Each of these used to block forever, exhaust memory or be replaced by a file.
TEST(File, ReadOrReplaceNonRegularFile_FailsAndLeavesItUntouched)
{
    const TestFolder folder;
    const auto path = [&folder](const char *name) { return QFile::encodeName(folder.Path(QLatin1String(name))); };
    ASSERT_EQ(mkfifo(path("fifo").constData(), 0600), 0);
    ASSERT_EQ(symlink("fifo", path("link to a fifo").constData()), 0);
    folder.MakeFolder(u"folder"_s);
    QStringList names = {u"fifo"_s, u"link to a fifo"_s, u"folder"_s};
    // Our own device node with the numbers of /dev/zero; only root can create one.
    if (mknod(path("device").constData(), S_IFCHR | 0600, makedev(1, 5)) == 0) {
        ASSERT_EQ(symlink("device", path("link to a device").constData()), 0);
        names += {u"device"_s, u"link to a device"_s};
    }
    RecordingServices services;
    for (const QString &name : names) {
        const QString file = folder.Path(name);
        struct stat before = {}, after = {};
        lstat(QFile::encodeName(file).constData(), &before);
        QByteArray bytes = "kept?";
        EXPECT_TRUE(ReadWholeFile(file, &bytes)) << qPrintable(name);
        EXPECT_TRUE(bytes.isEmpty()) << qPrintable(name);
        EXPECT_EQ(ReplaceFile(file, "new").path, file);
        EXPECT_EQ(CopyWholeFile(file, folder.Path(u"copy"_s)).path, file);
        EXPECT_EQ(CopyWholeFile(folder.Write(u"a.txt"_s, "a"), file).path, file);
        EXPECT_FALSE(WriteProfile(file, u"setting"_s, {{u"Key"_s, u"new"_s}})) << qPrintable(name);
        EXPECT_EQ(ProfileSection(file, u"setting"_s, 9).Value(u"Key"_s, u"default"_s), u"default"_s)
            << qPrintable(name);
        QFile::remove(folder.Path(u"a_log.txt"_s));
        ASSERT_TRUE(QFile::link(file, folder.Path(u"a_log.txt"_s)));
        EXPECT_EQ(RunLog(folder.Path(), u"a"_s, services.Clock()).WriteYmdLogStart().reason,
                  u"通常のファイルではありません。"_s)
            << qPrintable(name);
        lstat(QFile::encodeName(file).constData(), &after);
        EXPECT_TRUE(before.st_ino == after.st_ino && before.st_mode == after.st_mode) << qPrintable(name);
    }
    QFile large(folder.Write(u"large"_s, ""));
    ASSERT_TRUE(large.resize(MaxFileBytes + 1)) << "sparse";
    QByteArray bytes;
    EXPECT_EQ(ReadWholeFile(large.fileName(), &bytes).reason, u"64MBを超えるので，読み込みません。"_s);
}

TEST(ReplaceFile, FullDisk_SaysSo)
{
    const TestFolder folder;
    const QString path = folder.Write(u"a.txt"_s, "old");
    rlimit before{};
    getrlimit(RLIMIT_FSIZE, &before);
    std::signal(SIGXFSZ, SIG_IGN);
    for (const qsizetype size : {8'000, 100'000, 3'000'000}) {
        const rlimit limit{rlim_t(size) - 3'000, before.rlim_max}; // which fails in the same way
        setrlimit(RLIMIT_FSIZE, &limit);
        const FileFault fault = ReplaceFile(path, QByteArray(size, 'a'));
        setrlimit(RLIMIT_FSIZE, &before);
        EXPECT_EQ(fault.reason, qt_error_string(EFBIG)) << size;
        EXPECT_EQ(folder.Read(u"a.txt"_s), "old") << size;
    }
}

TEST(ReplaceFile, LinkAsLastPart_IsFollowedOnlyWithinItsFolder)
{
    const TestFolder folder;
    const QTemporaryDir application(QCoreApplication::applicationDirPath() + u"/linked-XXXXXX"_s);
    folder.MakeFolder(u"a/below"_s);
    folder.MakeFolder(u"b/deep"_s);
    ASSERT_TRUE(QFile::link(folder.Path(u"a"_s), folder.Path(u"linked a"_s)));
    const Rows<const char *, QString, QString, bool> rows = {
        {"in its folder", u"a/link"_s, u"target"_s, true},
        {"below its folder", u"a/link"_s, folder.Path(u"a/below/target"_s), false},
        {"a link to a link in it", u"a/link"_s, u"third"_s, true},
        {"in a linked folder", u"linked a/link"_s, folder.Path(u"a/target"_s), true},
        {"in the application folder", u"a/link"_s, application.filePath(u"target"_s), false},
        {"in the folder above", u"a/link"_s, u"../target"_s, false},
        {"up from a linked folder", u"a/link"_s, u"hop/../target"_s, false},
        {"into its folder, from a linked one", u"a/link"_s, folder.Path(u"b/hop/../target"_s), false},
        {"in a folder beside it", u"a/link"_s, folder.Path(u"b/target"_s), false},
        {"in a folder whose name begins alike", u"a/link"_s, folder.Path(u"a2/target"_s), false},
        {"in a missing folder", u"a/link"_s, u"missing/target"_s, false},
        {"a link to a link out of it", u"a/link"_s, folder.Path(u"a/second"_s), false},
        {"a circle", u"a/link"_s, folder.Path(u"a/circle"_s), false},
    };
    folder.MakeFolder(u"a2"_s);
    ASSERT_TRUE(QFile::link(folder.Path(u"b/target"_s), folder.Path(u"a/second"_s)));
    ASSERT_TRUE(QFile::link(u"target"_s, folder.Path(u"a/third"_s)));
    ASSERT_TRUE(QFile::link(folder.Path(u"b/deep"_s), folder.Path(u"a/hop"_s)));
    ASSERT_TRUE(QFile::link(folder.Path(u"a/below"_s), folder.Path(u"b/hop"_s)));
    ASSERT_TRUE(QFile::link(folder.Path(u"a/link"_s), folder.Path(u"a/circle"_s)));
    for (const auto &[name, link, target, isFollowed] : rows) {
        const QString path = folder.Path(link);
        ASSERT_TRUE(QFile::link(target, path)) << name;
        const FileFault fault = ReplaceFile(path, "new");
        EXPECT_EQ(fault.reason.isEmpty(), isFollowed) << name;
        EXPECT_EQ(fault.reason.contains(u"リンク"_s), !isFollowed) << name << fault.reason.toStdString();
        EXPECT_EQ(QFile::exists(path), isFollowed) << name << ": nothing is created";
        EXPECT_TRUE(QFileInfo(path).isSymLink()) << name;
        EXPECT_EQ(QDir(folder.Path(u"b"_s)).entryList(QDir::Files), QStringList()) << name;
        QFile::remove(QFileInfo(path).symLinkTarget());
        QFile::remove(path);
    }
    EXPECT_EQ(ReplaceFile(folder.Path(u"linked a/new.txt"_s), "new").reason, QString());
    EXPECT_EQ(folder.Read(u"a/new.txt"_s), "new");
}

TEST(ReplaceAndKeep, BackupNameIsDanglingLink_NextOneIsTaken)
{
    const TestFolder folder;
    const QString path = folder.Write(u"a.txt"_s, "old");
    ASSERT_TRUE(QFile::link(u"gone"_s, path + u".bak"_s));
    QString kept;
    EXPECT_FALSE(ReplaceAndKeep(path, "new", &kept));
    EXPECT_EQ(kept, path + u".bak2"_s);
    EXPECT_FALSE(QFile::exists(folder.Path(u"gone"_s))) << "nothing is written through the link";
}

TEST(EndSignal, SecondSignal_KillsProcessUnlessHangup)
{
#if defined(__SANITIZE_THREAD__)
    GTEST_SKIP() << "the thread sanitizer delays signals";
#endif
    EXPECT_EXIT(
        {
            const EndSignal endSignal;
            for (const int number : {SIGTERM, SIGHUP, SIGHUP, SIGTERM})
                std::raise(number);
        },
        testing::KilledBySignal(SIGTERM), "");
}

// Qt's Wayland client then ends the process like this, in whichever of its threads notices first.
TEST(EndSignal, WaylandCompositorGone_RunsExitHook)
{
    const auto end = [] {
        qWarning("The Wayland connection broke. Did the Wayland compositor die?");
        _exit(1);
    };
    for (const bool isOtherThread : {false, true})
        EXPECT_EXIT(
            {
                EndSignal endSignal;
                const QThread *const thread = QThread::currentThread();
                endSignal.SetExitHook([thread] {
                    std::fputs(QThread::currentThread() == thread ? "recorded\n" : "in another thread\n", stderr);
                });
                if (!isOtherThread)
                    end();
                QThread::create(end)->start();
                QCoreApplication::exec();
            },
            testing::ExitedWithCode(1), "recorded")
            << isOtherThread;
}

TEST(Profile, WriteValues_ChangesTheirLinesAndKeepsEveryOtherByte)
{
    const Rows<const char *, QByteArray, QByteArray> rows = {
        {"empty file", "", "[setting]\r\nKey=new\r\nLast=2\r\n"},
        {"no section", "x=1", "x=1\r\n[setting]\r\nKey=new\r\nLast=2\r\n"},
        {"one key replaced in place", "[a]\n\n[setting]\nkey = old \r\n;\x93\xFA\n[b]\nKey=1\n",
         "[a]\n\n[setting]\nKey=new\r\n;\x93\xFA\nLast=2\r\n[b]\nKey=1\n"},
        {"both, in the order of the file", "[setting]\nlast=1\nx=\nKEY=\nKey=3",
         "[setting]\nLast=2\nx=\nKey=new\nKey=3"},
        {"keys added after the section's last line", "[setting]\r\na=1\r\n\r\n[b]\r\n",
         "[setting]\r\na=1\r\nKey=new\r\nLast=2\r\n\r\n[b]\r\n"},
        {"no line ending at the end of the file", "[setting]\r\na=1", "[setting]\r\na=1\r\nKey=new\r\nLast=2\r\n"},
    };
    const TestFolder folder;
    for (const auto &[name, before, after] : rows) {
        const QString path = folder.Write(u"a.ini"_s, before);
        EXPECT_FALSE(WriteProfile(path, u"setting"_s, {{u"Key"_s, u"new"_s}, {u"Last"_s, u"2\n3"_s}})) << name;
        EXPECT_EQ(folder.Read(u"a.ini"_s), before) << name << ": all values or none";
        EXPECT_TRUE(WriteProfile(path, u"setting"_s, {{u"Key"_s, u"new"_s}, {u"Last"_s, u"2"_s}})) << name;
        EXPECT_EQ(folder.Read(u"a.ini"_s), after) << name;
    }
    EXPECT_FALSE(WriteProfile(folder.Path(u"no folder/a.ini"_s), u"s"_s, {{u"k"_s, u"v"_s}}));
}

TEST(FolderNames, ListUndecodableNames_OmitsAndCountsThem)
{
    const TestFolder folder;
    folder.Write(u"漢字.txt"_s, "");
    QByteArrayList paths;
    // Names in code page 932, as left by unpacking an archive from a Japanese Windows.
    for (const QByteArray name : {"\x8A\xBF.txt", "\x8E\x9A.TXT", "\x8E\x9A.doc"}) {
        const QByteArray path = QFile::encodeName(folder.Path()) + "/" + name;
        const int file = open(path.constData(), O_CREAT | O_WRONLY, 0600);
        ASSERT_GE(file, 0);
        close(file);
        paths += path;
    }
    const auto removeThem = qScopeGuard([&paths] { // Qt cannot remove them
        for (const QByteArray &path : paths)
            unlink(path.constData());
    });
    folder.MakeFolder(u"folder.txt"_s);
    folder.Write(u".hidden.txt"_s, "");
    EXPECT_TRUE(QFile::link(folder.Path(u"folder.txt"_s), folder.Path(u"link to a folder.txt"_s)));
    EXPECT_TRUE(QFile::link(folder.Path(u"gone"_s), folder.Path(u"link to nothing.TXT"_s)));
    FolderNames found = ListFolder(folder.Path(), ".txt"_L1);
    found.names.sort();
    EXPECT_EQ(found.names, QStringList({u"link to nothing.TXT"_s, u"漢字.txt"_s})) << "a dangling link is listed";
    EXPECT_EQ(found.unshowable, 2);
    EXPECT_TRUE(ListFolder(folder.Path(u"gone"_s), ".txt"_L1).names.isEmpty());
}

TEST(InputMethod, ChooseOnDesktopsWithIBusFcitxOrNothing_AllowsJapanese)
{
    const InputMethodChoice ibus = {"ibus", false};
    const InputMethodChoice fcitx = {"ibus", true};
    EXPECT_EQ(ChooseInputMethod("ibus", "@im=ibus"), ibus);
    EXPECT_EQ(ChooseInputMethod(QByteArray(), QByteArray()), ibus) << "a desktop that sets no variable";
    EXPECT_EQ(ChooseInputMethod("wayland;ibus", QByteArray()), ibus);
    EXPECT_EQ(ChooseInputMethod("fcitx", QByteArray()), fcitx);
    EXPECT_EQ(ChooseInputMethod("fcitx5", "@im=fcitx"), fcitx);
    EXPECT_EQ(ChooseInputMethod(QByteArray(), "@im=fcitx"), fcitx);
    EXPECT_EQ(ChooseInputMethod("compose", "@im=fcitx").module, "compose") << "an explicit choice is kept";
    EXPECT_EQ(ChooseInputMethod("none", "@im=fcitx").module, "none");
}

namespace {

const QString PortalPath = u"/org/freedesktop/portal/desktop"_s;
const QString PortalSettings = u"org.freedesktop.portal.Settings"_s;
const QString Appearance = u"org.freedesktop.appearance"_s;

/// A desktop portal on a bus of its own. Its bus is the session bus of this process from then on.
class DesktopPortal : public QDBusVirtualObject
{
  public:
    DesktopPortal()
    {
        m_daemon.start(u"dbus-daemon"_s, {u"--session"_s, u"--nofork"_s, u"--print-address"_s});
        EXPECT_TRUE(WaitFor([this] { return m_daemon.canReadLine(); })) << m_daemon.errorString().toStdString();
        const QByteArray address = m_daemon.readLine().trimmed();
        qputenv("DBUS_SESSION_BUS_ADDRESS", address);
        m_bus = QDBusConnection::connectToBus(QString::fromUtf8(address), u"portal"_s);
        EXPECT_TRUE(m_bus.registerVirtualObject(PortalPath, this));
        EXPECT_TRUE(m_bus.registerService(u"org.freedesktop.portal.Desktop"_s));
    }

    ~DesktopPortal() override
    {
        QDBusConnection::disconnectFromBus(u"portal"_s);
        m_daemon.kill();
        m_daemon.waitForFinished();
    }

    void Change(const QString &group, const QString &key, uint value)
    {
        QDBusMessage signal = QDBusMessage::createSignal(PortalPath, PortalSettings, u"SettingChanged"_s);
        signal << group << key << QVariant::fromValue(QDBusVariant(value));
        EXPECT_TRUE(m_bus.send(signal));
    }

    bool handleMessage(const QDBusMessage &message, const QDBusConnection &connection) override
    {
        EXPECT_EQ(message.arguments(), QVariantList({Appearance, u"color-scheme"_s}));
        const QDBusVariant dark(1U);
        return connection.send(message.createReply(QVariant::fromValue(QDBusVariant(QVariant::fromValue(dark)))));
    }

    QString introspect(const QString &) const override
    {
        return QString();
    }

  private:
    QProcess m_daemon;
    QDBusConnection m_bus{QString()};
};

} // namespace

TEST(DarkMode, SettingOfThePortal_IsReadAndFollowed)
{
    DesktopPortal portal;
    DarkMode mode;
    const QSignalSpy changes(&mode, &DarkMode::Changed);
    EXPECT_FALSE(mode.IsDark()) << "nothing waits for the answer";
    EXPECT_TRUE(WaitFor([&mode] { return mode.IsDark(); }));
    const Rows<QString, QString, uint, bool> rows = {
        {Appearance, u"accent-color"_s, 0, true},  {u"org.gnome.desktop.interface"_s, u"color-scheme"_s, 0, true},
        {Appearance, u"color-scheme"_s, 2, false}, {Appearance, u"color-scheme"_s, 0, false},
        {Appearance, u"color-scheme"_s, 1, true},
    };
    for (const auto &[group, key, value, isDark] : rows) {
        portal.Change(group, key, value);
        EXPECT_TRUE(WaitFor([&mode, dark = isDark] { return mode.IsDark() == dark; }));
    }
    EXPECT_EQ(changes.count(), 3) << "once for each real change";
}
