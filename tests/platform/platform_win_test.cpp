// SPDX-FileCopyrightText: 2026 The Kotoban developers
// SPDX-License-Identifier: MIT

// Tests of platform/ on Windows.
#include "platform/modProcess.h"
#include "platform/modProfile.h"
#include "support/TestFiles.h"
#include "support/WaitFor.h"

#include <gtest/gtest.h>
#include <windows.h>

using namespace Qt::Literals::StringLiterals;

// Runs under several system code pages; the file's bytes must be the same under all of them.
TEST(ProfileOnWindows, WriteValue_UsesCodePage932AndAgreesWithSystemFunctions)
{
    EXPECT_EQ(QString::number(GetACP()), qEnvironmentVariable("KOTOBAN_CODE_PAGE", u"932"_s));
    const TestFolder folder;
    const QString path = QDir::toNativeSeparators(folder.Path(u"a.ini"_s));
    // The trail bytes of 表 and ソ are backslashes.
    const QString editor = u"C:\\表示 ﾅ\\漢字ソ.exe"_s;
    const QByteArray bytes = "C:\\\x95\\\x8E\xA6 \xC5\\\x8A\xBF\x8E\x9A\x83\\.exe";
    EXPECT_TRUE(WriteProfile(path, u"setting"_s, {{u"TextEditor"_s, editor}}));
    EXPECT_EQ(folder.Read(u"a.ini"_s), QByteArray("[setting]\r\nTextEditor=" + bytes + "\r\n"));
    const auto read = [&path](qsizetype maxLength = 99) {
        return ProfileSection(path, u"setting"_s, maxLength).Value(u"TextEditor"_s);
    };
    EXPECT_EQ(read(), editor);
    EXPECT_EQ(read(6), u"C:\\表示 "_s) << "counts characters";

    if (GetACP() == CP_UTF8)
        return; // the system's own functions would lose everything that is not UTF-8
    const QByteArray ansiPath = path.toLocal8Bit();
    char text[100] = {};
    GetPrivateProfileStringA("setting", "TextEditor", "", text, sizeof text, ansiPath.constData());
    EXPECT_EQ(QByteArray(text), bytes);
    EXPECT_TRUE(WritePrivateProfileStringA("setting", "TextEditor", "D:\\\x83\\", ansiPath.constData()));
    EXPECT_EQ(read(), u"D:\\ソ"_s);
}

TEST(ProfileOnWindows, WriteInFolderOutsideCodePage_Succeeds)
{
    const TestFolder folder;
    folder.MakeFolder(u"é 漢 한"_s);
    const QString path = QDir::toNativeSeparators(folder.Path(u"é 漢 한/a.ini"_s));
    EXPECT_TRUE(WriteProfile(path, u"setting"_s, {{u"LineSpace"_s, u"5"_s}}));
    EXPECT_EQ(ProfileSection(path, u"setting"_s, 99).Value(u"LineSpace"_s), u"5"_s);
    EXPECT_EQ(folder.Read(u"é 漢 한/a.ini"_s), "[setting]\r\nLineSpace=5\r\n");
}

TEST(ProcessOnWindows, StartPathWithBlanks_PassesFileAsOneArgument)
{
    const TestFolder folder;
    folder.Write(u"my tools/ed.cmd"_s, "@echo %~1> \"%~dp0got\"\r\n");
    const QString program = QDir::toNativeSeparators(folder.Path(u"my tools/ed.cmd"_s));
    EXPECT_TRUE(StartProcess(program + u" \"a b.txt\""_s));
    EXPECT_TRUE(WaitFor([&] { return folder.Read(u"my tools/got"_s) == "a b.txt\r\n"; }));
    EXPECT_FALSE(StartProcess(QDir::toNativeSeparators(folder.Path(u"missing"_s))));
    EXPECT_FALSE(StartProcess(QString()));
}
