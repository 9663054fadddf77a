// SPDX-FileCopyrightText: 2026 The Kotoban developers
// SPDX-License-Identifier: MIT

#include "store/modDB_SQLite.h"
#include "study/modClickTarget.h"
#include "study/modStudySession.h"
#include "support/RecordingServices.h"
#include "support/Rows.h"
#include "support/StudyText.h"
#include "support/TestFiles.h"

#include <QDeadlineTimer>
#include <QMap>
#include <QRandomGenerator>
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

/// A page with the given number of rows.
PageLayout LayoutOf(int rows)
{
    return {.linePitchPx = 20, .heightPx = PageLayout::TopMarginPx + 20 * rows};
}

PageInView Page(int topLine, int rows, const DisplayText &text)
{
    return PageAt(topLine, text, LayoutOf(rows));
}

PageInView Page(int topLine, int rows, int lines)
{
    return Page(topLine, rows, Text(QStringList(lines, u"-"_s)));
}

// Cells of ten pixels, rows of twenty, with line numbers: the text begins at 60.
const PageLayout Layout{.cellWidthPx = 10, .linePitchPx = 20, .widthPx = 400, .heightPx = 205, .hasLineNumbers = true};

/// What is at a pixel of the first page.
ClickTarget At(const DisplayText &text, const StudyRound &round, int xPx, int yPx, const PageLayout &layout)
{
    return TargetAt(text, round, xPx, yPx, PageAt(1, text, layout), layout);
}

class StudySessionTest : public testing::Test
{
  protected:
    StudySessionTest()
    {
        database.Open(u":memory:"_s);
        EXPECT_TRUE(DBCreateKotoban(database));
    }

    /// The last row, or some columns of it.
    QString Row(const QString &columns)
    {
        ResultTable table;
        database.SQLite3Query(u"select "_s + columns + u" from t_kotoban"_s, &table);
        return table.back();
    }

    const TestFolder folder;
    RecordingServices services;
    StudyDatabase database{services};
    StudySession session{services, database, folder.Path(), u"花子"_s};
};

} // namespace

TEST(StudyRound, Reload_KeepsBlanksByNumber)
{
    StudyRound round = Round(3, 3);
    EXPECT_TRUE(round.AllShown());
    EXPECT_FALSE(round.Toggle(2) || round.AllShown());
    round.MarkLine(7);
    round.Reload(5);
    EXPECT_TRUE(round.bolOpen(1) && !round.bolOpen(2) && round.bolOpen(3) && !round.bolOpen(4) && !round.bolOpen(5));
    round.Reload(1);
    EXPECT_TRUE(round.AllShown());
    round.Reload(2);
    EXPECT_FALSE(round.bolOpen(2)) << "a blank that was gone comes back hidden";
    EXPECT_EQ(round.lngOpenCount(), 3);
    EXPECT_EQ(round.lngMarkLine(), 7);
    round.Load(2);
    EXPECT_FALSE(round.bolOpen(1));
    EXPECT_EQ(round.lngOpenCount(), 0);
    EXPECT_EQ(round.lngMarkLine(), 0);
}

