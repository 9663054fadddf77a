// SPDX-FileCopyrightText: 2026 The Kotoban developers
// SPDX-License-Identifier: MIT

// Where lines wrap: where their rows begin, what is in view, what a click hits, and what Enter and page turns bring.
#include "study/modPageText.h"
#include "support/Rows.h"
#include "support/StudyText.h"

#include <gtest/gtest.h>

using namespace Qt::Literals::StringLiterals;

namespace {

/// Cells of ten pixels, rows of twenty, with line numbers: the text begins at 60.
PageLayout LayoutOf(int cells, int rows = 5)
{
    return {.cellWidthPx = 10,
            .linePitchPx = 20,
            .widthPx = 65 + 10 * cells,
            .heightPx = PageLayout::TopMarginPx + 20 * rows,
            .hasLineNumbers = true,
            .isWrapping = true};
}

/// The rows of a line, each with its brackets and | after it.
QString RowsIn(const QString &line, int cells)
{
    const DisplayText text(LinesOf({line, QString(cells + 1, u'-')})); // the last one makes it wrap
    QString parted;
    int cell = 0;
    size_t row = 0;
    const std::vector<PageRow> rows = RowsOf(1, text, LayoutOf(cells));
    for (const QChar character : line) {
        if (cell == rows[row].cells.end) {
            EXPECT_EQ(rows[++row].cells.start, cell);
            parted += u'|';
        }
        parted += character;
        cell += CellsOf(character);
    }
    EXPECT_EQ(rows.size(), row + 1);
    EXPECT_EQ(rows.back().cells.end, cell);
    return parted;
}

/// Lines that take so many rows of ten cells, without a blank.
QStringList LinesOfRows(const std::vector<int> &counts)
{
    QStringList lines;
    for (const int count : counts)
        lines += QString(qsizetype(5) * count, u'あ');
    return lines;
}

class WrappedPage : public StudyPage
{
  public:
    explicit WrappedPage(const QStringList &lines, int cells = 10, int rows = 5)
    {
        Load(DisplayText(LinesOf(lines)), {}, 0);
        std::ignore = SetLayout(LayoutOf(cells, rows));
    }

    /// The rows in view, as line:first cell, and the answers in order, x for shown and - for hidden.
    QString State() const
    {
        QString state;
        for (const PageRow &row : InView().rows)
            state += u"%1:%2 "_s.arg(row.line).arg(row.cells.start);
        for (int blank = 1; blank <= Round().BlankCount(); ++blank)
            state += Round().bolOpen(blank) ? u'x' : u'-';
        return state.trimmed();
    }
};

} // namespace

TEST(PageRows, LineWiderThanPage_IsBrokenWhereItReadsBest)
{
    const Rows<const char *, int, QString> rows = {
        {"after a blank space", 12, u"alpha beta |gamma"_s},
        {"after a full-width one", 12, u"あいうえ　|おかき"_s},
        {"after 、", 12, u"あいうえ、|おかき"_s},
        {"after 。", 12, u"あいうえ。|おかき"_s},
        {"after ，", 12, u"あいうえ，|おかき"_s},
        {"after ．", 12, u"あいうえ．|おかき"_s},
        {"the last of several", 12, u"あいう、い、|おか、き"_s},
        {"a 、 so early that the row would be short", 12, u"あい、うえお|かき"_s},
        {"anywhere, full", 12, u"あいうえおか|きくけこさし|す"_s},
        {"anywhere, not within a character", 11, u"あいうえお|かき"_s},
        {"a word stays whole, however short the row", 12, u"ab |characters"_s},
        {"a word beside full-width characters", 12, u"あいう|internal"_s},
        {"a word wider than a row", 6, u"abcdef|ghij"_s},
        {"no row begins with 。", 12, u"あいうえお|か。き"_s},
        {"nor with ）", 12, u"（いうえお|か）き"_s},
        {"nor with a blank space", 7, u"abc |def gh"_s},
        {"unless there is no other place", 6, u"abcdef| gh"_s},
        {"as wide as a row", 12, u"あいうえおか"_s},
        {"empty", 12, QString()},
        {"a blank that fits", 12, u"あいう[えお]|かき"_s},
        {"a blank that does not fit moves whole", 12, u"あいうえ|[おか]き"_s},
        {"a blank as wide as a row", 12, u"あ|[いうえおか]|き"_s},
        {"nothing in a blank breaks it", 12, u"あい|[a b、c d]い"_s},
        {"a blank wider than a row", 6, u"あ|[いう|えおか|]き"_s},
        {"a blank before 。", 12, u"あい|[うえおか]。"_s},
        {"a blank as wide as a row before 。", 12, u"あ|[いうえおか]|。き"_s},
        {"empty blanks", 4, u"[][]|[]"_s},
        {"a page narrower than a character", 1, u"あ|い|a|b"_s},
    };
    for (const auto &[name, cells, parted] : rows)
        EXPECT_EQ(RowsIn(QString(parted).remove(u'|'), cells), parted) << name;
}

