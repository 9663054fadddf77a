// SPDX-FileCopyrightText: 2026 The Kotoban developers
// SPDX-License-Identifier: MIT

#include "search/frmSearch.h"
#include "search/modInflection.h"
#include "support/Rows.h"
#include "support/StudyText.h"
#include "support/TestFiles.h"
#include "text/modCheckText.h"

#include <QApplication>
#include <QLabel>
#include <QLineEdit>
#include <QListView>
#include <QSignalSpy>
#include <QTest>
#include <QTextDocument>

#include <gtest/gtest.h>

using namespace Qt::Literals::StringLiterals;

TEST(CandidateForms, InflectedWord_YieldsFormsInRuleOrder)
{
    const Rows<const char16_t *, const char16_t *> rows = {
        {u"stopped", u"stopped stoppe stopp stop"},
        {u"cities", u"cities citie citi city"},
        {u"making", u"making mak make"},
        {u"career", u"career caree"},
        {u"bother", u"bother bothe"},
        {u"careers", u"careers career care"},
        {u"makers'", u"makers' maker mak"},
        {u"maker", u"maker make mak"},
        {u"s", u"s "},
        {u"running", u"running runn runne run"},
        {u"egging", u"egging egg egge"},
        {u"biggest", u"biggest bigge bigg"},
        {u"ladies'", u"ladies' ladie lady"},
        {u"carriers", u"carriers carrier carri carry carry"},
        {u"happiest", u"happiest happie happi happy"},
        {u"dog's", u"dog's dog' dog"},
        {u"being", u"being be bee"},
        {u"added", u"added adde add"},
        {u"robbed", u"robbed robbe robb rob"},
        {u"Xes", u"Xes Xe X"},
    };
    for (const auto &[word, forms] : rows)
        EXPECT_EQ(CandidateForms(QString::fromUtf16(word)).join(u' '), QString::fromUtf16(forms));
}

TEST(MatchWords, SeveralCandidates_FirstInListMatches)
{
    const QStringList list = {u"be"_s, u"bother"_s, u"care"_s, u"city"_s, u"stop"_s};
    EXPECT_EQ(MatchWords(list, {u"Cities"_s, u"STOPPED"_s, u"bothered"_s, u"cares"_s, u"x"_s, QString(), u"Cities"_s}),
              (std::vector<int>{4, 5, 2, 3, 0, 0, 4}));
    EXPECT_EQ(FindWithInflections({}, u"stop"_s), 0);
}

namespace {

class SearchTest : public testing::Test
{
  protected:
    QString WriteList(const QByteArray &bytes)
    {
        return folder.Write(u"KeywordList.txt"_s, bytes);
    }

    /// All hits, in the order in which steps visit them.
    static std::vector<TextSpan> SpansOf(Hits &hits)
    {
        std::vector<TextSpan> spans;
        HitStep step;
        while (true) {
            step = *hits.Next(step.span, false, QDeadlineTimer(QDeadlineTimer::Forever));
            if (step.span.line == 0 || (step.isWrapped && !spans.empty()))
                return spans;
            spans.push_back(step.span);
        }
    }

    TestFolder folder;
    DisplayText text{LinesOf({u"The [cities] stopped; a city. Stop!"_s, u"水素と酸素 [水]"_s, u"stop水"_s})};
};

} // namespace

TEST_F(SearchTest, KeywordListRead_IsSortedWithoutDuplicates)
{
    const KeywordList list = ReadKeywordList(WriteList("stop\r\n\r\n City \n\x90\x85\r\nSTOP"));
    EXPECT_EQ(list.words, QStringList({u"city"_s, u"stop"_s, u"水"_s}));
    EXPECT_TRUE(list.fault.isEmpty());
    const KeywordList missing = ReadKeywordList(folder.Path(u"none.txt"_s));
    EXPECT_TRUE(missing.words.isEmpty() && missing.fault.contains(u"none.txt"_s));
    const KeywordList wrong = ReadKeywordList(WriteList("\xC6\xFC\xCB\xDC\xB8\xEC\xA4\xCE"));
    EXPECT_TRUE(wrong.words.isEmpty() && wrong.fault == WrongCharCodeMessage(u"KeywordList"_s, u"EUC"_s));
}

