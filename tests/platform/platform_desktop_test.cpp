// What of platform/ is different where the system is not Windows.
#include "platform/modProcess.h"
#include "platform/modProfile.h"
#include "platform/modVoice.h"
#include "support/Rows.h"
#include "support/TestFiles.h"

#include <QTest>

#include <gtest/gtest.h>

using namespace Qt::Literals::StringLiterals;

TEST(Process, StartsAProgramWhosePathHoldsBlanksAndPassesTheFileWhole)
{
    const TestFolder folder;
    const QString script =
        folder.Write(u"my tools/ed.sh"_s, "#!/bin/sh\nprintf %s \"$1\" > \"$(dirname \"$0\")/got\"\n");
    QFile::setPermissions(script, QFile::ReadOwner | QFile::ExeOwner);
    EXPECT_TRUE(StartProcess(script + u" \"a b.txt\""_s));
    EXPECT_TRUE(QTest::qWaitFor([&] { return folder.Read(u"my tools/got"_s) == "a b.txt"; }));
    EXPECT_FALSE(StartProcess(folder.Path(u"missing"_s)));
    EXPECT_FALSE(StartProcess(QString()));
}

TEST(Voice, IsGivenTheTextAsOneArgument)
{
    const TestFolder folder;
    const QString service = folder.Write(u"spd-say"_s, "#!/bin/sh\nprintf '%s|' \"$@\" >> \"${0%/*}/said\"\n");
    QFile::setPermissions(service, QFile::ReadOwner | QFile::ExeOwner);
    const QByteArray path = qgetenv("PATH");
    qputenv("PATH", QFile::encodeName(folder.Path()));
    QByteArray said;
    for (const auto &[text, language] :
         {std::pair{u"\"+new A(\"B\").Run(\"c\")+\""_s, "en"}, {u"$(touch 漢)"_s, "ja"}, {u"--help"_s, "en"}}) {
        Voice().Speak(text);
        said += QByteArray("-l|") + language + "|--|" + text.toUtf8() + '|';
        EXPECT_TRUE(QTest::qWaitFor([&] { return folder.Read(u"said"_s) == said; })) << said.constData();
    }
    qputenv("PATH", path);
}

TEST(Profile, WritesOneLineAndKeepsEveryOtherByte)
{
    const Rows<const char *, QByteArray, QByteArray> rows = {
        {"no file content", "", "[setting]\r\nKey=new\r\n"},
        {"no section", "x=1", "x=1\r\n[setting]\r\nKey=new\r\n"},
        {"key replaced in place", "[a]\n\n[setting]\nkey = old \r\n;\x93\xFA\n[b]\nKey=1\n",
         "[a]\n\n[setting]\nKey=new\r\n;\x93\xFA\n[b]\nKey=1\n"},
        {"key added behind the section's last line", "[setting]\r\na=1\r\n\r\n[b]\r\n",
         "[setting]\r\na=1\r\nKey=new\r\n\r\n[b]\r\n"},
        {"no line end at the file's end", "[setting]\r\na=1", "[setting]\r\na=1\r\nKey=new\r\n"},
    };
    const TestFolder folder;
    for (const auto &[name, before, after] : rows) {
        const QString path = folder.Write(u"a.ini"_s, before);
        EXPECT_TRUE(WriteProfile(path, u"setting"_s, u"Key"_s, u"new"_s)) << name;
        EXPECT_EQ(folder.Read(u"a.ini"_s), after) << name;
    }
    EXPECT_FALSE(WriteProfile(folder.Path(u"no folder/a.ini"_s), u"s"_s, u"k"_s, u"v"_s));
}