TEST(PageRows, NothingTooWideOrNoWrapping_HasOneRowForEachLine)
{
    const DisplayText text(LinesOf({u"あいうえお"_s, u"a"_s}));
    PageLayout sideways = LayoutOf(9);
    sideways.isWrapping = false;
    for (const PageLayout &layout : {LayoutOf(10), sideways}) {
        const PageInView page = PageAt(1, text, layout);
        EXPECT_FALSE(page.isWrapped);
        EXPECT_EQ(page.rows, std::vector<PageRow>({{1, {0, 10}}, {2, {0, 10}}}));
    }
    EXPECT_TRUE(PageAt(2, text, LayoutOf(9)).isWrapped) << "the file wraps, even if no line in view does";
}

TEST(PageRows, AnyTopLine_CountsLinesThatAreWholeInView)
{
    // Rows of each line, rows of the page and top line; then the last line whole and shown, what a page turn advances,
    // whether it is the end and the largest top line.
    const Rows<const char *, std::vector<int>, int, int, int, int, int, bool, int> rows = {
        {"the last line is cut off", {1, 3, 3, 1}, 5, 1, 2, 3, 1, false, 4},
        {"only one fits whole", {1, 3, 3, 1}, 5, 2, 2, 3, 1, false, 4},
        {"the end", {1, 3, 3, 1}, 5, 3, 4, 4, 1, true, 4},
        {"three lines fit exactly", {1, 1, 3, 1, 1, 1}, 5, 1, 3, 3, 2, false, 6},
        {"a line higher than the page", {1, 7, 1}, 5, 2, 2, 2, 1, false, 3},
        {"before the last line", {2, 2, 2}, 3, 2, 2, 3, 1, false, 3},
        {"a page of one row", {2, 2}, 1, 1, 1, 1, 1, false, 2},
        {"the last line, higher than the page", {2, 2}, 1, 2, 2, 2, 1, true, 2},
        {"all fits with a row to spare", {1, 3}, 5, 2, 2, 2, 1, true, 1},
        {"all fits exactly", {2, 3}, 5, 1, 2, 2, 1, true, 2},
    };
    for (const auto &[name, counts, height, topLine, lastLine, lastShown, pageSize, isAtEnd, maximum] : rows) {
        const DisplayText text(LinesOf(LinesOfRows(counts)));
        const PageInView page = PageAt(topLine, text, LayoutOf(10, height));
        EXPECT_EQ(page.lastLine, lastLine) << name;
        EXPECT_EQ(page.LastShownLine(), lastShown) << name;
        EXPECT_TRUE(page.Holds(lastLine) && !page.Holds(lastLine + 1) && page.Shows(lastShown)) << name;
        EXPECT_EQ(page.pageSize, pageSize) << name;
        EXPECT_EQ(page.IsAtEnd(), isAtEnd) << name;
        EXPECT_EQ(page.maximum, maximum) << name;
        EXPECT_EQ(page.canScroll, maximum > 1) << name;
    }
}

