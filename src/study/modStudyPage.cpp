// SPDX-FileCopyrightText: 2026 The Kotoban developers
// SPDX-License-Identifier: MIT

#include "study/modStudyPage.h"

#include <utility>

using namespace Qt::Literals::StringLiterals;

void StudyPage::Load(DisplayText text, const std::vector<int> &hardBlanks, int lastLine)
{
    ReplaceText(std::move(text));
    m_round.Load(m_text.Blanks().Count(), hardBlanks);
    m_isFileOpen = true;
    m_places.offeredLine = lastLine > 1 && lastLine <= m_text.LineCount() ? lastLine : 0;
}

void StudyPage::Reload(DisplayText text, const std::vector<int> &hardBlanks)
{
    const auto [topLine, offeredLine] = std::pair(m_places.topLine, m_places.offeredLine);
    ReplaceText(std::move(text));
    m_round.Reload(m_text.Blanks().Count(), hardBlanks);
    m_places.topLine = qMin(topLine, qMax(1, m_text.LineCount()));
    m_places.offeredLine = offeredLine <= m_text.LineCount() ? offeredLine : 0;
}

void StudyPage::Clear()
{
    Load(DisplayText(), {}, 0);
    m_isFileOpen = false;
}

/// Forgets every place in the old text.
void StudyPage::ReplaceText(DisplayText text)
{
    m_text = std::move(text);
    m_places = Places();
    m_layout.leftCell = 0;
}

/// The blank that is the keyboard target.
int StudyPage::ChosenBlank() const
{
    return m_places.current.line > 0 ? TargetOf(m_text, m_round, m_places.current).blank : 0;
}

int StudyPage::BlankToMark() const
{
    const int chosen = ChosenBlank();
    return chosen > 0 ? chosen : m_round.LastShown();
}

PageChange StudyPage::SetLayout(const PageLayout &layout)
{
    const auto [topLine, leftCell] = std::pair(TopLine(), m_layout.leftCell);
    m_layout = layout;
    m_layout.leftCell = leftCell;
    PageChange change = MoveToCell(leftCell);
    const PageInView page = InView();
    if (page.topLine != topLine)
        return ShowLine(page.topLine);
    m_places.topLine = topLine; // as far as another layout allows it; the text may have become shorter
    if (!page.Holds(m_places.current.line))
        change.isTargetMoved = SetCurrent(TextSpan()); // what is out of view must not be clicked
    if (m_places.hintedBlank > 0 && !page.Holds(m_text.Blanks().LineOf(m_places.hintedBlank)))
        m_places.hintedBlank = 0;
    return change;
}

PageChange StudyPage::Enter()
{
    if (!m_isFileOpen)
        return {};
    const EnterDecision decision = DecideEnter(m_round, m_text, InView());
    if (decision.action == EnterAction::TurnPage)
        return TurnPage();
    if (decision.action == EnterAction::AskThenTurn)
        return {.question = AllShownMessage(m_round.BlankCount())};
    const bool isPageChanged = BringCellsIntoView(m_text.Span(decision.blank));
    PageChange change = Toggle(decision.blank);
    change.isPageChanged = isPageChanged;
    change.answer = m_text.Answer(decision.blank).toString();
    return change;
}

/// Runs what may begin a new round, and saves what undo restores if it does.
template <typename Action>
PageChange StudyPage::BeginRound(Action action)
{
    if (!m_isFileOpen)
        return {};
    const unsigned roundBefore = m_round.RoundNumber();
    Before before{.topLine = TopLine(), .markLine = m_round.lngMarkLine()};
    PageChange change = action();
    change.isPageChanged = true;
    if (m_round.RoundNumber() == roundBefore)
        return change;
    before.markLineAfter = m_round.lngMarkLine();
    m_places.before = before;
    m_places.wholeLine = 0;
    m_places.hintedBlank = 0;
    change.notice =
        m_round.IsOnlyHard() ? u"苦手を隠しました（Ctrl+Z で元に戻す）"_s : u"すべて隠しました（Ctrl+Z で元に戻す）"_s;
    return change;
}

PageChange StudyPage::TurnPage()
{
    return BeginRound([this] {
        m_layout.leftCell = 0;
        return ShowLine(::TurnPage(&m_round, InView()));
    });
}

PageChange StudyPage::HideAll()
{
    return BeginRound([this] {
        if (m_round.IsOnlyHard())
            m_round.StudyOnlyHard(false);
        else
            m_round.HideAll();
        m_round.MarkLine(0);
        return PageChange();
    });
}

PageChange StudyPage::StudyOnlyHard(bool isOnlyHard)
{
    PageChange change = BeginRound([&] {
        m_round.StudyOnlyHard(isOnlyHard);
        return PageChange();
    });
    change.notice.reset(); // the check box tells enough
    return change;
}

/// Shows or hides an answer, after which hiding all can no longer be undone.
PageChange StudyPage::Toggle(int blank)
{
    PageChange change = HideHint();
    change.isCounted = m_round.Toggle(blank);
    change.answers.push_back(blank);
    change.notice = QString();
    m_places.wholeLine = 0;
    return change;
}

