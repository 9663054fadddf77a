// SPDX-FileCopyrightText: 2026 The Kotoban developers
// SPDX-License-Identifier: MIT

// What keys, clicks and new texts do to the page: answers, line, hint, target and undo.
#include "study/modPageText.h"
#include "support/Rows.h"
#include "support/StudyText.h"

#include <QRandomGenerator>

#include <gtest/gtest.h>

using namespace Qt::Literals::StringLiterals;

namespace {

/// Cells of ten pixels, rows of twenty.
PageLayout LayoutOf(int rows, int cells = 60)
{
    return {.cellWidthPx = 10,
            .linePitchPx = 20,
            .widthPx = 2 * PageLayout::TopMarginPx + 10 * cells,
            .heightPx = PageLayout::TopMarginPx + 20 * rows};
}

/// A page that does what letters stand for, in place of keys.
class KeyedPage : public StudyPage
{
  public:
    KeyedPage(const QStringList &lines, int rows, const std::vector<int> &hardBlanks = {}, int lastLine = 0)
    {
        Load(DisplayText(LinesOf(lines)), hardBlanks, lastLine);
        std::ignore = SetLayout(LayoutOf(rows));
    }

    KeyedPage &Press(QStringView keys)
    {
        for (const QChar key : keys)
            change = Do(key);
        return *this;
    }

    /// The answers in order, x for shown and - for hidden, their count and the top line.
    QString State() const
    {
        QString state;
        for (int blank = 1; blank <= Round().BlankCount(); ++blank)
            state += Round().bolOpen(blank) ? u'x' : u'-';
        return state + u" %1 %2"_s.arg(Round().lngOpenCount()).arg(TopLine());
    }

    PageChange change; ///< by the last key

  private:
    PageChange Do(QChar key)
    {
        switch (key.unicode()) {
        case u'E':
            return Enter();
        case u'H':
            return HideAll();
        case u'O':
            return StudyOnlyHard(!Round().IsOnlyHard());
        case u'S':
            return EnterMissed();
        case u'Y':
            return RemoveLearnedMarks();
        case u'M':
            return ToggleHard(BlankToMark());
        case u'U':
            return Undo();
        case u'L':
            return ToggleWholeLine();
        case u'I':
            return ShowHint();
        case u'i':
            return HideHint();
        case u'>':
            return GoToTarget(false, false);
        case u'<':
            return GoToTarget(true, false);
        case u'C':
            return ClickCurrent();
        case u'v':
            return MoveByLines(1);
        case u'^':
            return MoveByLines(-1);
        case u'N':
            return MoveToNextPage();
        case u'P':
            return MoveToPreviousPage();
        case u'Z':
            return MoveToEnd();
        default: // a page of so many rows
            return SetLayout(LayoutOf(key.digitValue()));
        }
    }
};

// With three rows, lines 1 to 3 are the first page and 3 to 5 the second.
const QStringList Lines = {u"[a1] [a2]"_s, u"[b1] [b2]"_s, u"-"_s, u"-"_s, u"[c1]"_s};

} // namespace