TEST(PageRows, PageTurns_BringLastWholeLineToTop)
{
    WrappedPage page(LinesOfRows({1, 1, 2, 3, 1, 7, 1, 1, 1, 1, 1, 1}));
    std::vector<int> tops;
    for (int i = 0; i < 8; ++i) {
        tops.push_back(page.TopLine());
        EXPECT_TRUE(page.Enter().isPageChanged);
    }
    EXPECT_EQ(tops, std::vector<int>({1, 3, 4, 5, 6, 7, 11, 1})) << "Enter in a file without blanks";
    tops.clear();
    EXPECT_TRUE(page.MoveToEnd().isPageChanged);
    while (page.TopLine() > 1) {
        tops.push_back(page.TopLine());
        EXPECT_TRUE(page.MoveToPreviousPage().isPageChanged);
    }
    EXPECT_EQ(tops, std::vector<int>({8, 7, 6, 5, 4, 3})) << "the top line becomes the last one, if it is not alone";
}

TEST(PageRows, LastLineAloneOnPage_NextRoundBeginsAtFirst)
{
    const QString line = u"[a]-------"_s + QString(20, u'-');
    WrappedPage page({line, line, line});
    for (const auto &state : {u"1x--"_s, u"2x--"_s, u"2xx-"_s, u"3xx-"_s, u"3xxx"_s, u"1---"_s, u"1x--"_s}) {
        std::ignore = page.Enter();
        EXPECT_EQ(page.State().section(u':', 0, 0) + page.State().section(u' ', -1), state);
    }

    WrappedPage skipped({line, line, QString(30, u'-')});
    EXPECT_TRUE(skipped.Enter().isCounted && skipped.MoveToEnd().isPageChanged);
    EXPECT_TRUE(skipped.Enter().isPageChanged);
    EXPECT_EQ(skipped.State(), u"1:0 1:10 1:20 2:0 2:10 --"_s) << "the last blank is hidden, but not in view";
}

TEST(PageRows, LineHigherThanPage_IsReadThenOpened)
{
    const QString high = u"-[a]------"_s + u"------[b]-"_s + u"---[c][d]-"_s + u"[e]-------"_s + u"-----[f]--"_s;
    WrappedPage page({u"-"_s, high, u"[g]"_s}, 10, 2);
    // Enter, up or down; then what is in view.
    const Rows<char, QString> steps = {
        {'E', u"2:0 2:10 -------"_s}, // a page turn
        {'E', u"2:0 2:10 x------"_s},  {'E', u"2:0 2:10 xx-----"_s},
        {'E', u"2:10 2:20 xx-----"_s}, // the answer comes into view before it is opened
        {'E', u"2:10 2:20 xxx----"_s}, {'E', u"2:10 2:20 xxxx---"_s},
        {'E', u"2:20 2:30 xxxx---"_s}, {'E', u"2:20 2:30 xxxxx--"_s},
        {'U', u"2:10 2:20 xxxxx--"_s}, {'U', u"2:0 2:10 xxxxx--"_s},
        {'U', u"1:0 2:0 xxxxx--"_s},   {'D', u"2:0 2:10 xxxxx--"_s},
        {'E', u"2:30 2:40 xxxxx--"_s}, {'D', u"3:0 xxxxx--"_s},
        {'E', u"3:0 xxxxx-x"_s},
    };
    int number = 0;
    for (const auto &[command, state] : steps) {
        ++number;
        const PageChange change = command == 'E'   ? page.Enter()
                                  : command == 'U' ? page.MoveBySteps(-1)
                                                   : page.MoveBySteps(1);
        EXPECT_TRUE(change.isPageChanged || change.isCounted) << number;
        EXPECT_EQ(page.State(), state) << number;
    }
}

