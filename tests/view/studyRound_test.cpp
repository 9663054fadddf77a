#include "support/Rows.h"
#include "support/StudyText.h"
#include "support/TestFiles.h"
#include "view/modPageText.h"
#include "view/modSpots.h"
#include "view/modStudyClock.h"
#include "view/modStudyRound.h"
#include "view/modWordAt.h"

#include <QTimeZone>

#include <gtest/gtest.h>

using namespace Qt::Literals::StringLiterals;

namespace {

DisplayText Text(const QStringList &texts)
{
    return DisplayText(LinesOf(texts));
}

StudyRound Round(int blanks, int shown)
{
    StudyRound round;
    round.Load(blanks);
    for (int blank = 1; blank <= shown; ++blank)
        round.Toggle(blank);
    return round;
}

/// A view of a file as the window sets its scroll bar up.
PageInView Page(int topLine, int rows, int lines)
{
    const bool canScroll = lines >= rows;
    return {topLine, rows, rows > 1 ? rows - 1 : 1, canScroll ? lines : 1, canScroll};
}

// Ten pixels a cell, rows of twenty pixels, with line numbers: text begins at 60.
const PageLayout Layout{10, 20, 205, true};

} // namespace

TEST(StudyRound, CountsWhatIsShownAndNotWhatIsHidden)
{
    StudyRound round = Round(2, 0);
    EXPECT_TRUE(round.Toggle(1));
    EXPECT_FALSE(round.Toggle(1));
    EXPECT_EQ(round.lngOpenCount, 1);
    EXPECT_TRUE(round.Toggle(1));
    EXPECT_EQ(round.lngOpenCount, 2);
    EXPECT_FALSE(round.AllShown());
    round.Toggle(2);
    EXPECT_TRUE(round.AllShown());
    round.HideAll();
    EXPECT_FALSE(round.bolOpen(1) || round.bolOpen(2) || round.AllShown());
    EXPECT_EQ(round.lngOpenCount, 3);
}

TEST(StudyRound, AReReadKeepsTheFirstBlanksByNumber)
{
    StudyRound round = Round(3, 3);
    round.Toggle(2);
    round.lngMarkLine = 7;
    round.Reload(5);
    EXPECT_TRUE(round.bolOpen(1) && !round.bolOpen(2) && round.bolOpen(3) && !round.bolOpen(4) && !round.bolOpen(5));
    round.Reload(1);
    EXPECT_TRUE(round.AllShown());
    round.Reload(2);
    EXPECT_FALSE(round.bolOpen(2)) << "a blank that was gone comes back hidden";
    EXPECT_EQ(round.lngOpenCount, 3);
    EXPECT_EQ(round.lngMarkLine, 7);
    round.Load(2);
    EXPECT_FALSE(round.bolOpen(1));
    EXPECT_EQ(round.lngOpenCount, 0);
    EXPECT_EQ(round.lngMarkLine, 0);
}

TEST(Enter, ShowsTheNextHiddenAnswerInView)
{
    const DisplayText text = Text({u"[1] [2]"_s, u"-"_s, u"[3]"_s, u"-"_s, u"[4]"_s});
    // How many answers are shown, top line and rows of the page, then what Enter does and with which blank.
    const Rows<const char *, int, int, int, EnterAction, int> rows = {
        {"first of the page", 0, 1, 3, EnterAction::Reveal, 1},
        {"next on the same line", 1, 1, 3, EnterAction::Reveal, 2},
        {"lines without blanks are passed over", 2, 2, 2, EnterAction::Reveal, 3},
        {"blanks above the page do not count", 0, 3, 2, EnterAction::Reveal, 3},
        {"blanks below the page do not count", 2, 1, 2, EnterAction::TurnPage, 0},
        {"no blank in view", 0, 4, 1, EnterAction::TurnPage, 0},
        {"only the last line in view", 0, 5, 3, EnterAction::Reveal, 4},
        {"all shown", 4, 1, 5, EnterAction::TurnPage, 0},
    };
    for (const auto &[name, shown, topLine, height, action, blank] : rows) {
        const EnterDecision decision = DecideEnter(Round(4, shown), text, Page(topLine, height, 5));
        EXPECT_EQ(decision.action, action) << name;
        EXPECT_EQ(decision.blank, blank) << name;
    }
}

