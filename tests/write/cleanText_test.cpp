// SPDX-FileCopyrightText: 2026 The Kotoban developers
// SPDX-License-Identifier: MIT

#include "base/modCodePage.h"
#include "exchange/modLineCheck.h"
#include "support/Rows.h"
#include "support/TestFiles.h"
#include "write/modCleanText.h"

#include <gtest/gtest.h>

using namespace Qt::Literals::StringLiterals;

TEST(CleanText, Paste_IsCleanedAndCounted)
{
    const auto remove = WithoutEquivalent::Remove;
    const auto geta = WithoutEquivalent::Geta;
    const Rows<const char *, WithoutEquivalent, QString, QString, QString> rows = {
        {"plain", remove, u"東京\r\n[a]\r"_s, u"東京\n[a]\n"_s, {}},
        {"equivalents and accents", remove, u"1600\u20131650 \u2014 café"_s, u"1600-1650 ― cafe"_s,
         u"似た文字に 2，アクセントなしに 1"_s},
        {"emoji removed", remove, u"a😀b🎉"_s, u"ab"_s, u"なくした文字 2"_s},
        {"emoji replaced", geta, u"a😀b"_s, u"a〓b"_s, u"〓にした文字 1"_s},
        {"a family with skin colours is one", geta, u"👩🏽\u200D👩\u200D👧！"_s, u"〓！"_s, u"〓にした文字 1"_s},
        {"variation selector, soft hyphen, zero width space", geta, u"☀\uFE0Fa\u00ADb\u200Bc"_s, u"〓abc"_s,
         u"〓にした文字 1"_s},
        {"no text", geta, QString(u'a') + QChar(0) + u'b', u"ab"_s, {}},
    };
    for (const auto &[name, rest, pasted, text, notice] : rows) {
        const CleanText clean = CleanedPaste(pasted, rest);
        EXPECT_EQ(clean.text, text) << name;
        EXPECT_EQ(clean.notice, notice) << name;
    }
}

TEST(CleanText, Cells_BecomeLinesWithTheSecondHidden)
{
    QString refusal;
    EXPECT_EQ(LinesOfCells(u"apple\tりんご\r\nbook\t本\tnoun\r\n\r\n題名\r\n"_s, &refusal),
              u"apple　[りんご]\nbook　[本]　noun\n題名\n"_s);
    EXPECT_EQ(refusal, QString());
    EXPECT_EQ(LinesOfCells(u"a\t\"two\nlines [1]\"\n"_s, &refusal), u"a　[two lines ［1］]\n"_s);
    EXPECT_EQ(LinesOfCells(u"\n \n"_s, &refusal), QString());
    EXPECT_FALSE(refusal.isEmpty());
    EXPECT_EQ(LinesOfCells(QString(200, u'\t') + u'a', &refusal), QString());
    EXPECT_FALSE(refusal.isEmpty());
    const Rows<QString, bool> rows = {{u"a\tb\nc"_s, true},
                                      {u"\n\na\tb"_s, true},
                                      {u"a\nb\tc"_s, false},
                                      {u"\tindented\n"_s, false},
                                      {QString(), false}};
    for (const auto &[text, hasCells] : rows)
        EXPECT_EQ(HasCells(text), hasCells) << text.toStdString();
}