TEST(PageRows, LineHigherThanPage_StaysWhereItIsRead)
{
    WrappedPage page({QString(50, u'-') + u"[a]"_s, u"-"_s}, 10, 2);
    EXPECT_TRUE(page.Enter().isPageChanged);
    EXPECT_EQ(page.State(), u"1:40 1:50 -"_s);
    std::ignore = page.SetLayout(LayoutOf(20, 2));
    EXPECT_EQ(page.State(), u"1:20 1:40 -"_s) << "wider: the page stays full";
    std::ignore = page.SetLayout(LayoutOf(10, 2));
    EXPECT_EQ(page.State(), u"1:20 1:30 -"_s);
    page.Reload(DisplayText(page.Text()), {});
    EXPECT_EQ(page.State(), u"1:20 1:30 -"_s);
    EXPECT_TRUE(page.MoveToLine(1).isPageChanged);
    EXPECT_EQ(page.State(), u"1:0 1:10 -"_s) << "its beginning";

    // Whatever is shown or clicked comes into view.
    EXPECT_TRUE(page.GoToTarget(false, false).isPageChanged);
    EXPECT_EQ(page.State(), u"1:40 1:50 -"_s);
    EXPECT_TRUE(page.MoveToLine(1).isPageChanged && page.ShowFound({1, 45, 2}).isPageChanged);
    EXPECT_EQ(page.State(), u"1:30 1:40 -"_s);
    EXPECT_TRUE(page.GoToTarget(false, false).isPageChanged);
    for (int i = 0; i < 3; ++i)
        EXPECT_TRUE(page.MoveBySteps(-1).isPageChanged);
    EXPECT_TRUE(page.ClickCurrent().isPageChanged);
    EXPECT_EQ(page.State(), u"1:40 1:50 x"_s);
}

TEST(PageRows, Wheel_PassesOverNothing)
{
    // Rows of each line; then the first row in view after each notch of three steps.
    const Rows<const char *, std::vector<int>, QStringList> rows = {
        {"lines higher than the page", {8, 6, 1, 1}, {u"1:30"_s, u"2:0"_s, u"2:10"_s, u"3:0"_s, u"4:0"_s, u"4:0"_s}},
        {"one line and a half", {3, 3, 3}, {u"2:0"_s, u"3:0"_s, u"3:0"_s}},
        {"three lines", {2, 1, 2, 1, 1, 1, 1, 1, 1, 1}, {u"3:0"_s, u"6:0"_s, u"9:0"_s}},
    };
    for (const auto &[name, counts, tops] : rows) {
        WrappedPage page(LinesOfRows(counts));
        QStringList seen;
        for (int i = 0; i < tops.size(); ++i) {
            std::ignore = page.MoveBySteps(3);
            seen += page.State().section(u' ', 0, 0);
        }
        EXPECT_EQ(seen, tops) << name;
    }
}

TEST(PageRows, KeyForWholeLine_ShowsOnlyWhatIsInView)
{
    WrappedPage page({u"-[a]------"_s + u"----------"_s + u"-[b]---[c]"_s + u"-[d]------"_s, u"[e]"_s}, 10, 2);
    // The key, Enter or the wheel; then what is in view.
    const Rows<char, QString> steps = {
        {'L', u"1:0 1:10 x----"_s},  {'L', u"1:0 1:10 -----"_s},  {'L', u"1:0 1:10 x----"_s},
        {'E', u"1:10 1:20 x----"_s}, {'E', u"1:10 1:20 xx---"_s}, {'L', u"1:10 1:20 xxx--"_s},
        {'D', u"1:20 1:30 xxx--"_s}, {'L', u"1:20 1:30 xxxx-"_s}, {'L', u"1:20 1:30 x----"_s},
        {'U', u"1:10 1:20 x----"_s}, {'U', u"1:0 1:10 x----"_s},  {'L', u"1:10 1:20 xxx--"_s},
    };
    int number = 0;
    for (const auto &[command, state] : steps) {
        ++number;
        std::ignore = command == 'E'   ? page.Enter()
                      : command == 'L' ? page.ToggleWholeLine()
                                       : page.MoveBySteps(command == 'D' ? 1 : -1);
        EXPECT_EQ(page.State(), state) << number;
    }

    WrappedPage oneRow({u"[ああああああああ]-"_s, u"-"_s}, 10, 1);
    for (const auto *const state : {u"1:0 x", u"1:0 -", u"1:0 x"}) {
        EXPECT_FALSE(oneRow.ToggleWholeLine().answers.empty());
        EXPECT_EQ(oneRow.State(), QStringView(state)) << "a blank higher than the page";
    }
}