TEST(StudyPage, KeysInTurn_ChangeAnswersAndTopLine)
{
    // Keys; then answers, count and top line.
    const Rows<const char *, QString, QString> rows = {
        {"pages and a new round", u"EEEEE"_s, u"xxxx- 4 3"_s},
        {"the round ends with the last answer", u"EEEEEEE"_s, u"----- 5 1"_s},

        {"line of the next answer", u"L"_s, u"xx--- 2 1"_s},
        {"rest of a line", u"EL"_s, u"xx--- 2 1"_s},
        {"rest of a line that was shown", u"L>CiLL"_s, u"----- 3 1"_s},
        {"line again", u"ELL"_s, u"----- 2 1"_s},
        {"line of the target", u">>>L"_s, u"--xx- 2 1"_s},
        {"line again after an answer", u"LEL"_s, u"xxxx- 4 1"_s},
        {"line again after a new round", u"LLLHL"_s, u"xx--- 6 1"_s},
        {"line again on another page", u"LNL"_s, u"xx--x 3 3"_s},
        {"line again after scrolling", u"NLLvL"_s, u"----x 2 4"_s},
        {"no line with blanks in view", u"vv1L"_s, u"----- 0 3"_s},

        {"hiding undone", u"EEHU"_s, u"xx--- 2 1"_s},
        {"hiding undone on another page", u"NEHPU"_s, u"----x 1 3"_s},
        {"hiding undone in a window that the file fits", u"NEH9U"_s, u"----x 1 1"_s},
        {"page turn undone", u"EEEEEEEU"_s, u"xxxxx 5 3"_s},
        {"too late after an answer", u"EHEU"_s, u"x---- 2 1"_s},
        {"hiding twice", u"EHHU"_s, u"x---- 1 1"_s},
        {"nothing was hidden", u"HU"_s, u"----- 0 1"_s},
        {"undoing twice", u"EHUU"_s, u"x---- 1 1"_s},
        {"only hard ones undone", u"EMHEOU"_s, u"x---- 2 1"_s},
        {"hard ones hidden again, then undone", u"EMOEEEU"_s, u"xxxxx 2 1"_s},
        {"all as before without only hard ones", u"EEEMHEMOEO"_s, u"x---- 5 1"_s},
        {"back to only hard ones as they were", u"EMEOOU"_s, u"-xxxx 2 1"_s},
        {"too late after an answer to undo that", u"EMOEU"_s, u"xxxxx 2 1"_s},
        {"last mark removed while only hard ones are studied", u"EMEOEM"_s, u"xx--- 3 1"_s},
        {"all hidden while only hard ones are studied", u"EMOH"_s, u"----- 1 1"_s},

        {"nothing is chosen", u"C"_s, u"----- 0 1"_s},
        {"the chosen one twice", u"<CC"_s, u"----- 1 1"_s},
        {"the chosen one", u"<C"_s, u"---x- 1 1"_s},
        {"moving deselects", u"<v^C"_s, u"----- 0 1"_s},
        {"a low page deselects", u"<1C"_s, u"----- 0 1"_s},
        {"a low page keeps what it holds", u">1C"_s, u"x---- 1 1"_s},

        {"down and up", u"vvv^"_s, u"----- 0 3"_s},
        {"to the last line", u"NNNN"_s, u"----- 0 5"_s},
        {"to the last full page", u"Z"_s, u"----- 0 3"_s},
        {"a page back", u"NNP"_s, u"----- 0 3"_s},
        {"a page that holds all", u"v9"_s, u"----- 0 1"_s},
    };
    for (const auto &[name, keys, state] : rows)
        EXPECT_EQ(KeyedPage(Lines, 3).Press(keys).State(), state) << name;
    EXPECT_EQ(KeyedPage({u"[x]"_s, u"-"_s, u"-"_s}, 1).Press(u"EHNNEU").State(), u"x 1 1"_s)
        << "a page turn that hides nothing";
}

TEST(StudyPage, LastAnswerShown_AsksBeforePageTurns)
{
    KeyedPage page(QStringList(20, u"[x]"_s), 30);
    page.Press(u"E"_s.repeated(20));
    EXPECT_EQ(page.change.question, QString());
    EXPECT_EQ(page.Press(u"E").change.question, AllShownMessage(20));
    EXPECT_TRUE(page.Round().AllShown());
    EXPECT_EQ(page.TurnPage().notice, u"すべて隠しました"_s);
    EXPECT_EQ(page.Round().ShownCount(), 0);
    EXPECT_EQ(page.Press(u"U").change.notice, QString());
    EXPECT_TRUE(page.Round().AllShown());
}

