// SPDX-FileCopyrightText: 2026 The Kotoban developers
// SPDX-License-Identifier: MIT

// The lists of hard blanks and of the places where users stopped.
#include "records/modMarkList.h"
#include "records/modPlaceList.h"
#include "support/Rows.h"
#include "support/StudyText.h"
#include "support/TestFiles.h"

#include <gtest/gtest.h>
#include <numeric>

using namespace Qt::Literals::StringLiterals;

namespace {

using Blanks = std::vector<int>;

class Lists : public testing::Test
{
  protected:
    Blanks Find(const QStringList &lines, const QString &user = u"花子"_s, const QString &title = u"英単語"_s)
    {
        return MarkList(path, user).Find(title, DisplayText(LinesOf(lines)));
    }

    void Write(const QStringList &lines, const Blanks &blanks, const QString &user = u"花子"_s)
    {
        EXPECT_FALSE(MarkList(path, user).Write(u"英単語"_s, DisplayText(LinesOf(lines)), blanks));
    }

    TestFolder folder;
    QString path = folder.Path(u"ListMark.txt"_s);
};

} // namespace

TEST_F(Lists, LineMoved_MarkMovesWithIt)
{
    const QStringList lines = {u"[apple] [red]"_s, u"no blank"_s, u"[book]"_s, u"[book]"_s, u"[]"_s};
    Write(lines, {2, 4, 5});
    EXPECT_EQ(Find(lines), Blanks({2, 4, 5}));
    QStringList longer = {u"[new]"_s, u""_s};
    EXPECT_EQ(Find(longer + lines), Blanks({3, 5, 6}));
    QStringList changed = lines;
    changed[0] = u"[apple] red"_s;
    changed[3] = u"[books]"_s;
    EXPECT_EQ(Find(changed), Blanks({4})) << "a line with another text is a different line";
    changed[0] = u"apple  red "_s;
    EXPECT_TRUE(Find({changed[0]}).empty()) << "and so is one that differs only in its brackets";
    EXPECT_TRUE(Find(lines, u"太郎"_s).empty());
    EXPECT_TRUE(Find(lines, u"花子"_s, u"仏単語"_s).empty());
    Write(changed, {});
    EXPECT_TRUE(Find(changed).empty());
    EXPECT_EQ(Find(lines), Blanks({2, 4})) << "should the lines come back";
}

TEST_F(Lists, MarksOfOtherLines_StayWhateverIsMarked)
{
    const QString begin = u"花子\t英単語\t"_s;
    const auto list = [&begin](const QStringList &entries) {
        QString text;
        for (const QString &entry : entries)
            text += begin + entry + u"\r\n"_s;
        return text.toUtf8();
    };
    // One line is gone, others are in another file with this title, and one was marked with an odd number.
    const QStringList entries = {u"[same]\t1"_s, u"[same]\t1\t2"_s, u"[gone]\t1"_s, u"[a] [b]\t01"_s, u"[a] [b]\t3"_s};
    const QStringList lines = {u"[a] [b]"_s, u"[same]"_s, u"[new]"_s};
    const Rows<const char *, Blanks, QStringList> rows = {
        {"as before", {1, 3}, entries},
        {"another one", {1, 2, 3}, entries + QStringList(u"[a] [b]\t2"_s)},
        {"none", {}, {u"[same]\t1\t2"_s, u"[gone]\t1"_s, u"[a] [b]\t3"_s}},
        {"only another one", {4}, {u"[same]\t1\t2"_s, u"[gone]\t1"_s, u"[a] [b]\t3"_s, u"[new]\t1"_s}},
    };
    for (const auto &[what, blanks, written] : rows) {
        folder.Write(u"ListMark.txt"_s, list(entries));
        EXPECT_EQ(Find(lines), Blanks({1, 3})) << what;
        Write(lines, blanks);
        EXPECT_EQ(folder.Read(u"ListMark.txt"_s), list(written)) << what;
        EXPECT_EQ(Find(lines), blanks) << what;
    }
}

// Quadratic work would take minutes here.
TEST_F(Lists, ManyMarksOnEqualLines_AreFoundInLinearTime)
{
    const int lineCount = 120'000;
    const QStringList lines(lineCount, u"[a]"_s);
    Blanks blanks(static_cast<size_t>(lineCount));
    std::iota(blanks.begin(), blanks.end(), 1);
    Write(lines, blanks);
    EXPECT_EQ(Find(lines), blanks);
}