PageChange StudyPage::Click(const ClickTarget &target)
{
    if (!m_isFileOpen)
        return {};
    PageChange change;
    if (target.blank > 0)
        change = Toggle(target.blank);
    ClickTarget opened = target.blank > 0 ? TargetInAnswer(m_text, m_round, target.blank) : target;
    change.word = std::move(opened.word);
    change.picture = std::move(opened.picture);
    change.isLineMarked = m_layout.hasLineNumbers && target.numberedLine != m_round.lngMarkLine();
    if (change.isLineMarked)
        m_round.MarkLine(target.numberedLine);
    return change;
}

PageChange StudyPage::ClickCurrent()
{
    return m_places.current.line > 0 ? Click(TargetOf(m_text, m_round, m_places.current)) : PageChange();
}

PageChange StudyPage::ClickLineNumber(int line)
{
    const PageInView page = InView();
    return Click({.numberedLine = qBound(page.topLine, line, qMax(page.topLine, page.lastLine))});
}

PageChange StudyPage::Undo()
{
    if (!m_round.CanUndo())
        return {};
    m_round.Undo();
    if (m_round.lngMarkLine() == m_places.before.markLineAfter)
        m_round.MarkLine(m_places.before.markLine); // no other line was marked since
    m_places.wholeLine = 0;
    PageChange change = ShowLine(m_places.before.topLine);
    change.notice = QString();
    return change;
}

PageChange StudyPage::ToggleHard(int blank)
{
    if (blank == 0)
        return {};
    m_round.ToggleHard(blank);
    return {.markedBlank = blank};
}

PageChange StudyPage::ToggleWholeLine()
{
    const bool isAgain = InView().Holds(m_places.wholeLine);
    const int chosen = ChosenBlank();
    const int meant = chosen > 0 || isAgain ? chosen : NextBlank();
    if (meant == 0 && !isAgain)
        return {};
    const int line = meant > 0 ? m_text.Blanks().LineOf(meant) : m_places.wholeLine;
    const BlankRange onLine = m_text.BlanksOnLine(line);
    QStringList shown;
    for (const int blank : onLine)
        if (!m_round.bolOpen(blank))
            shown += m_text.Answer(blank).toString();
    PageChange change = HideHint();
    m_round.ToggleLine(onLine);
    m_places.wholeLine = line;
    change.answers.assign(onLine.begin(), onLine.end());
    change.isCounted = !shown.isEmpty();
    change.notice = QString();
    change.answer = shown.join(u'，');
    return change;
}

PageChange StudyPage::ShowHint()
{
    PageChange change = HideHint();
    int blank = ChosenBlank();
    if (blank == 0 || m_round.bolOpen(blank))
        blank = NextBlank();
    if (blank == 0 || m_text.Blanks().AnswerLengthOf(blank) <= 1)
        return change;
    change.isPageChanged = BringCellsIntoView(m_text.Span(blank));
    change.hints.push_back(blank);
    m_places.hintedBlank = blank;
    return change;
}

PageChange StudyPage::HideHint()
{
    PageChange change;
    if (const int hinted = std::exchange(m_places.hintedBlank, 0); hinted > 0)
        change.hints.push_back(hinted);
    return change;
}

PageChange StudyPage::GoToTarget(bool backwards, bool withWords)
{
    PageChange change;
    change.isTargetMoved =
        SetCurrent(NextSpan(TargetsInView(m_text, InView(), withWords), m_places.current, backwards));
    change.isPageChanged = BringCellsIntoView(m_places.current);
    return change;
}

/// @return whether it is another one
bool StudyPage::SetCurrent(const TextSpan &current)
{
    return std::exchange(m_places.current, current) != current;
}

PageChange StudyPage::ShowFound(const TextSpan &found)
{
    constexpr int linesAbove = 3;
    PageChange change;
    if (found.line > 0 && !InView().Holds(found.line))
        change = MoveToLine(qMax(1, found.line - linesAbove));
    m_places.found = found;
    change.isPageChanged |= BringCellsIntoView(found);
    change.isHitMoved = true;
    return change;
}

PageChange StudyPage::ShowLine(int line)
{
    m_places.topLine = line;
    m_places.topLine = TopLine();
    if (m_places.topLine > 1)
        m_places.offeredLine = 0; // the user has accepted the offer or moved elsewhere
    m_places.hintedBlank = 0;
    return {.isPageChanged = true, .isTargetMoved = SetCurrent(TextSpan())};
}

PageChange StudyPage::MoveToLine(int line)
{
    return PageAt(line, m_text.LineCount(), m_layout).topLine == TopLine() ? PageChange() : ShowLine(line);
}

PageChange StudyPage::MoveToRandomPage(QRandomGenerator *random)
{
    const int topLine = RandomPage(m_round, m_text, InView(), random);
    return topLine > 0 ? MoveToLine(topLine) : PageChange();
}

PageChange StudyPage::MoveToCell(int cell)
{
    const int leftCell = qBound(0, cell, LargestLeftCell());
    return {.isPageChanged = std::exchange(m_layout.leftCell, leftCell) != leftCell};
}

/// Moves sideways just far enough to bring a span into view. @return whether the page has moved
bool StudyPage::BringCellsIntoView(const TextSpan &span)
{
    return span.line > 0 && MoveToCell(LeftCellShowing(m_text.Cells(span), m_layout)).isPageChanged;
}