TEST_F(SearchTest, KeywordListOutOfBounds_SaysSo)
{
    const QByteArray longest(MaxLineBytes, 'a');
    const KeywordList longLines = ReadKeywordList(WriteList(longest + "\n" + longest + "b\ncity\nc" + longest));
    EXPECT_EQ(longLines.words, QStringList({QString::fromLatin1(longest), u"city"_s}));
    EXPECT_EQ(longLines.fault, u"キーワード一覧の2行目は100バイトを超えるので，キーワードになりません。"_s);
    const QByteArray largest = QByteArray(MaxKeywordListBytes - 5, ' ') + "\ncity";
    EXPECT_EQ(ReadKeywordList(WriteList(largest)).words, QStringList(u"city"_s));
    const KeywordList larger = ReadKeywordList(WriteList(largest + "\n"));
    EXPECT_TRUE(larger.words.isEmpty() && larger.fault.contains(u"4MB以下"_s)) << larger.fault.toStdString();
}

TEST_F(SearchTest, InflectedFormsAndPlainText_AreCounted)
{
    KeywordSearch search(ReadKeywordList(WriteList("stop\ncity\n\x90\x85\nabsent")));
    EXPECT_TRUE(SpansOf(*search.HitsOf(u"stop"_s, 1)).empty()) << "no text yet";
    search.SetText(&text);
    EXPECT_TRUE(search.CountOn(QDeadlineTimer(QDeadlineTimer::Forever)));
    EXPECT_EQ(SpansOf(*search.HitsOf(u"city"_s, 1)), (std::vector<TextSpan>{{1, 6, 6}, {1, 25, 4}})); // one is hidden
    EXPECT_EQ(SpansOf(*search.HitsOf(u"水"_s, 1)), (std::vector<TextSpan>{{2, 1, 1}, {2, 8, 1}, {3, 5, 1}}));
    EXPECT_EQ(search.CountOf(u"stop"_s), 3);
    EXPECT_EQ(search.KeywordsWith(u"T"_s), QStringList({u"city"_s, u"stop"_s, u"absent"_s}))
        << "keywords with hits come first";
    search.SetText(nullptr);
    EXPECT_EQ(search.CountOf(u"stop"_s), 0);
    EXPECT_TRUE(SpansOf(*search.HitsOf(u"stop"_s, 1)).empty());
}