TEST(StudyPage, OnlyHard_GoesFromWordToWord)
{
    QStringList lines(30, u"[a] [b]"_s);
    const auto press = [&lines](const QString &keys) {
        KeyedPage page(lines, 5, {5, 6, 40, 57});
        page.Press(keys);
        return u"%1 %2 %3"_s.arg(page.Round().HardShownCount()).arg(page.TopLine()).arg(page.HiddenHardElsewhere());
    };
    // Keys; then how many hard answers are shown, the top line, and how many are hidden if none is in view.
    const Rows<QString, QString> rows = {
        {u"N"_s, u"0 5 0"_s},         {u"OE"_s, u"1 1 0"_s},     {u"OEE"_s, u"2 1 2"_s},
        {u"OEEE"_s, u"2 20 0"_s},     {u"OEEEE"_s, u"3 20 1"_s}, {u"OEEEEE"_s, u"3 29 0"_s},
        {u"ONN"_s, u"0 9 4"_s},       {u"ONNEE"_s, u"1 20 3"_s}, {u"OZEE"_s, u"1 3 0"_s}, // the first one above
        {u"OZEEEEEE"_s, u"4 20 0"_s},
    };
    for (const auto &[keys, state] : rows)
        EXPECT_EQ(press(keys), state) << keys.toStdString();
}

TEST(StudyPage, RoundOfHardOnesEnds_OffersToRemoveMarksOnce)
{
    const QStringList lines(30, u"[a]"_s);
    KeyedPage page(lines, 5, {1, 2, 3, 4, 30});
    page.Press(u"OEESEEE"); // the second one was not known
    EXPECT_EQ(page.Round().HardShownCount(), 5);
    EXPECT_EQ(page.change.question, QString());
    EXPECT_EQ(page.Press(u"E").change.question, u"覚えた 4 個の苦手の印を外しますか？"_s);
    EXPECT_TRUE(page.change.isAboutMarks);
    KeyedPage other(page);
    for (const bool isRemoved : {false, true}) {
        KeyedPage &asked = isRemoved ? page : other;
        if (isRemoved) {
            EXPECT_TRUE(asked.Press(u"Y").change.areMarksRemoved);
        }
        EXPECT_EQ(asked.Press(u"E").change.question, u"苦手 5個の正解をすべて表示しました。\r\n学習を続けますか？"_s);
        EXPECT_FALSE(asked.change.isAboutMarks) << "asked once a round";
        EXPECT_TRUE(asked.TurnPage().isPageChanged);
        EXPECT_EQ(asked.Round().HardBlanks(), isRemoved ? std::vector<int>{2} : std::vector<int>({1, 2, 3, 4, 30}));
        EXPECT_EQ(asked.Round().HardShownCount(), 0);
        EXPECT_EQ(asked.TopLine(), isRemoved ? 2 : 1);
    }
    EXPECT_EQ(page.Press(u"EE").change.question, u"覚えた 1 個の苦手の印を外しますか？"_s);
    EXPECT_EQ(page.Press(u"Y").State(), QString(30, u'-') + u" 6 2"_s) << "none are left: all as before";
    EXPECT_EQ(page.Press(u"E").change.question, QString()) << "too few to ask";
    EXPECT_EQ(page.Press(u"E").State(), u'-' + u"x"_s + QString(28, u'-') + u" 7 2"_s);
    EXPECT_EQ(page.Press(u"S").change.markedBlank, 2) << "also while all are studied";
    EXPECT_EQ(page.Press(u"S").Round().HardBlanks(), std::vector<int>({2, 3}));
    EXPECT_EQ(KeyedPage(lines, 5).Press(u"S").State(), u'x' + QString(29, u'-') + u" 1 1"_s) << "nothing to mark";
}