TEST(Enter, HiddenAnswerInView_IsRevealed)
{
    const DisplayText text = Text({u"[1] [2]"_s, u"-"_s, u"[3]"_s, u"-"_s, u"[4]"_s});
    // Answers shown, top line and rows of the page; then the action of Enter and its blank.
    const Rows<const char *, int, int, int, EnterAction, int> rows = {
        {"first of the page", 0, 1, 3, EnterAction::Reveal, 1},
        {"next on the same line", 1, 1, 3, EnterAction::Reveal, 2},
        {"lines without blanks are skipped", 2, 2, 2, EnterAction::Reveal, 3},
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

TEST(Enter, EndOfTwentyBlanks_Asks)
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

TEST(TurnPage, AnyPage_AdvancesOrBeginsNewRound)
{
    // Blanks, answers shown and the page; then the new top line and whether blank 1 is hidden.
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
        EXPECT_EQ(round.lngOpenCount(), shown) << name;
    }
}

TEST(HitTest, Click_HitsOnlyStrictlyInsideBox)
{
    const DisplayText text = Text({u"-"_s, u"[a][bb] [c]"_s, u"[d]"_s}); // boxes at cells 0-3, 3-7, 8-11
    ASSERT_EQ(Layout.TextLeftPx(), 60);
    // x and y of the click and the top line; then the blank hit.
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
    PageLayout threeRows = Layout; // so that line 2 can come to the top
    threeRows.heightPx = 65;
    for (const auto &[name, x, y, topLine, blank] : rows)
        EXPECT_EQ(HitTest(text, x, y, PageAt(topLine, text, threeRows), threeRows), blank) << name;
    PageLayout scrolled = Layout;
    scrolled.leftCell = 2;
    const PageInView page = PageAt(1, text, scrolled);
    EXPECT_EQ(HitTest(text, 60, 30, page, scrolled), 1) << "the last cell of the first box";
    EXPECT_EQ(HitTest(text, 55, 30, page, scrolled), 0) << "the rest of it is out of view";
    EXPECT_EQ(HitTest(text, 145, 30, page, scrolled), 3);
    EXPECT_EQ(HitTest(DisplayText(), 75, 30, PageAt(1, DisplayText(), Layout), Layout), 0);
}

TEST(PageLayout, AnySize_HoldsWholeRowsAndNumberStrip)
{
    EXPECT_EQ(Layout.RowsPerPage(), 10);
    EXPECT_EQ((PageLayout{.linePitchPx = 20, .heightPx = 204}).RowsPerPage(), 9);
    EXPECT_EQ((PageLayout{.linePitchPx = 20, .heightPx = 3}).RowsPerPage(), 1) << "too low for a row";
    EXPECT_EQ((PageLayout{.linePitchPx = 20, .heightPx = 3}).LargeChange(), 1);
    EXPECT_TRUE(Layout.IsInNumberStrip(50));
    EXPECT_FALSE(Layout.IsInNumberStrip(51));
    EXPECT_TRUE((PageLayout{.cellWidthPx = 7, .hasLineNumbers = true}).IsInNumberStrip(36)) << "7 * 4.5 + 5 = 36.5";
    EXPECT_FALSE((PageLayout{.cellWidthPx = 10}).IsInNumberStrip(3));
    EXPECT_EQ(Layout.RowOffsetAt(25), 1);
    EXPECT_EQ(Layout.RowOffsetAt(0), 0) << "the margin belongs to the first row";
    EXPECT_EQ(Layout.RowOffsetAt(-300), 0) << "and so does what is above the page";
}

TEST(PageAt, FullPage_ScrollsUntilLastLineIsOnTop)
{
    // Requested top line, rows and lines; then top line, last line in view, maximum and whether the page scrolls.
    const Rows<const char *, int, int, int, int, int, int, bool> rows = {
        {"one line too few", 1, 10, 9, 1, 9, 1, false},
        {"as many lines as rows", 1, 10, 10, 1, 10, 10, true},
        {"the last line at the top", 10, 10, 10, 10, 10, 10, true},
        {"a top line past the end", 40, 10, 12, 12, 12, 12, true},
        {"in the middle", 7, 10, 40, 7, 16, 40, true},
        {"no text", 3, 10, 0, 1, 0, 1, false},
        {"no text and one row", 1, 1, 0, 1, 0, 1, false},
    };
    for (const auto &[name, wanted, height, lines, topLine, lastLine, maximum, canScroll] : rows) {
        const PageInView page = Page(wanted, height, lines);
        EXPECT_EQ(page.topLine, topLine) << name;
        EXPECT_EQ(page.lastLine, lastLine) << name;
        EXPECT_EQ(page.maximum, maximum) << name;
        EXPECT_EQ(page.canScroll, canScroll) << name;
        EXPECT_FALSE(page.Holds(topLine - 1) || page.Holds(lastLine + 1)) << name;
        EXPECT_EQ(page.Holds(topLine) && page.Holds(lastLine), lines > 0) << name;
    }
}

TEST(PageAt, AnyFile_CountsPagesThatEnterTurns)
{
    // Top line, rows and lines; then page number, page count and top line of the last full page.
    const Rows<int, int, int, int, int, int> rows = {
        {1, 10, 9, 1, 1, 1},    {1, 10, 10, 1, 1, 1},  {10, 10, 10, 1, 1, 1},  {1, 10, 11, 1, 2, 2},
        {10, 10, 11, 2, 2, 2},  {1, 10, 19, 1, 2, 10}, {10, 10, 40, 2, 5, 31}, {40, 10, 40, 5, 5, 31},
        {12, 10, 40, 2, 5, 31}, {1, 1, 3, 1, 2, 3},    {3, 1, 3, 2, 2, 3},     {1, 10, 0, 1, 1, 1},
        {1, 1, 1, 1, 1, 1},
    };
    for (const auto &[topLine, height, lines, number, count, lastFullTop] : rows) {
        const DisplayText text = Text(QStringList(lines, u"-"_s));
        const PageInView page = Page(topLine, height, text);
        EXPECT_EQ(page.PageNumber(), number) << topLine << ' ' << lines;
        EXPECT_EQ(page.PageCount(), count) << topLine << ' ' << lines;
        EXPECT_EQ(lines == 0 ? 1 : TopShowing(lines, text, LayoutOf(height)), lastFullTop) << topLine << ' ' << lines;
    }
}

TEST(ScrollBarsFor, OneBarTakesSpace_OtherMayBecomeNecessary)
{
    // Lines and cells of the longest line; then the bars. Without bars, 20 cells and 10 rows are in view; a bar takes a
    // cell or a row.
    const PageLayout whole{.cellWidthPx = 10, .linePitchPx = 20, .widthPx = 210, .heightPx = 205};
    const Rows<int, int, NeededScrollBars> rows = {
        {9, 20, {}}, {10, 19, {true, false}}, {10, 20, {true, true}}, {8, 21, {false, true}}, {9, 21, {true, true}},
        {0, 0, {}},
    };
    for (const auto &[lines, cells, needed] : rows)
        EXPECT_EQ(ScrollBarsFor(Text(QStringList(lines, QString(cells, u'-'))), whole, 10), needed)
            << lines << ' ' << cells;
}

TEST(LeftCellShowing, AnyFirstCell_IsLeftmostViewThatHoldsTheCells)
{
    const Rows<CellRange, int> rows = {
        {{0, 20}, 0}, {{5, 9}, 0}, {{15, 21}, 1}, {{30, 50}, 30}, {{29, 33}, 13}, {{7, 60}, 7},
    };
    for (const auto &[cells, moved] : rows)
        for (const int leftCell : {0, 8, 30})
            EXPECT_EQ(LeftCellShowing(cells, {.cellWidthPx = 10, .widthPx = 210, .leftCell = leftCell}), moved)
                << leftCell << ' ' << cells.start;
}

TEST(RandomPage, HiddenAnswersElsewhere_DrawsAnotherPageWithOne)
{
    QStringList lines(100'000, u"-"_s);
    lines[0] = lines[4] = lines[49'999] = lines[99'999] = u"[x]"_s;
    const DisplayText text = Text(lines);
    QRandomGenerator random(1);
    StudyRound round = Round(4, 0);
    QMap<int, int> drawn;
    const PageInView first = Page(1, 11, text);
    for (int i = 0; i < 100; ++i)
        ++drawn[RandomPage(round, text, first, &random)];
    EXPECT_EQ(drawn.keys(), QList<int>({49'991, 99'991}));
    round = Round(4, 3);
    EXPECT_EQ(RandomPage(round, text, Page(99'995, 11, text), &random), 99'995) << "nothing is hidden elsewhere";
    EXPECT_EQ(RandomPage(Round(4, 4), text, first, &random), 0);
    EXPECT_EQ(RandomPage(Round(0, 0), DisplayText(), Page(1, 11, 0), &random), 0);

    // Too few are left to be found by chance, so the next one is searched for.
    const DisplayText many = Text(QStringList(100'000, u"[x]"_s));
    round = Round(100'000, 100'000);
    round.Toggle(12'345);
    EXPECT_EQ(RandomPage(round, many, Page(1, 11, many), &random), 12'341);
}

TEST(ClickTarget, Keys_VisitTargetsInReadingOrder)
{
    const DisplayText text = Text({u"above [x]"_s, u"[a] ｢図｣ [b｢c｣]"_s, u"none ｢｣"_s, u"｢x.y｣｢[漢]｣"_s, u"[below]"_s});
    const std::vector<TextSpan> targets = {{2, 1, 3}, {2, 5, 3}, {2, 9, 6}, {4, 7, 3}};
    EXPECT_EQ(TargetsInView(text, Page(2, 3, 5), false), targets) << "neither hidden text nor invalid picture names";
    const std::vector<TextSpan> words = {{3, 1, 4}, {4, 2, 1}, {4, 4, 1}, {4, 7, 3}};
    EXPECT_EQ(TargetsInView(text, Page(3, 2, 5), true), words);
}

TEST(ClickTarget, EachSpan_YieldsItsTarget)
{
    const DisplayText text = Text({u"[a]word｢図 b｣｢図｣[｢c｣]"_s, u"｢a｢b｣｣ ｢[x]y｣"_s});
    const StudyRound round = Round(3, 3);
    const Rows<const char *, TextSpan, ClickTarget> rows = {
        {"a blank", {1, 1, 3}, {.blank = 1}},
        {"a word beside it", {1, 4, 4}, {.word = u"word"_s}},
        {"a picture, and no blank", {1, 13, 3}, {.picture = u"図"_s}},
        {"a word in a reference", {1, 14, 1}, {.word = u"図"_s, .picture = u"図"_s}},
        {"an answer with a picture", {1, 16, 5}, {.blank = 2}},
        {"a nested reference", {2, 3, 3}, {.picture = u"b"_s}},
        {"no reference while an answer in it is shown", {2, 8, 6}, {}},
    };
    for (const auto &[name, span, target] : rows)
        EXPECT_EQ(TargetOf(text, round, span), target) << name;
    EXPECT_EQ(TargetInAnswer(text, round, 2), (ClickTarget{.word = u"｢c｣"_s, .picture = u"c"_s}));
    EXPECT_EQ(TargetInAnswer(text, Round(3, 1), 2), ClickTarget()) << "hidden";
}

TEST_F(StudySessionTest, FileRefused_LeavesRowAndNothingOpen)
{
    EXPECT_FALSE(session.HasBegun() || session.Page().IsFileOpen() || session.ClockTick());

    const QString good = folder.WriteStudyFile(u"good.txt"_s, {u"[a] ｢x.y｣"_s});
    const StudyReading read = session.Open(good);
    EXPECT_FALSE(read.refusal);
    EXPECT_EQ(read.badPictureNames, QStringList(u"x.y"_s));
    EXPECT_TRUE(session.ClockTick());
    EXPECT_TRUE(session.Page().Enter().isCounted);
    folder.WriteStudyFile(u"good.txt"_s, {u"[a]"_s, u"[b"_s});
    EXPECT_EQ(session.ReadAgain().refusal.line, 2);
    EXPECT_TRUE(session.Page().Round().AllShown() && session.ClockTick()) << "nothing has changed";
    EXPECT_TRUE(session.Complete().isEmpty());
    EXPECT_EQ(Row(u"file_name, num_answer"_s), u"good\t1"_s);

    services.now = services.now.addSecs(60);
    EXPECT_TRUE(session.Open(folder.WriteStudyFile(u"bad.txt"_s, {u"["_s})).refusal);
    EXPECT_FALSE(session.Page().IsFileOpen() || session.ClockTick());
    EXPECT_EQ(session.Page().Text().LineCount() + session.Page().Round().lngOpenCount(), 0);
    session.Complete();
    EXPECT_EQ(Row(u"file_name, num_answer"_s), u"bad\t0"_s);
}

TEST_F(StudySessionTest, Resume_ShowsWhatWasShownUnlessFileChanged)
{
    const QStringList lines(200, u"[x] [y]"_s);
    const QString path = folder.WriteStudyFile(u"a.txt"_s, lines);
    const StudyPage &page = session.Page();
    const auto shown = [&page] {
        QList<int> blanks;
        for (int blank = 1; blank <= page.Round().BlankCount(); ++blank)
            if (page.Round().bolOpen(blank))
                blanks += blank;
        return blanks;
    };
    EXPECT_FALSE(session.Page().SetLayout(Layout).isCounted);
    ASSERT_FALSE(session.Open(path).refusal);
    EXPECT_FALSE(session.Resume().isPageChanged) << "never studied before";
    EXPECT_TRUE(session.Page().Enter().isCounted);
    EXPECT_TRUE(session.Page().MoveToLine(120).isPageChanged);
    EXPECT_TRUE(session.Page().Enter().isCounted);
    EXPECT_TRUE(session.Page().Enter().isCounted);
    EXPECT_EQ(session.Page().ToggleHard(1).markedBlank, 1);
    const QList<int> before = {1, 239, 240};
    for (int times = 0; times < 2; ++times) {
        EXPECT_TRUE(session.Complete().isEmpty());
        ASSERT_FALSE(session.Open(path).refusal);
        EXPECT_EQ(shown(), QList<int>());
    }
    const PageChange resumed = session.Resume();
    EXPECT_TRUE(resumed.isPageChanged && !resumed.isCounted);
    EXPECT_EQ(resumed.notice, u"前回の正解を表示しました"_s);
    EXPECT_EQ(page.TopLine(), 120);
    EXPECT_EQ(page.OfferedLine(), 0);
    EXPECT_EQ(shown(), before);
    EXPECT_EQ(page.Round().lngOpenCount() + page.Round().LastShown(), 0);
    EXPECT_TRUE(session.Page().Undo().isPageChanged);
    EXPECT_EQ(shown(), QList<int>());
    EXPECT_EQ(page.TopLine(), 1);
    EXPECT_TRUE(session.Resume().notice);
    EXPECT_TRUE(session.Page().Enter().isCounted) << "goes on after them";
    EXPECT_EQ(shown(), before + QList<int>{241});
    EXPECT_TRUE(session.Page().MoveToLine(1).isPageChanged);
    EXPECT_FALSE(session.Resume().notice) << "an answer was shown: only the line";
    EXPECT_EQ(page.TopLine(), 121);
    EXPECT_EQ(shown(), before + QList<int>{241});

    EXPECT_TRUE(session.Complete().isEmpty());
    ASSERT_FALSE(session.Open(path).refusal);
    EXPECT_TRUE(session.Page().StudyOnlyHard(true).isPageChanged);
    EXPECT_FALSE(session.Resume().notice) << "not among hard blanks only";
    EXPECT_EQ(page.TopLine(), 121);
    for (const bool isReadAgain : {false, true}) {
        ASSERT_FALSE(session.Open(path).refusal);
        folder.WriteStudyFile(u"a.txt"_s, QStringList(200, u"[x] [z]"_s));
        ASSERT_FALSE((isReadAgain ? session.ReadAgain() : session.Open(path)).refusal);
        EXPECT_FALSE(session.Resume().notice) << "another file of the same size";
        EXPECT_EQ(page.TopLine(), 121);
        EXPECT_TRUE(session.Complete().isEmpty());
        folder.WriteStudyFile(u"a.txt"_s, lines);
    }
    ASSERT_FALSE(session.Open(path).refusal);
    EXPECT_TRUE(session.Resume().notice) << "kept as no other answer was shown";
    EXPECT_EQ(shown(), before + QList<int>{241});
}

TEST_F(StudySessionTest, AnswersShownOnlyAmongHardBlanks_KeepWhatWasShownBefore)
{
    const QString path = folder.WriteStudyFile(u"a.txt"_s, QStringList(200, u"[x] [y]"_s));
    StudyPage &page = session.Page();
    ASSERT_FALSE(session.Open(path).refusal);
    EXPECT_TRUE(page.Enter().isCounted && page.Enter().isCounted);
    EXPECT_EQ(page.ToggleHard(240).markedBlank, 240);
    EXPECT_TRUE(session.Complete().isEmpty());

    ASSERT_FALSE(session.Open(path).refusal);
    EXPECT_TRUE(page.StudyOnlyHard(true).isPageChanged);
    EXPECT_TRUE(page.Click({.blank = 240}).isCounted);
    EXPECT_TRUE(session.Complete().isEmpty());
    ASSERT_FALSE(session.Open(path).refusal);
    EXPECT_TRUE(session.Resume().notice);
    EXPECT_TRUE(page.Round().bolOpen(1) && page.Round().bolOpen(2));
    EXPECT_EQ(page.Round().ShownCount(), 2);

    EXPECT_TRUE(page.Click({.blank = 3}).isCounted);
    EXPECT_TRUE(page.HideAll().isPageChanged);
    EXPECT_TRUE(session.Complete().isEmpty());
    ASSERT_FALSE(session.Open(path).refusal);
    EXPECT_FALSE(session.Resume().notice) << "all were hidden after another one was shown";
}

TEST_F(StudySessionTest, MoreRangesThanAreKept_LeaveOnlyTheLine)
{
    const QString path = folder.WriteStudyFile(u"a.txt"_s, QStringList(2001, u"[x] [y]"_s));
    for (const int ranges : {2000, 2001}) {
        ASSERT_FALSE(session.Open(path).refusal);
        for (int line = 1; line <= ranges; ++line)
            EXPECT_TRUE(session.Page().Click({.blank = 2 * line}).isCounted);
        EXPECT_TRUE(session.Complete().isEmpty());
        ASSERT_FALSE(session.Open(path).refusal);
        EXPECT_TRUE(session.Resume().isPageChanged);
        EXPECT_EQ(session.Page().Round().ShownCount(), ranges == 2000 ? 2000 : 0);
    }
}

TEST_F(StudySessionTest, LineEditedAndReadAgain_KeepsItsMarkForTheOldText)
{
    const QStringList lines = {u"[a]"_s, u"[b]"_s};
    const QString path = folder.WriteStudyFile(u"a.txt"_s, lines);
    ASSERT_FALSE(session.Open(path).refusal);
    EXPECT_EQ(session.Page().ToggleHard(1).markedBlank, 1);
    folder.WriteStudyFile(u"a.txt"_s, {u"[edited]"_s, u"[b]"_s});
    ASSERT_FALSE(session.ReadAgain().refusal) << "before the mark was saved";
    EXPECT_EQ(session.Page().Round().HardCount(), 0);
    EXPECT_EQ(session.Page().ToggleHard(2).markedBlank, 2);
    EXPECT_FALSE(session.KeepMarks());
    const QByteArray both = u"花子\ta\t[a]\t1\r\n花子\ta\t[b]\t1\r\n"_s.toUtf8();
    EXPECT_EQ(folder.Read(u"ListMark.txt"_s), both);
    folder.WriteStudyFile(u"a.txt"_s, lines);
    ASSERT_FALSE(session.ReadAgain().refusal);
    EXPECT_EQ(session.Page().Round().HardBlanks(), std::vector<int>({1, 2})) << "the line is as it was";

    QFile::remove(folder.Path(u"ListMark.txt"_s));
    folder.MakeFolder(u"ListMark.txt"_s); // in the way of the list
    EXPECT_EQ(session.Page().ToggleHard(1).markedBlank, 1);
    ASSERT_FALSE(session.ReadAgain().refusal);
    EXPECT_EQ(session.Page().Round().HardBlanks(), std::vector<int>({2})) << "those on the page, if none can be saved";
}

TEST_F(StudySessionTest, HardNote_MarksItsSourcesAndKeepsNoPlace)
{
    const QString a = folder.WriteStudyFile(u"txt/a.txt"_s, {u"[a1] [a2]"_s, u"x"_s, u"[a3]"_s});
    const QString own = folder.WriteStudyFile(u"txt/苦手帳.txt"_s, {u"[own]"_s});
    ASSERT_FALSE(session.Open(a).refusal);
    EXPECT_EQ(session.Page().ToggleHard(2).markedBlank, 2);
    EXPECT_EQ(session.Page().ToggleHard(3).markedBlank, 3);
    EXPECT_TRUE(session.Complete().isEmpty());
    ASSERT_FALSE(session.Open(own).refusal);
    EXPECT_EQ(session.Page().ToggleHard(1).markedBlank, 1);
    EXPECT_TRUE(session.Complete().isEmpty());
    const QByteArray ownMark = u"花子\t苦手帳\t[own]\t1\r\n"_s.toUtf8();
    const QByteArray places = folder.Read(u"ListPlace.txt"_s);
    folder.MakeFolder(u"rec"_s);
    const QString path = HardNotePath(folder.Path(u"rec"_s));
    const auto made = [&] {
        HardNote note(session.Marks(), {a, own});
        note.GoOn(QDeadlineTimer(QDeadlineTimer::Forever));
        EXPECT_FALSE(note.Write(path));
        return note;
    };
    services.now = services.now.addSecs(60);
    HardNote note = made();
    ASSERT_FALSE(session.Open(path, note).refusal);
    EXPECT_TRUE(session.IsHardNote());
    const StudyRound &round = session.Page().Round();
    EXPECT_EQ(round.HardBlanks(), std::vector<int>({1, 2, 3}));
    EXPECT_EQ(session.SourceOf(3).path, a);
    EXPECT_EQ(session.SourceOf(3).line, 3);

    // The first blank is known by now; the second is taken off by mistake.
    EXPECT_TRUE(session.Page().Click({.blank = 3}).isCounted);
    EXPECT_EQ(session.Page().ToggleHard(1).markedBlank, 1);
    EXPECT_EQ(session.Page().ToggleHard(2).markedBlank, 2);
    EXPECT_FALSE(session.KeepMarks());
    EXPECT_EQ(folder.Read(u"ListMark.txt"_s), ownMark);
    EXPECT_EQ(session.Page().ToggleHard(2).markedBlank, 2);
    EXPECT_FALSE(session.KeepMarks());
    EXPECT_EQ(folder.Read(u"ListMark.txt"_s), ownMark + u"花子\ta\t[a3]\t1\r\n"_s.toUtf8());

    note = made();
    ASSERT_FALSE(session.ReadAgain(note).refusal);
    EXPECT_EQ(round.HardBlanks(), std::vector<int>({1, 2}));
    EXPECT_TRUE(!round.bolOpen(1) && round.bolOpen(2)) << "the answer shown is still that of the same blank";
    EXPECT_EQ(session.SourceOf(2).line, 3);
    EXPECT_TRUE(session.Complete().isEmpty());
    EXPECT_EQ(Row(u"file_name, num_answer"_s), u"苦手帳\t1"_s);
    EXPECT_EQ(folder.Read(u"ListPlace.txt"_s), places);
    ASSERT_FALSE(session.Open(own).refusal);
    EXPECT_FALSE(session.IsHardNote());
    EXPECT_EQ(session.SourceOf(1).path, own);
    EXPECT_EQ(round.HardBlanks(), std::vector<int>({1}));
}

// Somebody else has written the file meanwhile.
TEST_F(StudySessionTest, HardNoteWithOtherBlanksThanMade_MarksNothingElse)
{
    const QString a = folder.WriteStudyFile(u"txt/a.txt"_s, {u"[a1] [a2]"_s});
    ASSERT_FALSE(session.Open(a).refusal);
    EXPECT_EQ(session.Page().ToggleHard(1).markedBlank, 1);
    EXPECT_TRUE(session.Complete().isEmpty());
    const QByteArray list = folder.Read(u"ListMark.txt"_s);
    HardNote note(session.Marks(), {a});
    EXPECT_FALSE(note.GoOn(QDeadlineTimer(QDeadlineTimer::Forever)));
    for (const QStringList &lines : {QStringList(u"[x] [y]"_s), QStringList(u"none"_s)}) {
        ASSERT_FALSE(session.Open(folder.WriteStudyFile(u"rec/苦手帳.txt"_s, lines), note).refusal);
        for (int blank = 1; blank <= session.Page().Round().BlankCount(); ++blank)
            EXPECT_EQ(session.Page().ToggleHard(blank).markedBlank, blank);
        EXPECT_EQ(session.SourceOf(100).path, session.Path());
        EXPECT_TRUE(session.Complete().isEmpty());
        EXPECT_EQ(folder.Read(u"ListMark.txt"_s), lines[0] == u"none" ? list : QByteArray());
        folder.Write(u"ListMark.txt"_s, list);
    }
}

TEST_F(StudySessionTest, ControlCharactersInName_BecomeBlanksInRow)
{
    // Windows can have no such file; the row is inserted before the file is looked for.
    EXPECT_TRUE(session.Open(folder.Path(u"a\tb\n\x1B\x7F\x85　c\u2028\u202Ed.txt"_s)).refusal);
    session.Complete();
    EXPECT_EQ(Row(u"file_name, num_answer"_s), u"a b    　c  d\t0"_s);
}

TEST_F(StudySessionTest, MinutePassed_AnswersSoFarAreOnDisk)
{
    ASSERT_FALSE(session.Open(folder.WriteStudyFile(u"a.txt"_s, {u"[a] [b] [c] [d] [e]"_s})).refusal);
    // Seconds that pass, answers shown meanwhile and whether the table is missing; then the row.
    const Rows<const char *, int, int, bool, QString> ticks = {
        {"no answer", 120, 0, false, u"\t"_s},
        {"first answer after the minute", 0, 1, false, u"2024/03/05 14:32:15\t1"_s},
        {"another within the minute", 59, 1, false, u"2024/03/05 14:32:15\t1"_s},
        {"after the minute", 1, 0, false, u"2024/03/05 14:33:15\t2"_s},
        {"no more answers", 600, 0, false, u"2024/03/05 14:33:15\t2"_s},
        {"fault", 0, 1, true, u"2024/03/05 14:33:15\t2"_s},
        {"within a minute of the fault", 59, 0, false, u"2024/03/05 14:33:15\t2"_s},
        {"a minute after the fault", 1, 0, false, u"2024/03/05 14:44:15\t3"_s},
        {"clock set back", -3600, 1, false, u"2024/03/05 13:44:15\t4"_s},
    };
    for (const auto &[name, seconds, answers, isFaulty, row] : ticks) {
        services.now = services.now.addSecs(seconds);
        for (int i = 0; i < answers; ++i)
            EXPECT_TRUE(session.Page().Enter().isCounted);
        if (isFaulty)
            database.SQLite3NonQuery(u"alter table t_kotoban rename to another"_s);
        session.CompleteSoFarWhenDue();
        if (isFaulty)
            database.SQLite3NonQuery(u"alter table another rename to t_kotoban"_s);
        EXPECT_EQ(Row(u"dt_end, num_answer"_s), row) << name;
    }
    EXPECT_TRUE(services.messages.isEmpty());
    EXPECT_EQ(session.Page().ToggleHard(1).markedBlank, 1);
    EXPECT_TRUE(session.Page().Enter().isCounted);
    session.CompleteSoFar();
    EXPECT_EQ(folder.Read(u"ListMark.txt"_s) + folder.Read(u"ListPlace.txt"_s), "(no file)(no file)");
}

TEST(ClockTick, EveryTick_ShowsStepsOfTenSeconds)
{
    const QDateTime start(QDate(2024, 3, 5), QTime(10, 0));
    const auto shown = [&start](int seconds) {
        const auto time = ClockTick(start, start.addSecs(seconds)).value_or(ElapsedTime{-1, -1});
        return std::pair(time.minutes, time.seconds);
    };
    // Seconds since the start; then minutes and seconds shown, -1 if nothing changes.
    const Rows<int, int, int> rows = {{0, 0, 0},   {9, -1, -1},  {10, 0, 10},    {60, 1, 0},
                                      {70, 1, 10}, {75, -1, -1}, {7200, 120, 0}, {-10, -1, -1}};
    for (const auto &[seconds, minutesShown, secondsShown] : rows)
        EXPECT_EQ(shown(seconds), std::pair(qint64(minutesShown), qint64(secondsShown))) << seconds;
    EXPECT_TRUE(ClockTick(start.addMSecs(900), start.addMSecs(10'100)).has_value()) << "whole seconds count";
    const QDateTime beforeSummerTime(QDate(2024, 3, 31), QTime(1, 59), QTimeZone("Europe/Berlin"));
    EXPECT_EQ(ClockTick(beforeSummerTime, beforeSummerTime.addSecs(120))->minutes, 2) << "not 62";
}

TEST(ClickTarget, AnyClick_NeverYieldsHiddenText)
{
    const DisplayText text =
        Text({u"don't stop [hidden] now"_s, u"[shown]漢字かなカナー12"_s, u"人々 ｢図｣ ｢[x]y｣ [｢z｣]"_s});
    StudyRound round = Round(4, 0);
    round.Toggle(2);
    // Cell and line; then the target.
    const Rows<int, int, ClickTarget> rows = {
        {2, 1, {.word = u"don't"_s}},
        {8, 1, {.word = u"stop"_s}},
        {5, 1, {}}, // between words
        {14, 1, {.blank = 1}},
        {20, 1, {.word = u"now"_s}},
        {40, 1, {}}, // past the end of the line
        {3, 2, {.blank = 2}},
        {8, 2, {.word = u"漢字"_s}},
        {12, 2, {.word = u"かな"_s}},
        {19, 2, {.word = u"カナー"_s}},
        {22, 2, {.word = u"12"_s}},
        {0, 3, {.word = u"人々"_s}},
        {2, 3, {.word = u"人々"_s}},
        {5, 3, {.picture = u"図"_s}},
        {6, 3, {.word = u"図"_s, .picture = u"図"_s}},
        {14, 3, {.word = u"y"_s, .picture = u"y"_s}},
        {19, 3, {.blank = 4}},
        {3, 4, {}}, // below the last line
        {-3, 2, {.numberedLine = 2}},
        {-3, 4, {.numberedLine = 4}}, // the strip continues below the last line
    };
    for (const auto &[cell, line, target] : rows)
        EXPECT_EQ(At(text, round, Layout.TextLeftPx() + cell * 10 + 5, Layout.RowTopPx(line) + 8, Layout), target)
            << cell << ' ' << line;
    EXPECT_EQ(At(text, round, 65, 3, Layout), ClickTarget()) << "the top margin";
    PageLayout cut = Layout;
    cut.heightPx = Layout.RowTopPx(2) + 10;
    cut.leftCell = 8;
    EXPECT_EQ(At(text, round, 65, Layout.RowTopPx(2) + 3, cut), ClickTarget()) << "a row that is cut off";
    EXPECT_EQ(At(text, round, 65, Layout.RowTopPx(1) + 3, cut).word, u"stop"_s)
        << "counted from the first cell in view";
    EXPECT_EQ(At(text, round, 20, 3, Layout).numberedLine, 1) << "the top margin belongs to the first row's number";
    round.Toggle(3);
    EXPECT_EQ(At(text, round, Layout.TextLeftPx() + 145, 45, Layout), (ClickTarget{.word = u"y"_s}))
        << "a name with an answer in it is not a picture name";
}