TEST(PageRows, ClickOnPartOfBlank_BringsRestIntoView)
{
    WrappedPage high({u"-[ああああああああ]-------------------------"_s}, 10, 2);
    EXPECT_TRUE(high.MoveBySteps(2).isPageChanged);
    EXPECT_TRUE(high.Click(high.TargetAt(70, 10)).isPageChanged);
    EXPECT_EQ(high.State(), u"1:1 1:10 x"_s);

    WrappedPage page({u"-"_s, u"-"_s, u"[ああああああああ]"_s, u"-"_s, u"-"_s}, 10, 3);
    const PageChange shown = page.Click(page.TargetAt(80, 50));
    EXPECT_TRUE(shown.isPageChanged && shown.isCounted);
    EXPECT_EQ(page.State(), u"2:0 3:0 3:9 x"_s) << "cut off below";
    EXPECT_TRUE(page.MoveToLine(1).isPageChanged);
    EXPECT_FALSE(page.Click(page.TargetAt(80, 50)).isPageChanged) << "hidden again";
    EXPECT_EQ(page.State(), u"1:0 2:0 3:0 -"_s);
}

TEST(PageRows, ResizedAndZoomed_TopLineStays)
{
    WrappedPage page(LinesOfRows({3, 1, 4, 2, 2, 5, 1, 1, 3, 2, 2, 1}) + QStringList(u"[last]"_s), 10, 6);
    EXPECT_TRUE(page.MoveToLine(6).isPageChanged);
    for (const auto &[cells, rows] : {std::pair(7, 6), {10, 2}, {60, 6}, {3, 1}, {33, 4}, {10, 6}}) {
        std::ignore = page.SetLayout(LayoutOf(cells, rows));
        EXPECT_EQ(page.TopLine(), 6) << cells << ' ' << rows;
        EXPECT_EQ(page.InView().TopCell(), 0) << cells << ' ' << rows;
        EXPECT_EQ(page.LargestLeftCell(), 0) << "nothing is beside the page";
    }
    std::ignore = page.SetLayout(LayoutOf(60, 40));
    EXPECT_EQ(page.TopLine(), 1) << "all lines fit";
    for (const auto &[cells, rows] : {std::pair(60, 6), {60, 40}, {60, 6}, {60, 39}})
        std::ignore = page.SetLayout(LayoutOf(cells, rows)); // where nothing wraps
    EXPECT_TRUE(page.SetLayout(LayoutOf(10, 6)).isPageChanged);
    EXPECT_EQ(page.TopLine(), 6);
    std::ignore = page.SetLayout(LayoutOf(60, 40));
    EXPECT_TRUE(page.Click({.blank = 1}).isCounted);
    std::ignore = page.SetLayout(LayoutOf(10, 6));
    EXPECT_EQ(page.TopLine(), 1) << "the user has gone on there";
    EXPECT_TRUE(page.ShowFound({10, 1, 1}).isHitMoved);
    EXPECT_EQ(page.TopLine(), 8) << "as many lines above a hit as leave it in view";
}