TEST_F(Lists, MarksWritten_OtherLinesStayUntouched)
{
    const QByteArray foreign =
        u"# by hand\r\n太郎\t英単語\t[a]\t1\r\n花子\t仏単語\t[a]\t1\r\n花子\t英単語\t[a]\tx\r\n"
        u"花子\t英単語\t[a]\t0\r\n花子\t英単語\t[a]\t1\t0\r\n花子\t英単語\t[a]\r\n花子\t英単語\t[a]\t1\t1\t1\r\n"_s
            .toUtf8();
    folder.Write(u"ListMark.txt"_s,
                 "\xEF\xBB\xBF" + foreign + u"花子\t英単語\t[a]\t1\n花子\t英単語\t[a]\t9"_s.toUtf8());
    EXPECT_EQ(Find({u"[a]"_s}), Blanks({1})) << "the line has no ninth blank";
    Write({u"[a]"_s, u"[b]"_s}, {2});
    EXPECT_EQ(folder.Read(u"ListMark.txt"_s), foreign + u"花子\t英単語\t[a]\t9\r\n花子\t英単語\t[b]\t1\r\n"_s.toUtf8());
    folder.Write(u"ListMark.txt"_s, ToCodePage932(u"花子\t英単語\t[日本語の文]\t1\r\n"));
    EXPECT_EQ(Find({u"[日本語の文]"_s}), Blanks({1})) << "saved by an editor in Shift_JIS";
    folder.MakeFolder(u"folder"_s);
    MarkList blocked(folder.Path(u"folder"_s), u"花子"_s);
    EXPECT_TRUE(blocked.Write(u"英単語"_s, DisplayText(LinesOf({u"[a]"_s})), {1}));
}

TEST_F(Lists, LinesThatDifferInOneCharacter_AreToldApart)
{
    QStringList lines = {QString(), u"[a]"_s};
    for (int at = 3; at < 12; ++at)
        lines += u"[a]bcdefghij"_s.replace(at, 1, u'ー');
    const int count = int(lines.size()) - 1; // the first has no blank
    for (int blank = 1; blank <= count; ++blank) {
        Write(lines, {blank});
        EXPECT_EQ(Find(lines), Blanks({blank})) << lines[blank].toStdString();
        EXPECT_EQ(Find({lines[blank]}), Blanks({1})) << lines[blank].toStdString();
        QStringList others = lines;
        others.removeAt(blank);
        EXPECT_EQ(Find(others), Blanks()) << lines[blank].toStdString();
        EXPECT_EQ(folder.Read(u"ListMark.txt"_s).count('\n'), 1) << "one entry, in place of the one before";
    }
    Blanks all(size_t(count), 0);
    std::iota(all.begin(), all.end(), 1);
    Write(lines + lines, all);
    EXPECT_EQ(Find(lines + lines), all) << "only the first of two equal lines";
}

TEST_F(Lists, ValidUtf8_IsReadAsUtf8WhateverElseItCouldBe)
{
    const Rows<const char *, QByteArray> rows = {
        {"two lines that could be UTF-7", "a\t+-b\t[c]\t1\r\na\t+-b\t[d]\t1\r\n"},
        {"a line that could be JIS", "a\tb\t[\x1B$B]\t1\r\n"},
        {"the character that stands for unreadable ones", "a\tb\t[\xEF\xBF\xBD]\t1\r\n"},
    };
    for (const auto &[name, foreign] : rows) {
        folder.Write(u"ListMark.txt"_s, foreign + u"花子\t英単語\t[日本語の文]\t1\r\n"_s.toUtf8());
        EXPECT_EQ(Find({u"[日本語の文]"_s}), Blanks({1})) << name;
        Write({u"[日本語の文]"_s, u"[～]"_s}, {2});
        EXPECT_EQ(folder.Read(u"ListMark.txt"_s), foreign + u"花子\t英単語\t[～]\t1\r\n"_s.toUtf8()) << name;
        const PlaceList places(folder.Path(u"ListPlace.txt"_s));
        folder.Write(u"ListPlace.txt"_s, foreign + u"花子\t英単語\t7\r\n"_s.toUtf8());
        EXPECT_EQ(places.Find(u"花子"_s, u"英単語"_s).line, 7) << name;
        EXPECT_FALSE(places.Write(u"花子"_s, u"英単語"_s, {.line = 8})) << name;
        EXPECT_EQ(folder.Read(u"ListPlace.txt"_s), foreign + u"花子\t英単語\t8\r\n"_s.toUtf8()) << name;
    }
}