TEST(StudyPage, AllShownAndHiddenAgain_BeginsLap)
{
    // Keys; then the lap.
    const Rows<QString, int> rows = {
        {u"EEEEEE"_s, 1}, {u"EEEEEEE"_s, 2},  {u"EEEEEEEU"_s, 1}, {u"EEEEEEEUE"_s, 2}, {u"EEH"_s, 1},
        {u"NNN"_s, 1},    {u"EEEEEEEH"_s, 2}, {u"EMOEE"_s, 1},    {u"EMOEEE"_s, 2},    {u"EEEEEEEMO"_s, 1},
    };
    for (const auto &[keys, lap] : rows)
        EXPECT_EQ(KeyedPage(Lines, 3).Press(keys).Round().Lap(), lap) << keys.toStdString();
}

TEST(StudyPage, Hint_LastsUntilAnswersOrPageChange)
{
    const QStringList lines = {u"[a] [word]"_s, u"[漢字]"_s, u"-"_s};
    // Keys; then the blank whose first character is shown.
    const Rows<QString, int> rows = {
        {u"I"_s, 0}, // it would be the whole answer
        {u"EI"_s, 2},     {u">>I"_s, 2},  {u"<I"_s, 3},  {u">>CI"_s, 0}, {u"EII"_s, 2},  {u"EI>"_s, 2},
        {u"EIM"_s, 2},    {u"EIE"_s, 0},  {u"EIL"_s, 0}, {u"EIH"_s, 0},  {u"EMIO"_s, 0}, {u"EIv"_s, 0},
        {u"EIi"_s, 0},    {u"EI>C"_s, 0}, {u"EI2"_s, 2}, {u"<I1"_s, 0}, // out of view
        {u">>MOIM"_s, 0}, // the last mark is gone, so all are studied again
    };
    for (const auto &[keys, blank] : rows)
        EXPECT_EQ(KeyedPage(lines, 2).Press(keys).HintedBlank(), blank) << keys.toStdString();
    EXPECT_EQ(KeyedPage(lines, 2).Press(u"EI<I").change.hints, std::vector<int>({2, 3})) << "both are repainted";
    // Keys; then how many characters are shown.
    for (const auto &[keys, length] :
         {std::pair(u"EI", 1), {u"EII", 2}, {u"EIII", 3}, {u"EIIII", 3}, {u"EIIiI", 1}, {u"EII<I", 1}})
        EXPECT_EQ(KeyedPage(lines, 2).Press(keys).HintLength(), length) << QStringView(keys).toUtf8().toStdString();
}

TEST(StudyPage, ShorterText_LeavesNoPlaceOfOldOne)
{
    for (const QStringView keys : {u"NNEI", u"NN<", u"NNL", u"NEHNN", u"<C", u"N"}) {
        KeyedPage page(QStringList(9, u"[word] [two]"_s + QString(80, u'-')), 3);
        page.Press(keys);
        EXPECT_TRUE(page.ShowFound({page.TopLine() + 1, 90, 2}).isHitMoved);
        EXPECT_GT(page.Layout().leftCell, 0);
        page.Reload(DisplayText(LinesOf({u"[word]"_s})), {});
        EXPECT_EQ(page.Current(), TextSpan());
        EXPECT_EQ(page.Found(), TextSpan());
        EXPECT_EQ(page.HintedBlank() + page.Layout().leftCell, 0);
        EXPECT_EQ(page.TopLine(), 1);
        const QString before = page.State();
        EXPECT_EQ(page.Press(u"CU").State(), before) << keys.toString().toStdString();
        EXPECT_EQ(page.Press(u"L").change.answers, std::vector<int>({1}));
    }
    KeyedPage page(Lines, 3);
    EXPECT_TRUE(page.Press(u"EH").change.isPageChanged);
    EXPECT_TRUE(page.ShowLine(99).isPageChanged);
    page.Reload(DisplayText(LinesOf(Lines + Lines)), {});
    EXPECT_EQ(page.Press(u"U").State(), u"---------- 1 5"_s) << "hiding can no longer be undone";
    page.Press(u"PPL").Reload(page.Text(), {});
    EXPECT_EQ(page.Press(u"L").State(), u"xxxx------ 5 1"_s) << "the next line";
}

