// SPDX-FileCopyrightText: 2026 The Kotoban developers
// SPDX-License-Identifier: MIT

#include "base/modCodePage.h"
#include "platform/modCommandLine.h"
#include "platform/modInstance.h"
#include "platform/modProfile.h"
#include "platform/modWindowMessage.h"
#include "support/Rows.h"
#include "support/TestFiles.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

using namespace Qt::Literals::StringLiterals;

TEST(CodePage, DecodeBytes_MatchesWindows)
{
    const Rows<const char *, QByteArray, QString> rows = {
        {"backslash, not a yen sign", "a\\b~", u"a\\b~"_s},
        {"wave dash becomes full-width tilde", "\x81\x60", u"～"_s},
        {"minus sign becomes full-width", "\x81\x7C", u"－"_s},
        {"half-width katakana is one byte", "\xB1\xB2", u"ｱｲ"_s},
        {"bracket as trail byte", "\x8B\x5B\x83\x5D", u"擬ゾ"_s},
        {"NEC and IBM characters", "\x87\x40\xFA\x40", u"①ⅰ"_s},
        {"lone lead byte at the end", "a\x93", u"a\uFFFD"_s},
        {"lead byte before a control character", "\x93\r\n", u"\uFFFD\r\n"_s},
        {"unassigned pair: one U+FFFD per byte", "\x85\x5B]", u"\uFFFD\uFFFD]"_s},
        {"bytes reserved by Windows", "\x80\xA0\xFD\xFF", u"\uFFFD\uFFFD\uFFFD\uFFFD"_s},
        {"NUL", QByteArray("a\0b", 3), u"a\0b"_s},
    };
    for (const auto &[name, bytes, text] : rows)
        EXPECT_EQ(FromCodePage932(bytes), text) << name;
}

TEST(CodePage, EncodeCharacterOutsideCodePage_WritesAndCountsOneQuestionMark)
{
    const Rows<QString, QByteArray> rows = {
        {u"漢字kana ｶﾅ"_s, "\x8A\xBF\x8E\x9Akana \xB6\xC5"},
        {u"é"_s, "?"},
        {u"a😀b"_s, "a?b"},
        {u"\uFFFD"_s, "?"},
        {u"\0"_s, QByteArray("\0", 1)},
        // These have several codes; expected is the one that Windows writes.
        {u"≒∪￢"_s, "\x81\xE0\x81\xBE\x81\xCA"},
        {u"Ⅰⅰ纊"_s, "\x87\x54\xFA\x40\xFA\x5C"},
    };
    for (const auto &[text, bytes] : rows) {
        EXPECT_EQ(ToCodePage932(text), bytes);
        EXPECT_EQ(GetByteLength(text), bytes.size());
    }
}

TEST(CodePage, EncodeDecodedPair_GivesSameCharacterBack)
{
    int pairs = 0;
    for (int lead = 0x81; lead <= 0xFC; ++lead) {
        for (int trail = 0x40; trail <= 0xFC; ++trail) {
            const char pair[] = {char(lead), char(trail)};
            const QString text = FromCodePage932(QByteArrayView(pair, 2));
            if (text.size() != 1 || text[0] == QChar::ReplacementCharacter)
                continue;
            ++pairs;
            EXPECT_EQ(FromCodePage932(ToCodePage932(text)), text);
            EXPECT_TRUE(IsDoubleByte(text[0]));
        }
    }
    EXPECT_GT(pairs, 9000);
}