TEST_F(Lists, UndecodableList_IsRefusedEachTimeAndKept)
{
    const Rows<const char *, QByteArray> rows = {
        {"UTF-8 with a stray byte", "\xE8\x8A\xB1\xFF\ta\tb\t1\r\n"},
        {"after two lines that could be UTF-7", "+-\r\n+-\r\n\xE8\x8A\xB1\xFF\r\n"},
    };
    const MarkList marks(path, u"花子"_s);
    const PlaceList places(folder.Path(u"ListPlace.txt"_s));
    const QString reason = u"文字として読めないバイトがあります。"_s;
    for (const auto &[name, bytes] : rows) {
        folder.Write(u"ListMark.txt"_s, bytes);
        folder.Write(u"ListPlace.txt"_s, bytes);
        for (int time = 1; time <= 2; ++time) {
            EXPECT_EQ(FaultMessage(u"No"_s, marks.Write(u"a"_s, DisplayText(LinesOf({u"[a]"_s})), {1})),
                      u"No\r\n  "_s + path + u"\r\n  "_s + reason)
                << name;
            EXPECT_EQ(places.Write(u"花子"_s, u"a"_s, {.line = 7}).reason, reason) << name;
        }
        EXPECT_EQ(folder.Read(u"ListMark.txt"_s), bytes) << name;
        EXPECT_EQ(folder.Read(u"ListPlace.txt"_s), bytes) << name;
    }
}

TEST_F(Lists, MarksBeyondTheBound_AreRefusedAndNoneIsDropped)
{
    const DisplayText text(LinesOf({u"[a] [b]"_s}));
    const MarkList marks(path, u"花子"_s);
    const QByteArray one = u"花子\t英単語\t[a] [b]\t1\r\n"_s.toUtf8();
    const QByteArray full = QByteArray(MaxMarkListBytes - one.size() - 2, 'x') + "\r\n";
    folder.Write(u"ListMark.txt"_s, full);
    EXPECT_EQ(marks.Write(u"英単語"_s, text, {1, 2}).reason, u"16MBを超えるので，書き込みません。"_s);
    EXPECT_TRUE(folder.Read(u"ListMark.txt"_s) == full);
    EXPECT_FALSE(marks.Write(u"英単語"_s, text, {1})) << "as large as may be";
    EXPECT_TRUE(folder.Read(u"ListMark.txt"_s) == full + one);
    folder.Write(u"ListMark.txt"_s, full + one + "x");
    EXPECT_TRUE(marks.Write(u"英単語"_s, text, {})) << "a list that cannot be read is not replaced";
    EXPECT_TRUE(folder.Read(u"ListMark.txt"_s) == full + one + "x");
}

TEST_F(Lists, PlacesBeyondTheBound_DropTheOldest)
{
    const QString name = u"ListPlace.txt"_s;
    const PlaceList places(folder.Path(name));
    const QByteArray added = u"花子\ta\t7\r\n"_s.toUtf8();
    const QByteArray old = QByteArray("# by hand\r\n") + "user\told\t1\r\n";
    const QByteArray entry = "user\tfile0\t1\r\n";
    const QByteArray kept = entry.repeated((MaxPlaceListBytes - added.size() - 11) / entry.size());
    folder.Write(name, old + kept);
    EXPECT_FALSE(places.Write(u"花子"_s, u"a"_s, {.line = 7}));
    EXPECT_TRUE(folder.Read(name) == "# by hand\r\n" + kept + added) << "only what must go";
    EXPECT_EQ(places.Find(u"花子"_s, u"a"_s).line, 7);

    const QByteArray noEntries = QByteArray(MaxPlaceListBytes, 'x');
    folder.Write(name, noEntries);
    EXPECT_TRUE(places.Write(u"花子"_s, u"a"_s, {.line = 7}));
    EXPECT_TRUE(folder.Read(name) == noEntries);
    folder.Write(name, old + kept + kept);
    EXPECT_EQ(places.Write(u"花子"_s, u"a"_s, {.line = 7}).reason, u"1MBを超えるので，読み込みません。"_s);
    EXPECT_TRUE(folder.Read(name) == old + kept + kept);
}