TEST(Enter, AsksAtTheEndOfTwentyBlanksOrMore)
{
    const auto decide = [](int blanks, int shown, int topLine, int rows) {
        const DisplayText text = Text(QStringList(blanks, u"[x]"_s));
        return DecideEnter(Round(blanks, shown), text, Page(topLine, rows, blanks)).action;
    };
    EXPECT_EQ(decide(19, 19, 10, 10), EnterAction::TurnPage);
    EXPECT_EQ(decide(20, 20, 11, 10), EnterAction::AskThenTurn) << "the last page: 11 + 9 = 20";
    EXPECT_EQ(decide(20, 20, 10, 10), EnterAction::TurnPage) << "one line too early";
    EXPECT_EQ(decide(20, 20, 1, 30), EnterAction::AskThenTurn) << "a file shorter than the page";
    EXPECT_EQ(decide(20, 19, 20, 10), EnterAction::Reveal);
    EXPECT_EQ(AllShownMessage(32), u"32個の正解をすべて表示しました。\r\n学習を続けますか？"_s);
}

TEST(TurnPage, GoesOnOrBeginsANewRound)
{
    // Blanks, how many of them are shown and the page, then the new top line and whether blank 1 is hidden.
    const Rows<const char *, int, int, PageInView, int, bool> rows = {
        {"one line of overlap", 5, 1, Page(1, 10, 40), 10, false},
        {"last page, last blank hidden", 5, 4, Page(38, 10, 40), 40, false},
        {"last blank shown, not at the end", 5, 5, Page(1, 10, 40), 10, false},
        {"last blank shown, at the end", 5, 5, Page(31, 10, 40), 1, true},
        {"one before the end", 5, 5, Page(30, 10, 40), 39, false},
        {"at the maximum all is hidden first, so it stays there", 5, 5, Page(40, 10, 40), 40, true},
        {"at the maximum with nothing shown it would be stuck", 5, 0, Page(40, 10, 40), 1, true},
        {"short file, all shown", 5, 5, Page(1, 50, 40), 1, true},
        {"short file, last hidden", 5, 2, Page(1, 50, 40), 1, true},
        {"page of one row", 5, 1, Page(7, 1, 40), 8, false},
        {"no blanks: down", 0, 0, Page(1, 10, 40), 10, false},
        {"no blanks: back to the top", 0, 0, Page(31, 10, 40), 1, false},
        {"no blanks and short", 0, 0, Page(1, 50, 40), 1, false},
    };
    for (const auto &[name, blanks, shown, page, topLine, isFirstHidden] : rows) {
        StudyRound round = Round(blanks, shown);
        EXPECT_EQ(TurnPage(&round, page), topLine) << name;
        EXPECT_EQ(blanks > 0 && !round.bolOpen(1), isFirstHidden) << name;
        EXPECT_EQ(round.lngOpenCount, shown) << name;
    }
}

TEST(HitTest, HitsStrictlyInsideABox)
{
    const DisplayText text = Text({u"-"_s, u"[a][bb] [c]"_s, u"[d]"_s}); // boxes at cells 0-3, 3-7, 8-11
    ASSERT_EQ(Layout.TextLeftPx(), 60);
    // X and Y of the click, the top line and the blank that is hit.
    const Rows<const char *, int, int, int, int> rows = {
        {"inside", 75, 30, 1, 1},
        {"left edge", 60, 30, 1, 0},
        {"just inside it", 61, 30, 1, 1},
        {"edge between two boxes", 90, 30, 1, 0},
        {"second box", 91, 30, 1, 2},
        {"gap", 135, 30, 1, 0},
        {"right edge of the last", 170, 30, 1, 0},
        {"line without blanks", 75, 10, 1, 0},
        {"top margin", 75, 5, 2, 0},
        {"first pixel below it", 75, 6, 2, 1},
        {"last pixel of the row", 75, 24, 2, 1},
        {"next row", 75, 25, 2, 4},
        {"below the last line", 75, 65, 1, 0},
    };
    for (const auto &[name, x, y, topLine, blank] : rows)
        EXPECT_EQ(HitTest(text, x, y, topLine, Layout), blank) << name;
    EXPECT_EQ(HitTest(DisplayText(), 75, 30, 1, Layout), 0);
}

TEST(PageLayout, HoldsWholeRowsAndAStripOfFourAndAHalfCharacters)
{
    EXPECT_EQ(Layout.RowsPerPage(), 10);
    EXPECT_EQ((PageLayout{10, 20, 204, true}).RowsPerPage(), 9);
    EXPECT_EQ((PageLayout{10, 20, 3, true}).RowsPerPage(), 1) << "a window too low for a row";
    EXPECT_EQ((PageLayout{10, 20, 3, true}).LargeChange(), 1);
    EXPECT_TRUE(Layout.IsInNumberStrip(50));
    EXPECT_FALSE(Layout.IsInNumberStrip(51));
    EXPECT_TRUE((PageLayout{7, 20, 205, true}).IsInNumberStrip(36)) << "7 * 4.5 + 5 = 36.5";
    EXPECT_FALSE((PageLayout{10, 20, 205, false}).IsInNumberStrip(3));
    EXPECT_EQ(MarkLineAt(25, 8, Layout), 9);
    EXPECT_EQ(MarkLineAt(0, 8, Layout), 8) << "the margin belongs to the first row";
}