TEST(StudyPage, LineWhereUserStopped_IsOfferedUntilPageMovesOrAnswer)
{
    // The line, keys and the length of the text that is read then; then the offered line and where the user stops.
    const Rows<int, QString, int, int, int> rows = {
        {4, u""_s, 5, 4, 4},  {4, u"HU"_s, 5, 4, 4},   {4, u"EHU"_s, 5, 0, 1}, {4, u"L"_s, 5, 0, 1},
        {5, u""_s, 4, 0, 4},  {4, u"N"_s, 5, 0, 4},    {4, u"NPP"_s, 5, 0, 4}, {1, u""_s, 5, 0, 1},
        {1, u"N"_s, 5, 0, 1}, {0, u"NEPP"_s, 5, 0, 5}, {2, u"NL"_s, 4, 0, 4},
    };
    for (const auto &[lastLine, keys, lineCount, offered, stopped] : rows) {
        KeyedPage page(Lines, 3, {}, lastLine);
        page.Press(keys).Reload(DisplayText(LinesOf(QStringList(lineCount, u"[x]"_s))), {});
        EXPECT_EQ(page.OfferedLine(), offered) << lastLine << keys.toStdString();
        EXPECT_EQ(page.StoppedAt(), stopped) << lastLine << keys.toStdString();
    }
}

TEST(StudyPage, LineMarked_IsInViewAndComesBackWithUndo)
{
    KeyedPage page(Lines, 3);
    EXPECT_FALSE(page.ClickLineNumber(2).isLineMarked) << "without line numbers";
    PageLayout numbered = LayoutOf(3);
    numbered.hasLineNumbers = true;
    EXPECT_FALSE(page.SetLayout(numbered).isPageChanged);
    // Line clicked; then the line that is marked.
    for (const auto &[line, marked] : {std::pair(0, 1), {2, 2}, {9, 3}}) {
        EXPECT_TRUE(page.ClickLineNumber(line).isLineMarked) << line;
        EXPECT_EQ(page.Round().lngMarkLine(), marked);
    }
    EXPECT_FALSE(page.MoveLineMark(1).isLineMarked) << "already the last one in view";
    page.Press(u"EH");
    EXPECT_EQ(page.Round().lngMarkLine(), 0);
    EXPECT_EQ(page.Press(u"U").Round().lngMarkLine(), 3);
    EXPECT_TRUE(page.Press(u"H").ClickLineNumber(2).isLineMarked);
    EXPECT_EQ(page.Press(u"U").Round().lngMarkLine(), 2) << "marked since";
    EXPECT_TRUE(page.Press(u">C").change.isLineMarked) << "a click on the text marks no line";
    EXPECT_EQ(page.Round().lngMarkLine(), 0);
}

TEST(StudyPage, AnswerOpenedSideways_ShowsBeginningOfItsLineIfItCan)
{
    // A view of twenty cells, of which the box of z takes those from 24 to 27 and those of a and b the first ones.
    const QStringList lines = {QString(24, u'-') + u"[z]"_s, u"[a]---[b]"_s + QString(30, u'-') + u"[c]"_s,
                               QString(40, u'-')};
    // Where the user has scrolled to; keys; then the first cell in view.
    const Rows<const char *, int, QString, int> rows = {
        {"an answer beyond the right edge", 0, u"E"_s, 7},
        {"an answer that was in view", 20, u"E"_s, 7},
        {"an answer of the next line", 20, u"EE"_s, 0},
        {"the chosen answer", 20, u">>"_s, 0},
        {"a hint", 20, u">>I"_s, 0},
        {"a whole line", 20, u"L"_s, 7},
        {"a whole line wider than the page", 20, u"EL"_s, 0},
        {"a whole line hidden again", 20, u"LL"_s, 7},
    };
    for (const auto &[name, leftCell, keys, moved] : rows) {
        KeyedPage page(lines, 3);
        std::ignore = page.SetLayout(LayoutOf(3, 20));
        EXPECT_EQ(page.MoveToCell(leftCell).isPageChanged, leftCell > 0);
        EXPECT_EQ(page.Press(keys).Layout().leftCell, moved) << name;
    }
    KeyedPage page(lines, 3);
    std::ignore = page.SetLayout(LayoutOf(3, 20));
    EXPECT_TRUE(page.MoveToCell(20).isPageChanged);
    EXPECT_TRUE(page.ShowFound({2, 2, 1}).isPageChanged);
    EXPECT_EQ(page.Layout().leftCell, 0) << "a hit";
}