TEST(CommandLine, ParseLine_SplitsAsWindowsDoes)
{
    const auto isProgram = [](const QString &name) { return name == u"/opt/my tools/ed" || name == u"ed"; };
    const Rows<const char *, QString, QString, QStringList> rows = {
        {"quoted file", u"ed \"a b.txt\""_s, u"ed"_s, {u"a b.txt"_s}},
        {"option and file", u"ed -Y=12 \"a.txt\""_s, u"ed"_s, {u"-Y=12"_s, u"a.txt"_s}},
        {"unquoted program with blank", u"/opt/my tools/ed \"x\""_s, u"/opt/my tools/ed"_s, {u"x"_s}},
        {"quoted program", u"\"/opt/my tools/ed\" x"_s, u"/opt/my tools/ed"_s, {u"x"_s}},
        {"no such program", u"no such thing"_s, u"no"_s, {u"such"_s, u"thing"_s}},
        {"literal backslashes", u"ed C:\\txt\\a"_s, u"ed"_s, {u"C:\\txt\\a"_s}},
        {"backslash before quote", u"ed a\\\"b \"c\\\\\" d"_s, u"ed"_s, {u"a\"b"_s, u"c\\"_s, u"d"_s}},
        {"unterminated quote", u"ed \"a b"_s, u"ed"_s, {u"a b"_s}},
        {"empty argument", u"ed \"\""_s, u"ed"_s, {QString()}},
        {"only blanks", u"  "_s, QString(), {}},
    };
    for (const auto &[name, line, program, arguments] : rows) {
        const CommandLine command = ParseCommandLine(line, isProgram);
        EXPECT_EQ(command.program, program) << name;
        EXPECT_EQ(command.arguments, arguments) << name;
    }
    int asked = 0;
    const auto isNone = [&asked](const QString &) { return ++asked == 0; };
    const CommandLine command = ParseCommandLine(u"a "_s.repeated(1'000'000), isNone); // minutes, if all were asked for
    EXPECT_EQ(asked, 2048) << "no path is longer";
    EXPECT_EQ(command.arguments.size(), 999'999);
}

TEST(Profile, ReadValue_MatchesWindows)
{
    const TestFolder folder;
    const QString path =
        folder.Write(u"a.ini"_s, "; FontSize=1\r\n[other]\r\nFontSize=2\r\n[ Setting ]\r\n"
                                 ";LineSpace=3\r\n fontsize = 9.75 \r\nTextEditor=\"C:\\a b\\e.exe\"\r\n"
                                 "Empty=\r\nFontSize=4\r\nOne='\r\n[setting]\r\nLate=5\r\n");
    const ProfileSection section(path, u"setting"_s, 99);
    const auto read = [&section](const QString &key) { return section.Value(key, u"default"_s); };
    EXPECT_EQ(read(u"FontSize"_s), u"9.75"_s);
    EXPECT_EQ(read(u"TextEditor"_s), u"C:\\a b\\e.exe"_s);
    EXPECT_EQ(read(u"LineSpace"_s), u"default"_s) << "commented out";
    EXPECT_EQ(read(u"Empty"_s), QString());
    EXPECT_EQ(read(u"One"_s), u"'"_s) << "a single quote is not a pair";
    EXPECT_EQ(read(u"Late"_s), u"default"_s) << "only the first section with a name counts";
    EXPECT_EQ(ProfileSection(folder.Path(u"none.ini"_s), u"setting"_s, 99).Value(u"x"_s, u"d"_s), u"d"_s);
    EXPECT_EQ(ProfileSection(path, u"setting"_s, 4).Value(u"TextEditor"_s), u"C:\\a"_s) << "truncated at maxLength";

    const QString withNul = folder.Write(u"cut.ini"_s, QByteArray("[setting]\nTextEditor=ab\0cd\n", 27));
    EXPECT_EQ(ProfileSection(withNul, u"setting"_s, 99).Value(u"TextEditor"_s), u"ab"_s);
}

TEST(Profile, LargerThanItsBound_IsNeitherReadNorWritten)
{
    const TestFolder folder;
    const QByteArray end = "\r\n[setting]\r\nk=v";
    const QByteArray largest = QByteArray(MaxProfileBytes - end.size(), 'x') + end;
    const QString path = folder.Write(u"a.ini"_s, largest);
    EXPECT_EQ(ProfileSection(path, u"setting"_s, 99).Value(u"k"_s), u"v"_s);
    EXPECT_FALSE(WriteProfile(path, u"setting"_s, {{u"k"_s, u"v2"_s}})) << "it could not be read again";
    EXPECT_TRUE(WriteProfile(path, u"setting"_s, {{u"k"_s, u"w"_s}}));
    const QByteArray larger = largest.chopped(1) + "w2";
    folder.Write(u"a.ini"_s, larger);
    EXPECT_EQ(ProfileSection(path, u"setting"_s, 99).Value(u"k"_s, u"d"_s), u"d"_s);
    EXPECT_FALSE(WriteProfile(path, u"setting"_s, {{u"k"_s, u""_s}}));
    EXPECT_EQ(folder.Read(u"a.ini"_s), larger);
}

TEST(InstanceMark, SecondMarkOnSameFolder_DetectsFirstAndWritesNothing)
{
    const TestFolder folder;
    folder.MakeFolder(u"other"_s);
    {
        const InstanceMark first(folder.Path());
        EXPECT_FALSE(first.HasPreviousInstance());
        EXPECT_TRUE(InstanceMark(folder.Path()).HasPreviousInstance());
        EXPECT_FALSE(InstanceMark(folder.Path(u"other"_s)).HasPreviousInstance());
    }
    EXPECT_FALSE(InstanceMark(folder.Path()).HasPreviousInstance());
    EXPECT_TRUE(QDir(folder.Path(u"other"_s)).isEmpty());
}

TEST(WindowMessage, RegisterSameNameInAnyCase_GivesSameNumber)
{
    const unsigned number = RegisterMessageName(u"MSWHEEL_ROLLMSG"_s);
    EXPECT_THAT(number, testing::AllOf(testing::Ge(0xC000u), testing::Le(0xFFFFu)));
    EXPECT_EQ(RegisterMessageName(u"mswheel_rollmsg"_s), number);
    EXPECT_NE(RegisterMessageName(u"OTHER"_s), number);
}