TEST_F(Lists, PlaceInFile_IsKeptByItsWholeName)
{
    const QString name = u"ListPlace.txt"_s;
    const QByteArray old = u"花子\tw\t5\r\n花子\t日本史\t6\r\n"_s.toUtf8();
    folder.Write(name, old);
    const PlaceList places(folder.Path(name));
    EXPECT_EQ(places.Find(u"花子"_s, u"w.txt"_s).line, 5) << "by title, as older versions wrote it";
    EXPECT_EQ(places.Find(u"花子"_s, u"w.2.txt"_s).line, 5);
    EXPECT_EQ(places.LastFile(u"花子"_s), u"日本史"_s);
    EXPECT_FALSE(places.Write(u"花子"_s, u"w.2.txt"_s, {.line = 70}));
    EXPECT_EQ(places.Find(u"花子"_s, u"w.txt"_s).line, 5);
    EXPECT_EQ(places.Find(u"花子"_s, u"w.2.txt"_s).line, 70);
    EXPECT_FALSE(places.Write(u"花子"_s, u"w.txt"_s, {.line = 8}));
    EXPECT_EQ(places.Find(u"花子"_s, u"w.txt"_s).line, 8);
    EXPECT_EQ(places.Find(u"花子"_s, u"w.2.txt"_s).line, 70);
    EXPECT_EQ(places.LastFile(u"花子"_s), u"w.txt"_s);
    EXPECT_EQ(folder.Read(name), old + u"花子\tw.2.txt\t70\r\n花子\tw.txt\t8\r\n"_s.toUtf8());
    folder.Write(name, u"花子\ta\t9\n\nb\n太郎\ta\t0\n"_s.toUtf8());
    EXPECT_EQ(places.LastUser(), u"花子"_s) << "lines that are not entries are ignored";
}

TEST_F(Lists, ShownAnswers_AreKeptWithThePlaceUnlessDamaged)
{
    const QString name = u"ListPlace.txt"_s;
    const PlaceList places(folder.Path(name));
    const std::vector<BlankRange> shown = {{1, 13}, {15, 16}, {20, 22}};
    EXPECT_FALSE(places.Write(u"花子"_s, u"a.txt"_s, {7, 5'000'000'000, u"0a1b"_s, shown}));
    EXPECT_EQ(folder.Read(name), u"花子\ta.txt\t7\t5000000000\t0a1b\t1-12,15,20-21\r\n"_s.toUtf8());
    const auto numbersOf = [](const std::vector<BlankRange> &ranges) {
        Blanks numbers;
        for (const BlankRange &range : ranges)
            numbers.insert(numbers.end(), {range.front(), range.back()});
        return numbers;
    };
    const Place place = places.Find(u"花子"_s, u"a.txt"_s);
    EXPECT_TRUE(place.line == 7 && place.fileBytes == 5'000'000'000 && place.fileHash == u"0a1b");
    EXPECT_EQ(numbersOf(place.shown), numbersOf(shown));
    EXPECT_FALSE(places.Write(u"花子"_s, u"a.txt"_s, {.line = 9, .fileBytes = 3}));
    EXPECT_EQ(folder.Read(name), u"花子\ta.txt\t9\r\n"_s.toUtf8()) << "as short as ever without answers";

    const Rows<const char *, QString, Blanks> rows = {
        {"one", u"3"_s, {3, 3}},
        {"largest", u"1,2147483646"_s, {1, 1, 2147483646, 2147483646}},
        {"none", u""_s, {}},
        {"no number", u"1-x"_s, {}},
        {"nothing between commas", u"1,,3"_s, {}},
        {"zero", u"0-3"_s, {}},
        {"backwards", u"5-3"_s, {}},
        {"not ascending", u"5,5"_s, {}},
        {"three numbers", u"1-2-3"_s, {}},
        {"too large to count on", u"1-2147483647"_s, {}},
        {"too large", u"1-99999999999"_s, {}},
        {"too many",
         u"1"_s +
             [] {
                 QString more;
                 for (int blank = 3; blank < 4003; blank += 2)
                     more += u',' + QString::number(blank);
                 return more;
             }(),
         {}},
    };
    for (const auto &[what, text, expected] : rows) {
        folder.Write(name, (u"花子\ta.txt\t9\t1\t0a\t"_s + text + u"\r\n"_s).toUtf8());
        EXPECT_EQ(places.Find(u"花子"_s, u"a.txt"_s).line, 9) << what;
        EXPECT_EQ(numbersOf(places.Find(u"花子"_s, u"a.txt"_s).shown), expected) << what;
    }
}