TEST(PageRows, Click_HitsWhatIsPaintedInItsRow)
{
    const DisplayText text(LinesOf({u"ああああ[いい]い[]い｢図｣いい"_s, u"[うううううううううううう]え"_s}));
    const PageLayout layout = LayoutOf(10, 6);
    const PageInView page = PageAt(1, text, layout);
    ASSERT_EQ(page.rows, std::vector<PageRow>(
                             {{1, {0, 8}}, {1, {8, 18}}, {1, {18, 28}}, {2, {0, 9}}, {2, {9, 19}}, {2, {19, 28}}}));
    StudyRound round;
    round.Load(3);
    // Row and x; then what is hit.
    const Rows<const char *, int, int, ClickTarget> rows = {
        {"right of a row whose next word is a blank", 1, 145, {}},
        {"the blank in its row", 2, 65, {.blank = 1}},
        {"its left edge", 2, 60, {}},
        {"its last pixel", 2, 119, {.blank = 1}},
        {"its right edge, where a word begins", 2, 120, {.word = u"い"_s}},
        {"an empty blank", 2, 150, {.blank = 2}},
        {"a picture in the third row", 3, 95, {.word = u"図"_s, .picture = u"図"_s}},
        {"first part of a wide blank", 4, 65, {.blank = 3}},
        {"last pixel of it", 4, 149, {.blank = 3}},
        {"right of it", 4, 155, {}},
        {"middle part", 5, 100, {.blank = 3}},
        {"last part", 6, 65, {.blank = 3}},
        {"behind it", 6, 135, {.word = u"え"_s}},
        {"number of the first row", 1, 10, {.numberedLine = 1}},
        {"beside another row of the line", 3, 10, {.numberedLine = 1}},
        {"beside the second line", 5, 10, {.numberedLine = 2}},
    };
    for (const auto &[name, row, x, target] : rows)
        EXPECT_EQ(TargetAt(text, round, x, layout.RowTopPx(row) + 8, page, layout), target) << name;
}

TEST(PageRows, ScreenReader_ReadsOneLineAndFindsEachRow)
{
    WrappedPage page({u"ああああ[いい]い[]いいいい"_s, u"[うううううううううううう]"_s}, 10, 5);
    EXPECT_EQ(SpokenPage(page), u"ああああ 空欄 い 空欄 いいいい\n 空欄 "_s) << "each blank once";
    std::ignore = page.SetLayout(LayoutOf(10, 6));
    EXPECT_TRUE(page.Click({.blank = 1}).isCounted && page.Click({.blank = 3}).isCounted);
    std::ignore = page.SetLayout(LayoutOf(10, 5));
    const QString spoken = SpokenPage(page);
    EXPECT_EQ(spoken, u"ああああ いい い 空欄 いいいい\n うううううううううううう "_s);
    // The character of the second line in its cell; the page ends within that line.
    const Rows<const char *, int, QRect> rows = {
        {"first row", 0, {60, 5, 20, 20}},
        {"second row: the bracket", 4, {60, 25, 10, 20}},
        {"its answer", 5, {70, 25, 20, 20}},
        {"third row", int(spoken.indexOf(u"いいいい"_s)), {60, 45, 20, 20}},
        {"first part of the wide answer", int(spoken.indexOf(u'う')), {70, 65, 20, 20}},
        {"second part of it", int(spoken.indexOf(u'う')) + 5, {80, 85, 20, 20}},
        {"below the page", int(spoken.lastIndexOf(u'う')), {}},
    };
    for (const auto &[name, offset, area] : rows) {
        EXPECT_EQ(AreaSpokenAt(page, offset), area) << name;
        const int found = OffsetSpokenAt(page, area.center().x(), area.center().y());
        EXPECT_EQ(found, area.isEmpty() ? -1 : offset) << name;
    }
    EXPECT_EQ(OffsetSpokenAt(page, 155, 15), -1) << "right of a row";
}
