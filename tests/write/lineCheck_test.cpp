// SPDX-FileCopyrightText: 2026 The Kotoban developers
// SPDX-License-Identifier: MIT

#include "exchange/modLineCheck.h"
#include "support/Rows.h"
#include "support/TestFiles.h"

#include <gtest/gtest.h>

using namespace Qt::Literals::StringLiterals;

namespace {

bool OnlyMap(const QString &name)
{
    return name == u"地図";
}

} // namespace

TEST(LineCheck, EachFault_IsFoundWhereItIs)
{
    const QString sentence = QString(24, u'語') + u"。"_s;
    const Rows<const char *, QString, std::vector<LineProblem>> rows = {
        {"clean", u"[a] b ｢地図｣ \t"_s, {}},
        {"at the limit", QString(50, u'語'), {}},
        {"one over, without a place to break",
         QString(50, u'語') + u'a',
         {{LineFault::TooLong, 51, 1, u"101バイトあります（100バイトまで）。"_s, {}}}},
        {"a tab counts two",
         QString(99, u'a') + u'\t',
         {{LineFault::TooLong, 100, 1, u"101バイトあります（100バイトまで）。"_s, u"改行を入れます"_s}}},
        {"breakable",
         sentence + sentence + sentence,
         {{LineFault::TooLong, 51, 25, u"150バイトあります（100バイトまで）。"_s, u"改行を入れます"_s}}},
        {"an emoji counts one byte, as its replacement by ? would",
         QString(99, u'a') + u"😀"_s,
         {{LineFault::NotInCodePage, 100, 2, u"Shift_JISにない文字があります：😀（U+1F600）"_s, {}}}},
        {"equivalent",
         u"a\u2014b"_s,
         {{LineFault::NotInCodePage, 2, 1, u"Shift_JISにない文字があります：—（U+2014）"_s, u"「―」にします"_s}}},
        {"equivalent beside characters without one",
         u"\u20AC\u00E9\u00E8\u0259e\u0301"_s,
         {{LineFault::NotInCodePage, 1, 1, u"Shift_JISにない文字があります：€（U+20AC）"_s, {}},
          {LineFault::NotInCodePage, 2, 2, u"Shift_JISにない文字があります：é（U+00E9）"_s, u"「ee」にします"_s},
          {LineFault::NotInCodePage, 4, 1, u"Shift_JISにない文字があります：ə（U+0259）"_s, {}},
          {LineFault::NotInCodePage, 6, 1, u"Shift_JISにない文字があります：\u0301（U+0301）"_s, u"「e」にします"_s}}},
        {"a byte-order mark, and a space",
         u"a\uFEFFb\u2003"_s,
         {{LineFault::NotInCodePage, 2, 1, u"Shift_JISにない文字があります：U+FEFF"_s, u"なくします"_s},
          {LineFault::NotInCodePage, 4, 1, u"Shift_JISにない文字があります：U+2003"_s, u"空白にします"_s}}},
        {"combining mark",
         u"か\u3099"_s,
         {{LineFault::NotInCodePage, 2, 1, u"Shift_JISにない文字があります：\u3099（U+3099）"_s, u"「が」にします"_s}}},
        {"no character of a text",
         QString(u'a') + QChar(0),
         {{LineFault::NotInCodePage, 2, 1, u"Shift_JISにない文字があります：U+0000"_s, {}}}},
        {"no closing bracket", u"a [b"_s, {{LineFault::BracketCount, 3, 1, u"[の数と]の数が不一致です。"_s, {}}}},
        {"one closing too many", u"[b] c]"_s, {{LineFault::BracketCount, 6, 1, u"[の数と]の数が不一致です。"_s, {}}}},
        {"nested", u"[a [b] c]"_s, {{LineFault::BracketOrder, 4, 1, u"[,]の前後関係が不適切です。"_s, {}}}},
        {"closing first", u"]a["_s, {{LineFault::BracketOrder, 1, 1, u"[,]の前後関係が不適切です。"_s, {}}}},
        {"full-width brackets",
         u"a［b］[c］"_s,
         {{LineFault::BracketCount, 5, 1, u"[の数と]の数が不一致です。"_s, {}},
          {LineFault::FullWidthBrackets, 2, 3, u"全角の［ ］は空欄になりません。"_s, u"半角にします"_s},
          {LineFault::FullWidthBrackets, 5, 3, u"全角の［ ］は空欄になりません。"_s, u"半角にします"_s}}},
        {"full-width brackets without a partner, or around a blank",
         u"］［a[b]］"_s,
         {{LineFault::FullWidthBrackets, 1, 1, u"全角の［ ］は空欄になりません。"_s, {}},
          {LineFault::FullWidthBrackets, 2, 1, u"全角の［ ］は空欄になりません。"_s, {}},
          {LineFault::FullWidthBrackets, 7, 1, u"全角の［ ］は空欄になりません。"_s, {}}}},
        {"full-width brackets in a blank are its text", u"[a［b］］]"_s, {}},
        {"corner brackets", u"｣｢地図"_s, {{LineFault::PictureBrackets, 2, 1, u"｢と｣の対応が不適切です。"_s, {}}}},
        {"picture name",
         u"a｢b.c｣"_s,
         {{LineFault::PictureName, 2, 5, u"異常な画像ファイル名=[b.c]があります。"_s, {}}}},
        {"missing picture", u"｢ 地図 ｣｢写真｣"_s, {{LineFault::PictureMissing, 7, 4, u"図｢写真｣がありません。"_s, {}}}},
        {"picture in a blank", u"[｢b.c｣] ｢a[b]c｣"_s, {}},
    };
    for (const auto &[name, line, expected] : rows) {
        const std::vector<LineProblem> found = ProblemsOfLine(line, OnlyMap);
        ASSERT_EQ(found.size(), expected.size()) << name;
        for (size_t i = 0; i < found.size(); ++i) {
            EXPECT_EQ(found[i].what, expected[i].what) << name;
            EXPECT_EQ(found[i].offer, expected[i].offer) << name;
            EXPECT_TRUE(found[i] == expected[i]) << name << ' ' << found[i].column << ' ' << found[i].length;
        }
    }
}

TEST(LineCheck, EndlessLine_HasFewProblems)
{
    const QString pattern = u"é]｢x.y｣"_s;
    EXPECT_LE(ProblemsOfLine(pattern.repeated(500), OnlyMap).size(), 4u * MaxProblemsOfFault);
    const std::vector<LineProblem> found = ProblemsOfLine(pattern.repeated(100'000), OnlyMap);
    ASSERT_EQ(found.size(), 1u);
    EXPECT_EQ(found.front().fault, LineFault::TooLong);
}

TEST(LineCheck, Texts_NameLineAndOffer)
{
    EXPECT_EQ(ByteCounter(u"語a\t"), u"5 / 100"_s);
    EXPECT_EQ(ProblemEntry(3, {LineFault::TooLong, 51, 1, u"長い"_s, u"改行"_s}), u"3行目：長い（直す：改行）"_s);
    EXPECT_EQ(ProblemEntry(3, {LineFault::TooLong, 51, 1, u"長い"_s, {}}), u"3行目：長い"_s);
    EXPECT_EQ(ProblemCountText(0), u"問題はありません。"_s);
    EXPECT_EQ(ProblemCountText(2), u"問題が2件あります。"_s);
}