TEST(CleanText, JoinedLines_EndWhereTheSentenceEnds)
{
    const QString long1 = u"ぺらぺらぺらぺらぺらぺらぺらぺらぺらぺら，"_s;
    const Rows<const char *, QString, QString> rows = {
        {"one sentence", u"徳川家康は江戸に幕\n府を開き，[将軍]と\nなった。\n次の文は別の行。"_s,
         u"徳川家康は江戸に幕府を開き，[将軍]となった。\n次の文は別の行。"_s},
        {"a blank over two lines", u"徳川[家\n康]は江戸\n"_s, u"徳川[家康]は江戸\n"_s},
        {"closing quote after the stop", u"「そうだ。」\nと言った"_s, u"「そうだ。」\nと言った"_s},
        {"quote in the sentence", u"彼は「将軍」\nと呼ばれた"_s, u"彼は「将軍」と呼ばれた"_s},
        {"blank line", u"江戸時代\n\n徳川家康"_s, u"江戸時代\n\n徳川家康"_s},
        {"indented paragraph", u"江戸時代の話\n　徳川家康は"_s, u"江戸時代の話\n　徳川家康は"_s},
        {"short heading", u"江戸時代\n徳川家康は一六〇三年に江戸に幕\n府を開いた"_s,
         u"江戸時代\n徳川家康は一六〇三年に江戸に幕府を開いた"_s},
        {"bullets and numbers", u"江戸の将軍\n・徳川家康\n・徳川秀忠\n1. 一番目\n(2) 二番目\n③三番目\n第2章 幕府"_s,
         u"江戸の将軍\n・徳川家康\n・徳川秀忠\n1. 一番目\n(2) 二番目\n③三番目\n第2章 幕府"_s},
        {"a year is no number of a list", u"徳川家康が\n1603年に"_s, u"徳川家康が1603年に"_s},
        {"neither is a decimal", u"重さはおよそ\n1.5倍である"_s, u"重さはおよそ1.5倍である"_s},
        {"Latin words", u"The quick \nbrown [fox]\n[jumps] over"_s, u"The quick brown [fox] [jumps] over"_s},
        {"hyphenation", u"an exam-\nple of it"_s, u"an example of it"_s},
        {"hyphen before a capital", u"the Anglo-\nSaxon"_s, u"the Anglo-Saxon"_s},
        {"cells", u"abcde\tb\nabcde\td"_s, u"abcde\tb\nabcde\td"_s},
        {"broken again at the limit", long1 + u'\n' + long1 + u'\n' + long1, long1 + long1 + u'\n' + long1},
        {"not breakable again", QString(30, u'語') + u'\n' + QString(30, u'語'),
         QString(30, u'語') + u'\n' + QString(30, u'語')},
        {"line end at the end", u"a\n"_s, u"a\n"_s},
        {"nothing", {}, {}},
    };
    for (const auto &[name, text, expected] : rows)
        EXPECT_EQ(JoinedLines(text), expected) << name;
}

TEST(CleanText, Mended_TakesAllOffers)
{
    const QString sentence = QString(29, u'語') + u"。"_s;
    const Rows<const char *, QString, QString> rows = {
        {"equivalents", u"a\u2014é\nb"_s, u"a―e\nb"_s},
        {"full-width brackets", u"［a］\n［b］"_s, u"[a]\n[b]"_s},
        {"full-width brackets beside half-width ones", u"［a］[b] ［c］\n[d］\n［e]"_s, u"[a][b] [c]\n[d]\n[e]"_s},
        {"full-width brackets that would be no blank", u"[a［1］]\n［b[c]］\n］d［"_s, u"[a［1］]\n［b[c]］\n］d［"_s},
        {"long lines", sentence + sentence + u"a\n", sentence + u'\n' + sentence + u"a\n"},
        {"what has no equivalent stays, the rest is mended", u"é😀"_s, u"e😀"_s},
    };
    for (const auto &[name, text, expected] : rows)
        EXPECT_EQ(Mended(text), expected) << name;
}

TEST(CleanText, EachTemplate_CanBeStudied)
{
    for (const Template &example : Templates()) {
        EXPECT_EQ(CharactersLost(example.text), QStringList());
        for (const QStringView line : QStringView(example.text).split(u'\n'))
            EXPECT_TRUE(ProblemsOfLine(line, [](const QString &) { return false; }).empty()) << line.toUtf8().data();
        EXPECT_GE(example.text.count(u'['), 3);
        EXPECT_EQ(example.text.sliced(example.selectionStart, example.selectionLength), u"題名"_s);
    }
}