TEST_F(SearchTest, KeywordsThatBeginAlike_AreCountedApartAndInLinearTime)
{
    QByteArray list = "1\n11\n112\n1134\n2\n22\n";
    for (int number = 0; number < 100'000; ++number)
        list += "22-" + QByteArray::number(number) + "\n";
    const DisplayText digits(LinesOf(QStringList(2'000, u"[1123] 22-77777 222222222222222222222222222222222222"_s)));
    KeywordSearch search(ReadKeywordList(WriteList(list)));
    search.SetText(&digits);
    search.CountOn(QDeadlineTimer(QDeadlineTimer::Forever)); // comparing with each keyword would take minutes
    const Rows<const char16_t *, int> rows = {
        {u"1", 2},   {u"11", 1},   {u"112", 1},   {u"1134", 0},     {u"2", 39},
        {u"22", 19}, {u"22-7", 1}, {u"22-77", 1}, {u"22-77777", 1}, {u"22-777778", 0},
    };
    for (const auto &[keyword, perLine] : rows)
        EXPECT_EQ(search.CountOf(QString::fromUtf16(keyword)), 2'000 * perLine)
            << QString::fromUtf16(keyword).toStdString();
    const QString longest(2'000'000, u'2');
    EXPECT_TRUE(SpansOf(*search.HitsOfText(longest, 1)).empty()) << "nor with a whole text at each place";
}

TEST_F(SearchTest, PlainText_MatchesAsQtCompares)
{
    const QString wide = QString(63, u'-') + u"ab"_s; // crosses the boundary of a block
    const Rows<QStringList, const char16_t *, int> rows = {
        {{u"Stop STOP sTo"_s}, u"stop", 2},
        {{u"aaaaa"_s}, u"aa", 2},                   // hits do not overlap
        {{u"a!"_s, u"水a"_s, u"!水"_s}, u"!水", 1}, // nor cross the end of a line
        {{u"ａ Ａ Σσ Жж"_s}, u"Ａ", 2},
        {{u"Σσ"_s}, u"ς", 2},                // another lower-case form of the letter
        {{QString(QChar(0x212B))}, u"å", 1}, // the unit sign
        {{wide, wide}, u"AB", 2},
        {{QString(200, u'x')}, u"x", 200},
        {{u"水"_s}, u"😀", 0},
        {{QString(), QString()}, u"x", 0},
        {{u"x"_s}, u"", 0},
    };
    for (const auto &[lines, wanted, count] : rows) {
        const DisplayText searched(LinesOf(lines));
        std::vector<TextSpan> spans;
        PlainFinder(QString::fromUtf16(wanted)).AddSpans(searched, 1, searched.LineCount(), &spans);
        EXPECT_EQ(int(spans.size()), count) << QString::fromUtf16(wanted).toStdString();
    }
}

TEST_F(SearchTest, StartInMiddle_CountsFromThereAndWraps)
{
    QStringList lines(10, u"y"_s);
    lines[0] = lines[8] = u"x"_s;
    const DisplayText searched(LinesOf(lines));
    Hits hits(&searched, std::make_unique<PlainFinder>(u"x"_s), 9, 2);
    const QDeadlineTimer noTime(0);
    EXPECT_FALSE(hits.CountOn(noTime));
    EXPECT_EQ(hits.Count(), 1);
    EXPECT_EQ(StepText(hits, hits.Next({9}, false, noTime)->span), u"1か所…"_s) << "its number is not known yet";
    EXPECT_FALSE(hits.CountOn(noTime));
    EXPECT_EQ(hits.Count(), 2) << "the beginning is next";
    while (!hits.CountOn(noTime)) {
    }
    EXPECT_EQ(StepText(hits, hits.Next({9}, false, noTime)->span), u"2 / 2"_s);
}

TEST(PositionBeside, RoomOnOneSide_TakesThatSide)
{
    const QRect screen(0, 30, 1000, 570);
    const QSize size(300, 400);
    const Rows<QRect, QPoint> rows = {
        {QRect(100, 50, 600, 500), QPoint(700, 50)},
        {QRect(101, 50, 600, 500), QPoint(700, 50)}, // a pixel short at the right, and no room at the left
        {QRect(350, 50, 600, 500), QPoint(50, 50)},
        {QRect(0, 30, 1000, 570), QPoint(700, 30)},
        {QRect(100, 300, 600, 300), QPoint(700, 200)},
        {QRect(900, -20, 600, 500), QPoint(600, 30)},
    };
    for (const auto &[beside, position] : rows)
        EXPECT_EQ(PositionBeside(beside, size, screen), position) << beside.x();
    EXPECT_EQ(PositionBeside(QRect(0, 30, 200, 100), QSize(1200, 900), screen), QPoint(0, 30))
        << "larger than the screen";
}

namespace {

/// The search window for the test's text, which goes on from where a test says that the user is.
class SearchWindowTest : public SearchTest
{
  protected:
    void Open(const QByteArray &keywords, int sliceMs = 2)
    {
        search = std::make_unique<KeywordSearch>(ReadKeywordList(WriteList(keywords)));
        search->SetText(&text);
        window = std::make_unique<frmSearch>(
            *search, [this] { return page; }, nullptr, sliceMs);
        list = window->findChild<QListView *>(u"lstKeyword"_s);
        typed = window->findChild<QLineEdit *>(u"txtSearch"_s);
        QObject::connect(window.get(), &frmSearch::SpanChosen, [this](const TextSpan &span) {
            chosen += span;
            page.found = span;
            page.isAtFound = true;
        });
        window->Open();
    }

    QString Entry(int row) const
    {
        return list->model()->index(row, 0).data().toString();
    }

    QString Label(const QString &name) const
    {
        return window->findChild<QLabel *>(name)->text();
    }

    void ClickEntry(int row)
    {
        QTest::mouseClick(list->viewport(), Qt::LeftButton, {},
                          list->visualRect(list->model()->index(row, 0)).center());
    }

    SearchedPage page;
    std::unique_ptr<KeywordSearch> search;
    std::unique_ptr<frmSearch> window;
    QListView *list = nullptr;
    QLineEdit *typed = nullptr;
    QList<TextSpan> chosen;
};

} // namespace

TEST_F(SearchWindowTest, TextTyped_NarrowsListAndStepsThroughHits)
{
    Open("stop\ncity");
    QSignalSpy told(window.get(), &frmSearch::StateChanged);
    EXPECT_TRUE(window->findChild<QLabel *>(u"lblHint"_s)->isHidden());
    EXPECT_EQ(Entry(0), u"city　2か所"_s);
    EXPECT_EQ(Entry(1), u"stop　3か所"_s);
    QTest::keyClick(typed, Qt::Key_Return);
    EXPECT_EQ(chosen.size(), 0) << "nothing is typed or selected";

    QTest::keyClicks(typed, u"sto"_s);
    EXPECT_EQ(list->model()->rowCount(), 2);
    EXPECT_EQ(Entry(0), u"「sto」　3か所"_s);
    QTest::keyClick(typed, Qt::Key_Return);
    EXPECT_EQ(chosen.last(), (TextSpan{1, 14, 3}));
    ClickEntry(1);
    EXPECT_EQ(chosen.last(), (TextSpan{1, 31, 4})) << "continues where the last search ended";
    EXPECT_EQ(told.last(), (QVariantList{u"stop"_s, true, u"2 / 3"_s, QString()}));
    QTest::keyClick(list, Qt::Key_Return);
    EXPECT_EQ(chosen.last(), (TextSpan{3, 1, 4})) << "a key advances by one hit";
    window->GoOn(false);
    EXPECT_EQ(chosen.last(), (TextSpan{1, 14, 7}));
    EXPECT_EQ(Label(u"lblFound"_s), u"1 / 3　先頭に戻りました"_s);
    window->GoOn(true);
    EXPECT_EQ(chosen.last(), (TextSpan{3, 1, 4}));
    EXPECT_EQ(Label(u"lblFound"_s), u"3 / 3　末尾に戻りました"_s);
    window->GoOn(true);
    EXPECT_EQ(chosen.last(), (TextSpan{1, 31, 4}));
    EXPECT_EQ(told.last(), (QVariantList{u"stop"_s, true, u"2 / 3"_s, QString()}));
    QTest::keyClicks(typed, u"xyz"_s);
    window->GoOn(false);
    EXPECT_EQ(chosen.last(), TextSpan()) << "no hits";
    EXPECT_EQ(told.last(), (QVariantList{u"stoxyz"_s, false, u"見つかりません"_s, QString()}));
}

TEST_F(SearchWindowTest, MarkupInKeyword_IsShownAsItIs)
{
    Open("<img src='fifo'>");
    typed->setText(u"<img"_s);
    for (int row = 0; row < 2; ++row) {
        const QString toolTip = list->model()->index(row, 0).data(Qt::ToolTipRole).toString();
        EXPECT_TRUE(Qt::mightBeRichText(toolTip) && toolTip.contains(u"&lt;img")) << toolTip.toStdString();
        EXPECT_FALSE(toolTip.contains(u"<img")) << toolTip.toStdString();
        EXPECT_TRUE(Entry(row).contains(u"<img")) << "the entry itself has no markup";
    }
}

TEST_F(SearchWindowTest, NewSearch_StartsAtPageInView)
{
    Open("stop");
    page.topLine = 2;
    typed->setText(u"stop"_s);
    window->GoOn(false);
    EXPECT_EQ(chosen.last(), (TextSpan{3, 1, 4}));
    page.topLine = 1;
    page.isAtFound = false;
    ClickEntry(1);
    EXPECT_EQ(chosen.last(), (TextSpan{1, 14, 7})) << "the user has turned to another page";
    typed->setText(u"city"_s);
    window->GoOn(false);
    EXPECT_EQ(chosen.last(), (TextSpan{1, 25, 4})) << "from the top line again";
}

TEST_F(SearchWindowTest, PageForgetsHit_NextStepStartsAtTopLine)
{
    Open("stop");
    ClickEntry(0);
    window->GoOn(false);
    EXPECT_EQ(chosen.last(), (TextSpan{1, 31, 4}));
    page.found = TextSpan();
    window->GoOn(false);
    EXPECT_EQ(chosen.last(), (TextSpan{1, 14, 7}));
    page.found = TextSpan();
    page.topLine = 2;
    window->GoOn(false);
    EXPECT_EQ(chosen.last(), (TextSpan{3, 1, 4}));
    EXPECT_EQ(Label(u"lblFound"_s), u"3 / 3"_s);
}

TEST_F(SearchWindowTest, TypedTextIsKeyword_KeywordCountsInflectedForms)
{
    Open("city");
    typed->setText(u"city"_s);
    window->GoOn(false);
    EXPECT_EQ(Label(u"lblFound"_s), u"1 / 1"_s);
    ClickEntry(1);
    EXPECT_EQ(Label(u"lblFound"_s), u"1 / 2　先頭に戻りました"_s);
}

TEST_F(SearchWindowTest, CountingDone_KeywordsWithHitsComeFirstAndSelectionStays)
{
    QStringList lines(3000, u"absent is none of the words"_s);
    lines.last() = u"cities 水"_s;
    text = DisplayText(LinesOf(lines));
    Open("bat\ncity\n\x90\x85", 0);
    EXPECT_EQ(Entry(0), u"bat　0か所…"_s) << "in the order of the list while counting";
    list->setCurrentIndex(list->model()->index(0, 0));
    for (int slice = 0; slice < 100; ++slice)
        window->CountOn();
    EXPECT_EQ(Entry(0), u"city　1か所"_s);
    EXPECT_EQ(Entry(1), u"水　1か所"_s);
    EXPECT_EQ(Entry(2), u"bat　0か所"_s);
    EXPECT_EQ(list->currentIndex().row(), 2);
}

TEST_F(SearchWindowTest, DistantHit_StepIsTakenLaterOrDropped)
{
    QStringList lines(5000, u"-"_s);
    lines.last() = u"cities 水"_s;
    text = DisplayText(LinesOf(lines));
    Open(QByteArray(), 0);
    typed->setText(u"水"_s);
    window->GoOn(false);
    EXPECT_TRUE(chosen.isEmpty());
    EXPECT_EQ(Label(u"lblFound"_s), u"探しています　0か所…"_s);
    for (int slice = 0; slice < 10; ++slice)
        window->CountOn();
    EXPECT_EQ(chosen, QList<TextSpan>({{5000, 8, 1}}));
    EXPECT_EQ(Label(u"lblFound"_s), u"1 / 1"_s);
    typed->setText(u"cities"_s);
    window->GoOn(false);
    window->SetText(nullptr);
    text = DisplayText();
    window->CountOn();
    EXPECT_EQ(chosen.size(), 1) << "a pending step in another text is dropped";
}

TEST_F(SearchWindowTest, LongWord_HitCountStaysVisible)
{
    Open("stop");
    typed->setText(QString(200, u'w'));
    const QImage nowhere = list->grab().toImage();
    text = DisplayText(LinesOf({QString(200, u'w')}));
    window->SetText(&text);
    EXPECT_NE(list->grab().toImage(), nowhere);
}