TEST(Spots, AreGoneThroughAsOneReads)
{
    const DisplayText text = Text({u"above [x]"_s, u"[a] ｢図｣ [b｢c｣]"_s, u"none ｢｣"_s, u"｢x.y｣｢[漢]｣"_s, u"[below]"_s});
    const std::vector<Place> spots = {{2, 1, 3}, {2, 5, 3}, {2, 9, 6}, {4, 7, 3}};
    EXPECT_EQ(SpotsInView(text, Page(2, 3, 5), false), spots) << "neither what is hidden nor what is no picture's name";
    const std::vector<Place> words = {{3, 1, 4}, {4, 2, 1}, {4, 4, 1}, {4, 7, 3}};
    EXPECT_EQ(SpotsInView(text, Page(3, 2, 5), true), words);
}

TEST(SpokenPage, SaysWhatIsShownAndWhereSomethingIsHidden)
{
    const DisplayText text = Text({u"above"_s, u"[a]と[漢字]。"_s, u"[]"_s, u"[next] page"_s});
    StudyRound round = Round(4, 0);
    round.Toggle(2);
    EXPECT_EQ(SpokenPage(text, round, 2, 2), u" 空欄 と 漢字 。\n 空欄 "_s);
    EXPECT_EQ(SpokenPage(text, round, 4, 9), u" 空欄  page"_s);
    EXPECT_EQ(SpokenPage(DisplayText(), StudyRound(), 1, 9), QString());
    EXPECT_EQ(SpokenOffset(text, round, 2, 2, 5), 6) << "the first character of a shown answer";
    EXPECT_EQ(SpokenOffset(text, round, 1, 3, 1), 5 + 1 + 10 + 1 + 1);
    EXPECT_EQ(SpokenOffset(text, round, 4, 4, 7), 5) << "a word behind a hidden answer of four letters";
}

TEST(ClockTick, MovesInStepsOfTenSeconds)
{
    const QDateTime start(QDate(2024, 3, 5), QTime(10, 0));
    // Seconds since the start, minutes shown (-1 where nothing changes) and seconds shown.
    const Rows<int, int, int> rows = {{0, 0, 0},   {9, -1, 0},  {10, 0, 10},    {60, 1, 0},
                                      {70, 1, 10}, {75, -1, 0}, {7200, 120, 0}, {-10, -1, 0}};
    for (const auto &[seconds, minutesShown, secondsShown] : rows) {
        const auto shown = ClockTick(start, start.addSecs(seconds));
        ASSERT_EQ(shown.has_value(), minutesShown >= 0) << seconds;
        if (shown) {
            EXPECT_EQ(shown->minutes, minutesShown);
            EXPECT_EQ(shown->seconds, secondsShown);
        }
    }
    EXPECT_TRUE(ClockTick(start.addMSecs(900), start.addMSecs(10'100)).has_value()) << "whole seconds count";
    const QDateTime beforeSummerTime(QDate(2024, 3, 31), QTime(1, 59), QTimeZone("Europe/Berlin"));
    EXPECT_EQ(ClockTick(beforeSummerTime, beforeSummerTime.addSecs(120))->minutes, 2) << "not 62";
}

TEST(TextUnderPointer, NeverGivesWhatIsHidden)
{
    const DisplayText text = Text({u"don't stop [hidden] now"_s, u"[shown]漢字かなカナー12"_s});
    StudyRound round = Round(2, 0);
    round.Toggle(2);
    const auto at = [&](int cell, int line) {
        return TextUnderPointer(text, round, Layout.TextLeftPx() + cell * 10 + 5, Layout.RowTopPx(line) + 8, 1, Layout);
    };
    EXPECT_EQ(at(2, 1), u"don't"_s);
    EXPECT_EQ(at(8, 1), u"stop"_s);
    EXPECT_EQ(at(5, 1), QString()) << "a blank between words";
    EXPECT_EQ(at(14, 1), QString()) << "a hidden answer";
    EXPECT_EQ(at(20, 1), u"now"_s);
    EXPECT_EQ(at(40, 1), QString()) << "behind the line's end";
    EXPECT_EQ(at(3, 2), u"shown"_s);
    EXPECT_EQ(at(8, 2), u"漢字"_s);
    EXPECT_EQ(at(12, 2), u"かな"_s);
    EXPECT_EQ(at(19, 2), u"カナー"_s);
    EXPECT_EQ(at(22, 2), u"12"_s);
    EXPECT_EQ(at(3, 3), QString()) << "below the last line";
    EXPECT_EQ(TextUnderPointer(text, round, 65, 3, 1, Layout), QString()) << "the top margin";
    EXPECT_EQ(TextUnderPointer(text, round, 20, 10, 1, Layout), QString()) << "the strip of line numbers";
}