TEST(StudyPage, TextWiderThanPage_MovesSidewaysJustFarEnough)
{
    KeyedPage page({QString(97, u'-') + u"[z]"_s, u"-"_s, u"[y]"_s}, 1);
    EXPECT_FALSE(page.SetLayout(LayoutOf(1, 20)).isPageChanged);
    EXPECT_TRUE(page.Press(u"E").change.isPageChanged);
    EXPECT_EQ(page.Layout().leftCell, 80) << "the box ends at cell 100";
    EXPECT_EQ(page.LargestLeftCell(), 80);
    EXPECT_FALSE(page.MoveByCells(8).isPageChanged);
    EXPECT_TRUE(page.MoveByCells(-8).isPageChanged);
    EXPECT_EQ(page.Press(u">").Layout().leftCell, 80);
    EXPECT_EQ(page.Press(u"E").Layout().leftCell, 0) << "a page turn goes back to the left edge";
    EXPECT_TRUE(page.MoveToCell(99).isPageChanged);
    EXPECT_TRUE(page.SetLayout(LayoutOf(1, 50)).isPageChanged);
    EXPECT_EQ(page.Layout().leftCell, 50);
}

TEST(StudyPage, HitFound_ComesIntoViewWithLinesAboveIt)
{
    KeyedPage page(QStringList(100, u"-"_s), 11);
    // Line of the hit; then the top line.
    for (const auto &[line, topLine] : {std::pair(50, 47), {57, 47}, {58, 55}, {2, 1}, {100, 97}}) {
        EXPECT_TRUE(page.ShowFound({line, 1, 1}).isHitMoved);
        EXPECT_EQ(page.TopLine(), topLine) << line;
        EXPECT_TRUE(page.IsAtFound());
    }
    EXPECT_EQ(page.Press(u"P").Found().line, 100) << "stays marked";
    EXPECT_FALSE(page.IsAtFound()) << "the user has moved";
    EXPECT_TRUE(page.ShowFound({}).isHitMoved);
    EXPECT_EQ(page.Found(), TextSpan());
    EXPECT_FALSE(page.IsAtFound());
}

TEST(StudyPage, NoFile_NothingHappens)
{
    KeyedPage page(Lines, 3);
    page.Press(u"EHN").Clear();
    page.Press(u"EHOMULIi><CvNPZ3");
    EXPECT_TRUE(page.TurnPage().notice.value_or(QString()).isEmpty());
    EXPECT_FALSE(page.Click({.word = u"word"_s}).isLineMarked);
    EXPECT_EQ(page.State(), u" 0 1"_s);
    EXPECT_EQ(page.TargetAt(9, 9), ClickTarget());
    QRandomGenerator random(1);
    EXPECT_FALSE(page.MoveToRandomPage(&random).isPageChanged);
}

