// What of platform/ is different where the system is not Windows.
#include "platform/modProcess.h"
#include "platform/modProfile.h"
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
