#include "view/modStudyRound.h"

#include <QRandomGenerator>

using namespace Qt::Literals::StringLiterals;

void StudyRound::Load(int blankCount)
{
    *this = StudyRound();
    m_shownIn.assign(size_t(blankCount) + 1, 0);
}

void StudyRound::Reload(int blankCount)
{
    m_shownIn.resize(size_t(blankCount) + 1, 0);
    m_shownCount = 0;
    for (int blank = 1; blank <= blankCount; ++blank)
        if (bolOpen(blank))
            ++m_shownCount;
}

bool StudyRound::Toggle(int blank)
{
    const bool isShown = !bolOpen(blank);
    m_shownIn[size_t(blank)] = isShown ? m_round : 0;
    m_shownCount += isShown ? 1 : -1;
    if (isShown)
        ++m_openCount;
    return isShown;
}

void StudyRound::HideAll()
{
    ++m_round;
    m_shownCount = 0;
}

BlankRange VisibleBlanks(const DisplayText &text, const PageInView &page)
{
    return text.Blanks().OnLines(page.topLine, page.lastLine);
}

int FirstHiddenBlank(const StudyRound &round, const BlankRange &range)
{
    for (const int blank : range)
        if (!round.bolOpen(blank))
            return blank;
    return 0;
}

int HitTest(const DisplayText &text, int xPx, int yPx, int topLine, const PageLayout &layout)
{
    if (yPx <= PageLayout::TopMarginPx || xPx < layout.TextLeftPx())
        return 0;
    const int line = layout.LineAt(yPx, topLine);
    if (line > text.LineCount())
        return 0;
    for (const int blank : text.BlanksOnLine(line)) {
        const BoxEdges box = GetBqInfoFromLine(text, blank, layout.cellWidthPx, layout.CellLeftPx(0));
        if (box.leftPx < xPx && xPx < box.rightPx)
            return blank;
    }
    return 0;
}

EnterDecision DecideEnter(const StudyRound &round, const DisplayText &text, const PageInView &page)
{
    if (round.BlankCount() == 0)
        return {.action = EnterAction::TurnPage, .blank = 0};
    const int hidden = FirstHiddenBlank(round, VisibleBlanks(text, page));
    if (hidden > 0)
        return {.action = EnterAction::Reveal, .blank = hidden};
    const bool isAtEnd = page.topLine + page.pageSize >= page.maximum;
    if (round.BlankCount() >= FewestBlanksToAsk && round.AllShown() && isAtEnd)
        return {.action = EnterAction::AskThenTurn, .blank = 0};
    return {.action = EnterAction::TurnPage, .blank = 0};
}

int TurnPage(StudyRound *round, const PageInView &page)
{
    const bool nothingWasShown = round->ShownCount() == 0;
    if (!page.canScroll || page.topLine == page.maximum)
        round->HideAll();
    const int next = page.topLine + page.pageSize;
    // A file without blanks counts as one whose last answer is shown: its pages turn and start again at line 1.
    const bool isLastShown = round->BlankCount() == 0 || round->bolOpen(round->BlankCount());
    if (!isLastShown) {
        const int top = qMin(next, page.maximum);
        // At the end with nothing shown the turn would change nothing, and Enter would be stuck there for ever.
        return nothingWasShown && top == page.topLine ? 1 : top;
    }
    if (next < page.maximum)
        return next;
    round->HideAll();
    return 1;
}

int RandomPage(const StudyRound &round, const DisplayText &text, const PageInView &page, QRandomGenerator *random)
{
    const int blanks = round.BlankCount();
    if (blanks == 0 || round.AllShown())
        return 0;
    const auto isHiddenElsewhere = [&](int blank) {
        return !round.bolOpen(blank) && !page.Holds(text.Blanks().LineOf(blank));
    };
    constexpr int draws = 1000;
    int blank = 0;
    for (int i = 0; i < draws; ++i)
        if (blank = 1 + random->bounded(blanks); isHiddenElsewhere(blank))
            return page.TopOfPage(page.PageOf(text.Blanks().LineOf(blank)));
    // Hardly any is left: the next one after the last draw.
    for (int i = 1; i < blanks; ++i)
        if (const int next = (blank + i - 1) % blanks + 1; isHiddenElsewhere(next))
            return page.TopOfPage(page.PageOf(text.Blanks().LineOf(next)));
    return page.topLine;
}

int MarkLineAt(int yPx, int topLine, const PageLayout &layout)
{
    return layout.LineAt(yPx, topLine);
}

QString AllShownMessage(int blankCount)
{
    return QString::number(blankCount) + u"個の正解をすべて表示しました。\r\n学習を続けますか？"_s;
}