TEST(SpokenPage, CaretAndText_FollowWhatIsShown)
{
    // Keys; then the text in view, with | before the caret.
    const Rows<const char *, QString, QString> rows = {
        {"answer opened", u"EE"_s, u" ab | cd \n 空欄 "_s},
        {"answer opened while another is chosen", u">>E"_s, u"| ab  空欄 \n 空欄 "_s},
        {"chosen after an answer was opened", u"E>>"_s, u" ab | 空欄 \n 空欄 "_s},
        {"hint", u"EI"_s, u" ab | c空欄 \n 空欄 "_s},
        {"hint of an answer marked as hard", u">MI"_s, u"| a苦手の空欄  空欄 \n 空欄 "_s},
        {"hint hidden", u"Ii"_s, u"| 空欄  空欄 \n 空欄 "_s},
        {"line shown", u"L"_s, u"| ab  cd \n 空欄 "_s},
        {"answer out of view", u"Ev"_s, u"| 空欄 \n 空欄 "_s},
        {"page made too small for it", u"EEE1"_s, u"| ab  cd "_s},
        {"undone", u"EEHU"_s, u"| ab  cd \n 空欄 "_s},
    };
    for (const auto &[name, keys, expected] : rows) {
        KeyedPage page({u"[ab][cd]"_s, u"[ef]"_s, u"[gh]"_s}, 2);
        const QString spoken = SpokenPage(page.Press(keys));
        const int caret = SpokenCursor(page);
        EXPECT_EQ(QString(spoken).insert(caret, u'|'), expected) << name;
    }
}

TEST(SpokenPage, HiddenAnswers_AreReplacedAndOffsetsAgree)
{
    KeyedPage page({u"above"_s, u"[a]と[漢字]。"_s, u"[]"_s, u"[next] page"_s}, 2);
    EXPECT_EQ(page.Click({.blank = 2}).word, u"漢字"_s);
    EXPECT_TRUE(page.MoveToLine(2).isPageChanged);
    EXPECT_EQ(SpokenPage(page), u" 空欄 と 漢字 。\n 空欄 "_s);
    EXPECT_EQ(SpokenOffset(page, 2, 5), 6) << "the first character of a shown answer";
    EXPECT_TRUE(page.MoveToLine(4).isPageChanged);
    EXPECT_EQ(SpokenPage(page), u" 空欄  page"_s);
    EXPECT_EQ(SpokenOffset(page, 4, 7), 5) << "a word after a hidden answer of four letters";
    EXPECT_TRUE(page.MoveToLine(1).isPageChanged);
    EXPECT_EQ(SpokenOffset(page, 3, 1), 5 + 1 + 10 + 1 + 1);
    EXPECT_EQ(SpokenCursor(page.Press(u">")), 6);

    // A screen magnifier converts positions on the page to offsets and back.
    PageLayout numbered = LayoutOf(2, 40);
    numbered.hasLineNumbers = true;
    std::ignore = page.SetLayout(numbered);
    const QString spoken = SpokenPage(page);
    for (int offset = 0; offset < spoken.size(); ++offset) {
        const TextSpan span = SpanSpokenAt(page, offset);
        if (spoken[offset] == u'\n') {
            EXPECT_EQ(span.length, 0) << offset;
            continue;
        }
        const bool isHidden = u"空欄"_s.contains(spoken[offset]);
        EXPECT_EQ(page.Text().Line(span.line).sliced(span.Index(), 1), isHidden ? u"a"_s : QString(spoken[offset]))
            << offset;
        const QPoint middle = AreaSpokenAt(page, offset).center();
        EXPECT_EQ(OffsetSpokenAt(page, middle.x(), middle.y()), spoken[offset] == u'欄' ? offset - 1 : offset);
    }
    EXPECT_EQ(SpanSpokenAt(page, 8), TextSpan(2, 2, 1));
    EXPECT_EQ(AreaSpokenAt(page, 8), QRect(70, 25, 10, 20));
    EXPECT_EQ(SpanSpokenAt(page, int(spoken.size()) + 1), TextSpan());
    EXPECT_EQ(OffsetSpokenAt(page, 30, 30), -1) << "in the line numbers";
    EXPECT_EQ(OffsetSpokenAt(page, 65, 50), -1) << "below the last line";
    page.Load(DisplayText(), {}, 0);
    EXPECT_EQ(SpokenCursor(page), 0);
    EXPECT_EQ(SpokenPage(page), QString()) << "an empty file";
    page.Clear();
    EXPECT_TRUE(SpokenPage(page).contains(u"Alt+O")) << "how to choose one";
}
