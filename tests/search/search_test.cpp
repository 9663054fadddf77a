#include "search/frmSearch.h"
#include "support/Rows.h"
#include "support/StudyText.h"
#include "support/TestFiles.h"
#include "text/modInflection.h"

#include <QApplication>
#include <QLabel>
#include <QLineEdit>
#include <QListView>
#include <QSignalSpy>
#include <QTest>

#include <gtest/gtest.h>

using namespace Qt::Literals::StringLiterals;

TEST(CandidateForms, FollowTheRulesInTheirOrder)
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
        {u"Xes", u"Xes Xe X"},
    };
    for (const auto &[word, forms] : rows)
        EXPECT_EQ(CandidateForms(QString::fromUtf16(word)).join(u' '), QString::fromUtf16(forms));
}

TEST(MatchWords, TakesTheFirstCandidateOfTheSortedList)
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

    TestFolder folder;
    DisplayText text{LinesOf({u"The [cities] stopped; a city. Stop!"_s, u"水素と酸素 [水]"_s, u"stop水"_s})};
};

} // namespace

TEST_F(SearchTest, ReadsTheKeywordListSorted)
{
    const KeywordList list = ReadKeywordList(WriteList("stop\r\n\r\n City \n\x90\x85\r\nSTOP"));
    EXPECT_EQ(list.words, QStringList({u"city"_s, u"stop"_s, u"水"_s}));
    EXPECT_TRUE(list.fault.isEmpty());
    const KeywordList missing = ReadKeywordList(folder.Path(u"none.txt"_s));
    EXPECT_TRUE(missing.words.isEmpty() && missing.fault.contains(u"none.txt"_s));
    const KeywordList wrong = ReadKeywordList(WriteList("\xC6\xFC\xCB\xDC\xB8\xEC\xA4\xCE"));
    EXPECT_TRUE(wrong.words.isEmpty() && wrong.fault == WrongCharCodeMessage(u"KeywordList"_s, u"EUC"_s));
}

TEST_F(SearchTest, CountsInflectedFormsAndPlainText)
{
    KeywordSearch search(ReadKeywordList(WriteList("stop\ncity\n\x90\x85\nabsent")));
    EXPECT_TRUE(search.SpansOf(u"stop"_s).empty()) << "no text yet";
    search.SetText(&text);
    EXPECT_EQ(search.SpansOf(u"city"_s), (std::vector<TextSpan>{{1, 6, 6}, {1, 25, 4}})) << "one of them is hidden";
    EXPECT_EQ(search.SpansOf(u"stop"_s), (std::vector<TextSpan>{{1, 14, 7}, {1, 31, 4}, {3, 1, 4}}));
    EXPECT_EQ(search.SpansOf(u"水"_s), (std::vector<TextSpan>{{2, 1, 1}, {2, 8, 1}, {3, 5, 1}}));
    EXPECT_TRUE(search.SpansOf(u"absent"_s).empty());
    EXPECT_EQ(search.KeywordsWith(u"T"_s), QStringList({u"absent"_s, u"city"_s, u"stop"_s}));
    EXPECT_EQ(search.SpansOfText(u"STOP"_s).size(), 3u);
    EXPECT_TRUE(FindText(text, u"!水"_s).empty()) << "not across the end of a line";
    search.SetText(nullptr);
    EXPECT_TRUE(search.SpansOf(u"stop"_s).empty());
}

TEST_F(SearchTest, TheWindowNarrowsAndGoesOn)
{
    KeywordSearch search(ReadKeywordList(WriteList("stop\ncity")));
    search.SetText(&text);
    frmSearch window(search, nullptr);
    QSignalSpy chosen(&window, &frmSearch::SpanChosen);
    window.Open();
    auto *const list = window.findChild<QListView *>(u"lstKeyword"_s);
    auto *const typed = window.findChild<QLineEdit *>(u"txtSearch"_s);
    const auto entry = [list](int row) { return list->model()->index(row, 0).data().toString(); };
    EXPECT_TRUE(window.findChild<QLabel *>(u"lblHint"_s)->isHidden());
    EXPECT_EQ(entry(0), u"city　2か所"_s);
    EXPECT_EQ(entry(1), u"stop　3か所"_s);
    QTest::keyClick(typed, Qt::Key_Return);
    EXPECT_EQ(chosen.size(), 0) << "nothing is typed and nothing chosen";

    QTest::keyClicks(typed, u"sto"_s);
    EXPECT_EQ(list->model()->rowCount(), 2);
    EXPECT_EQ(entry(0), u"「sto」　3か所"_s);
    QTest::keyClick(typed, Qt::Key_Return);
    EXPECT_EQ(chosen.last()[0].value<TextSpan>(), (TextSpan{1, 14, 3}));
    QTest::mouseClick(list->viewport(), Qt::LeftButton, {}, list->visualRect(list->model()->index(1, 0)).center());
    EXPECT_EQ(chosen.last()[0].value<TextSpan>(), (TextSpan{1, 31, 4})) << "on from where the last search ended";
    EXPECT_EQ(chosen.last()[1].toString(), u"stop"_s);
    QTest::keyClick(list, Qt::Key_Return);
    EXPECT_EQ(chosen.last()[0].value<TextSpan>(), (TextSpan{3, 1, 4})) << "a key goes on by one place";
    window.GoOn(false);
    EXPECT_EQ(chosen.last()[0].value<TextSpan>(), (TextSpan{1, 14, 7}));
    window.GoOn(true);
    EXPECT_EQ(chosen.last()[0].value<TextSpan>(), (TextSpan{3, 1, 4}));
    window.GoOn(true);
    EXPECT_EQ(chosen.last()[0].value<TextSpan>(), (TextSpan{1, 31, 4}));
    QTest::keyClicks(typed, u"xyz"_s);
    window.GoOn(false);
    EXPECT_EQ(chosen.last()[0].value<TextSpan>(), TextSpan()) << "found nowhere";
}

TEST_F(SearchTest, HowOftenALongWordIsFoundStaysInView)
{
    KeywordSearch search(ReadKeywordList(WriteList("stop")));
    search.SetText(&text);
    frmSearch window(search, nullptr);
    window.Open();
    window.findChild<QLineEdit *>(u"txtSearch"_s)->setText(QString(200, u'w'));
    auto *const list = window.findChild<QListView *>(u"lstKeyword"_s);
    const QImage nowhere = list->grab().toImage();
    text = DisplayText(LinesOf({QString(200, u'w')}));
    search.SetText(&text);
    window.Refresh();
    EXPECT_NE(list->grab().toImage(), nowhere);
}
