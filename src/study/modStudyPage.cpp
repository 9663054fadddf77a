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
    m_places.stoppedLine = qBound(1, lastLine, qMax(1, m_text.LineCount()));
}

void StudyPage::Reload(DisplayText text, const std::vector<int> &hardBlanks, const std::vector<int> &numbersBefore)
{
    const Places old = m_places;
    const auto [topLine, topCell] = std::pair(TopLine(), m_view.TopCell());
    const int leftCell = m_layout.leftCell;
    ReplaceText(std::move(text));
    m_round.Reload(m_text.Blanks().Count(), hardBlanks, numbersBefore);
    m_layout.leftCell = qMin(leftCell, LargestLeftCell());
    Place(topLine, topCell);
    m_places.offeredLine = old.offeredLine <= m_text.LineCount() ? old.offeredLine : 0;
    m_places.stoppedLine = qMin(old.stoppedLine, qMax(1, m_text.LineCount()));
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
    Place(1);
}

/// Brings a line to the top or, if it is higher than the page, the row with one of its cells.
void StudyPage::Place(int topLine, int topCell)
{
    m_view = PageAt(topLine, m_text, m_layout, topCell);
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

int StudyPage::HiddenHardElsewhere() const
{
    return m_round.IsOnlyHard() && NextBlank() == 0 ? m_round.HardCount() - m_round.HardShownCount() : 0;
}

PageChange StudyPage::SetLayout(const PageLayout &layout)
{
    const auto [topLine, topCell] = std::pair(TopLine(), m_view.TopCell());
    const int leftCell = m_layout.leftCell;
    const bool isWishKept = m_view.isWrapped || m_places.topLineWished > 0;
    const int wished = m_places.topLineWished > 0 ? m_places.topLineWished : topLine;
    m_layout = layout;
    m_layout.leftCell = leftCell;
    PageChange change = MoveToCell(leftCell);
    Place(wished, topCell);
    if (TopLine() != topLine)
        change = ShowLine(TopLine());
    m_places.topLineWished = isWishKept ? wished : 0;
    if (!m_view.Holds(m_places.current.line))
        change.isTargetMoved |= SetCurrent(TextSpan()); // what is out of view must not be clicked
    if (!m_view.Shows(m_places.caret.line))
        m_places.caret = TextSpan();
    if (m_places.hintedBlank > 0 && !m_view.Holds(m_text.Blanks().LineOf(m_places.hintedBlank)))
        m_places.hintedBlank = 0;
    return change;
}

PageChange StudyPage::Enter()
{
    if (!m_isFileOpen)
        return {};
    if (m_round.IsOnlyHard() || m_places.finishedCount > 0)
        return EnterOnlyHard();
    const EnterDecision decision = DecideEnter(m_round, m_text, m_view);
    if (decision.action == EnterAction::TurnPage)
        return TurnPage();
    if (decision.action == EnterAction::AskThenTurn)
        return {.question = AllShownMessage(m_round.BlankCount())};
    return Show(decision.blank);
}

/// Shows a hidden answer on a line in view. If its row is not, the user reads that first.
PageChange StudyPage::Show(int blank)
{
    if (BringRowsIntoView(m_text.Span(blank)))
        return {.isPageChanged = true};
    const bool isPageChanged = BringIntoView(m_text.Span(blank));
    PageChange change = Toggle(blank);
    change.isPageChanged = isPageChanged;
    change.answer = m_text.Answer(blank).toString();
    return change;
}

PageChange StudyPage::EnterOnlyHard()
{
    // Not if the last marks were removed at the end of the round.
    const bool isOnlyHard = m_round.IsOnlyHard();
    if (const int blank = isOnlyHard ? NextBlank() : 0; blank > 0)
        return Show(blank);
    const int lastInView = *VisibleBlanks(m_text, m_view).end() - 1;
    if (const int next = isOnlyHard ? m_round.NextHiddenHard(lastInView) : 0; next > 0) {
        m_layout.leftCell = 0;
        return ShowLine(m_text.Blanks().LineOf(next));
    }
    if (m_places.finishedCount == 0) {
        m_places.finishedCount = m_round.HardCount();
        if (const size_t learned = m_round.LearnedBlanks().size(); learned > 0)
            return {.question = LearnedMessage(int(learned)), .isAboutMarks = true};
    }
    return m_places.finishedCount >= MinHardToAsk ? PageChange{.question = HardShownMessage(m_places.finishedCount)}
                                                  : TurnPage();
}

/// Begins another round of hard blanks, or none if no marks are left, with the first one at the top.
PageChange StudyPage::TurnToHard()
{
    m_places.finishedCount = 0;
    if (!m_round.IsOnlyHard())
        return ShowLine(TopLine());
    m_round.HideAll();
    return ShowLine(m_text.Blanks().LineOf(m_round.HardBlanks().front()));
}

PageChange StudyPage::EnterMissed()
{
    const int missed = m_round.LastShown();
    const bool isNew = missed > 0 && !m_round.IsHard(missed);
    if (missed > 0)
        m_round.MarkMissed(missed);
    PageChange change = Enter();
    change.markedBlank = isNew ? missed : 0;
    return change;
}

PageChange StudyPage::RemoveLearnedMarks()
{
    m_round.RemoveLearnedMarks();
    return {.isPageChanged = true, .areMarksRemoved = true};
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
    m_places.wholeLineOf = 0;
    m_places.hintedBlank = 0;
    m_places.finishedCount = 0;
    change.notice = m_round.IsOnlyHard() ? u"苦手を隠しました"_s : u"すべて隠しました"_s;
    return change;
}

PageChange StudyPage::TurnPage()
{
    return BeginRound([this] {
        m_layout.leftCell = 0;
        const bool isOnlyHard = m_round.IsOnlyHard() || m_places.finishedCount > 0;
        return isOnlyHard ? TurnToHard() : ShowLine(::TurnPage(&m_round, m_view));
    });
}

PageChange StudyPage::HideAll()
{
    return BeginRound([this] {
        m_round.HideAllOfFile();
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

/// The user goes on at a line, by showing an answer there.
void StudyPage::StopAt(int line)
{
    m_places.stoppedLine = line;
    m_places.offeredLine = 0;
    m_places.topLineWished = 0;
}

PageChange StudyPage::Resume(const std::vector<BlankRange> &shown)
{
    if (m_places.stoppedLine == 1 && shown.empty())
        return {};
    PageChange change = BeginRound([&] {
        m_round.ShowAgain(shown);
        return ShowLine(m_places.stoppedLine);
    });
    m_places.offeredLine = 0;
    if (change.notice)
        change.notice = u"前回の正解を表示しました"_s;
    return change;
}

/// Shows or hides an answer, after which hiding all can no longer be undone.
PageChange StudyPage::Toggle(int blank)
{
    PageChange change = HideHint();
    change.isCounted = m_round.Toggle(blank);
    if (change.isCounted)
        StopAt(m_text.Blanks().LineOf(blank));
    m_places.caret = m_text.Span(blank);
    change.answers.push_back(blank);
    change.notice = QString();
    m_places.wholeLineOf = 0;
    return change;
}

PageChange StudyPage::Click(const ClickTarget &target)
{
    if (!m_isFileOpen)
        return {};
    PageChange change;
    if (target.blank > 0) {
        const bool isMoved = !m_round.bolOpen(target.blank) && BringRowsIntoView(m_text.Span(target.blank));
        change = Toggle(target.blank);
        change.isPageChanged = isMoved;
    }
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
    if (m_places.current.line == 0)
        return {};
    const bool isPageChanged = BringRowsIntoView(m_places.current);
    PageChange change = Click(TargetOf(m_text, m_round, m_places.current));
    change.isPageChanged |= isPageChanged;
    return change;
}

PageChange StudyPage::ClickLineNumber(int line)
{
    return Click({.numberedLine = qBound(TopLine(), line, qMax(TopLine(), m_view.lastLine))});
}

PageChange StudyPage::Undo()
{
    if (!m_round.CanUndo())
        return {};
    m_round.Undo();
    m_places.finishedCount = 0;
    if (m_round.lngMarkLine() == m_places.before.markLineAfter)
        m_round.MarkLine(m_places.before.markLine); // no other line was marked since
    m_places.wholeLineOf = 0;
    PageChange change = ShowLine(m_places.before.topLine);
    change.notice = QString();
    return change;
}

PageChange StudyPage::ToggleHard(int blank)
{
    if (blank == 0)
        return {};
    const unsigned roundBefore = m_round.RoundNumber();
    m_round.ToggleHard(blank);
    const bool isOtherRound = m_round.RoundNumber() != roundBefore;
    if (isOtherRound)
        m_places.hintedBlank = 0; // its answer may be shown now
    return {.isPageChanged = isOtherRound, .markedBlank = blank};
}

PageChange StudyPage::ToggleWholeLine()
{
    const int last = m_places.wholeLineOf;
    const int chosen = ChosenBlank();
    const bool isAgain = chosen == 0 && last > 0 && m_view.Holds(m_text.Blanks().LineOf(last));
    const int meant = chosen > 0 ? chosen : isAgain ? last : NextBlank();
    if (meant == 0)
        return {};
    PageChange change = HideHint();
    change.isPageChanged = BringRowsIntoView(m_text.Span(meant));
    const BlankRange onLine = InViewWith(meant);
    change.isPageChanged |= BringLineIntoView(onLine);
    QStringList shown;
    for (const int blank : onLine)
        if (!m_round.bolOpen(blank))
            shown += m_text.Answer(blank).toString();
    m_round.ToggleLine(onLine);
    m_places.wholeLineOf = meant;
    m_places.caret = m_text.Span(onLine.front());
    change.answers.assign(onLine.begin(), onLine.end());
    change.isCounted = !shown.isEmpty();
    if (change.isCounted)
        StopAt(m_text.Blanks().LineOf(meant));
    change.notice = QString();
    change.answer = shown.join(u'，');
    return change;
}

PageChange StudyPage::ShowHint()
{
    const int hintedBefore = m_places.hintedBlank;
    PageChange change = HideHint();
    int blank = ChosenBlank();
    if (blank == 0 || m_round.bolOpen(blank))
        blank = NextBlank();
    const int longest = blank == 0 ? 0 : m_text.Blanks().AnswerLengthOf(blank) - 1;
    if (longest <= 0)
        return change;
    m_places.hintLength = blank == hintedBefore ? qMin(m_places.hintLength + 1, longest) : 1;
    change.isPageChanged = BringIntoView(m_text.Span(blank));
    change.hints.push_back(blank);
    m_places.hintedBlank = blank;
    m_places.caret = m_text.Span(blank);
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
    change.isTargetMoved = SetCurrent(NextSpan(TargetsInView(m_text, m_view, withWords), m_places.current, backwards));
    change.isPageChanged = BringIntoView(m_places.current);
    return change;
}

/// @return whether it is another one
bool StudyPage::SetCurrent(const TextSpan &current)
{
    m_places.caret = current;
    return std::exchange(m_places.current, current) != current;
}

PageChange StudyPage::ShowFound(const TextSpan &found)
{
    constexpr int linesAbove = 3;
    PageChange change;
    if (found.line > 0 && !m_view.Holds(found.line))
        change = MoveToLine(qMax(found.line - linesAbove, TopShowing(found.line, m_text, m_layout)));
    m_places.found = found;
    m_places.topAtFound = TopLine();
    change.isPageChanged |= BringIntoView(found);
    change.isHitMoved = true;
    return change;
}

PageChange StudyPage::ShowLine(int line)
{
    Place(line);
    m_places.topLineWished = 0;
    if (TopLine() > 1)
        m_places.offeredLine = 0; // the user has accepted the offer or moved elsewhere
    m_places.hintedBlank = 0;
    return {.isPageChanged = true, .isTargetMoved = SetCurrent(TextSpan())};
}

PageChange StudyPage::MoveToLine(int line)
{
    const bool isThere = qBound(1, line, m_view.maximum) == TopLine() && m_view.TopCell() == 0;
    return isThere ? PageChange() : ShowLine(line);
}

PageChange StudyPage::MoveByLines(int lines)
{
    const bool isAtLast = lines > 0 && TopLine() == m_view.maximum;
    return isAtLast ? PageChange() : MoveToLine(TopLine() + lines);
}

PageChange StudyPage::MoveBySteps(int steps)
{
    if (m_text.LineCount() > 0 && ScrollTo(TopCellMoved(steps, m_view, m_text, m_layout)))
        return {.isPageChanged = true};
    return MoveByLines(m_view.isWrapped ? qBound(-m_view.pageSize, steps, m_view.pageSize) : steps);
}

PageChange StudyPage::MoveToPreviousPage()
{
    return MoveToLine(TopLine() == 1 ? 1 : qMin(TopLine() - 1, TopShowing(TopLine(), m_text, m_layout)));
}

PageChange StudyPage::MoveToEnd()
{
    return MoveToLine(m_text.LineCount() == 0 ? 1 : TopShowing(m_text.LineCount(), m_text, m_layout));
}

PageChange StudyPage::MoveToRandomPage(QRandomGenerator *random)
{
    const int topLine = RandomPage(m_round, m_text, m_view, random);
    return topLine > 0 ? MoveToLine(topLine) : PageChange();
}

PageChange StudyPage::MoveToCell(int cell)
{
    const int leftCell = qBound(0, cell, LargestLeftCell());
    return {.isPageChanged = std::exchange(m_layout.leftCell, leftCell) != leftCell};
}

/// Moves within the top line to the row that begins with a cell. @return whether the page has moved
bool StudyPage::ScrollTo(int topCell)
{
    if (topCell == m_view.TopCell())
        return false;
    Place(TopLine(), topCell);
    return true;
}

/// Brings a span of a line in view into view: sideways to the leftmost view that holds it or, if the line is higher
/// than the page, to its rows. @return whether the page has moved
bool StudyPage::BringIntoView(const TextSpan &span)
{
    if (span.line == 0)
        return false;
    const bool isMoved = BringRowsIntoView(span);
    return MoveToCell(LeftCellShowing(m_text.Cells(span), m_layout)).isPageChanged || isMoved;
}

/// The same without moving sideways. Of a line that is cut off below, the row with the start of the span is in view.
bool StudyPage::BringRowsIntoView(const TextSpan &span)
{
    const bool isCutOff =
        m_view.Shows(span.line) && !m_view.Holds(span.line) && m_text.Cells(span).end > m_view.rows.back().cells.end;
    if (isCutOff)
        std::ignore = ShowLine(TopShowing(span.line, m_text, m_layout));
    const bool isMoved =
        span.line == TopLine() && ScrollTo(TopCellShowing(m_text.Cells(span), m_view, m_text, m_layout));
    return isMoved || isCutOff;
}

/// The blanks on the line of one in view: of a line higher than the page, that one and those that are whole in view.
BlankRange StudyPage::InViewWith(int blank) const
{
    const CellRange inView{m_view.TopCell(), m_view.rows.back().cells.end};
    const BlankRange onLine = m_text.BlanksOnLine(m_text.Blanks().LineOf(blank));
    if (m_view.LastShownLine() > m_view.topLine)
        return onLine;
    const auto isInView = [&](int other) {
        const CellRange cells = m_text.Cells(other);
        return other == blank || (inView.start <= cells.start && cells.end <= inView.end);
    };
    const int first = *std::ranges::find_if(onLine, isInView);
    return BlankRange(first, first + int(std::ranges::count_if(onLine, isInView)));
}

/// Moves sideways to the blanks of a line or, if they do not fit, the first of them.
bool StudyPage::BringLineIntoView(const BlankRange &onLine)
{
    TextSpan span = m_text.Span(onLine.front());
    const TextSpan last = m_text.Span(onLine.back());
    if (m_text.Cells(last).end - m_text.Cells(span).start <= m_layout.CellsInView())
        span.length = last.column + last.length - span.column;
    return MoveToCell(LeftCellShowing(m_text.Cells(span), m_layout)).isPageChanged;
}
