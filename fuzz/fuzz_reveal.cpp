// SPDX-FileCopyrightText: 2026 The Kotoban developers
// SPDX-License-Identifier: MIT

// Revealing answers in any text with any sequence of keys and clicks.
#include "input.h"
#include "require.h"
#include "study/modClickTarget.h"
#include "text/modReadText.h"

namespace {

/// Stands in for the study window, with a page of a few rows.
class Study
{
  public:
    explicit Study(StudyLines lines) : m_text(std::move(lines))
    {
        m_round.Load(m_text.Blanks().Count());
        Scroll(1);
    }

    void PressEnter()
    {
        const std::vector<bool> before = Shown();
        const int count = m_round.lngOpenCount();
        const EnterDecision decision = DecideEnter(m_round, m_text, m_page);
        if (decision.action == EnterAction::Reveal) {
            Require(m_round.Toggle(decision.blank));
            Require(m_page.Holds(m_text.Blanks().LineOf(decision.blank)));
            Require(m_round.lngOpenCount() == count + 1);
            std::vector<bool> expected = before;
            expected[size_t(decision.blank)] = true;
            Require(!before[size_t(decision.blank)] && Shown() == expected);
            return;
        }
        for (int blank = 1; blank <= m_round.BlankCount(); ++blank)
            Require(before[size_t(blank)] || !m_page.Holds(m_text.Blanks().LineOf(blank)));
        Require(decision.action != EnterAction::AskThenTurn ||
                (m_round.AllShown() && m_round.BlankCount() >= MinBlanksToAsk));
        int topLine = 0;
        BeginRound([&] { topLine = TurnPage(&m_round, m_page); });
        Scroll(topLine);
        Require(m_page.topLine == topLine);
        Require(Shown() == before || Shown() == ShownAtFirst());
    }

    void ClickAt(int xPx, int yPx)
    {
        Click(TargetAt(m_text, m_round, xPx, yPx, m_page.topLine, Layout));
    }

    /// Moves to the next target that keys can reach, and clicks it.
    void ClickNext(bool withWords)
    {
        m_current = NextSpan(TargetsInView(m_text, m_page, withWords), m_current, false);
        if (m_current.line == 0)
            return;
        Require(m_page.Holds(m_current.line));
        const QStringView line = m_text.Line(m_current.line);
        Require(m_current.Index() >= 0 && m_current.length >= 1 && m_current.Index() + m_current.length <= line.size());
        Click(TargetOf(m_text, m_round, m_current));
    }

    void HideAll()
    {
        BeginRound([this] { m_round.HideAll(); });
        Require(Shown() == ShownAtFirst());
    }

    void StudyOnlyHard(bool isOnlyHard)
    {
        BeginRound([&] { m_round.StudyOnlyHard(isOnlyHard); });
        Require(m_round.IsOnlyHard() == (isOnlyHard && m_round.HardCount() > 0) && Shown() == ShownAtFirst());
    }

    void ToggleHard(int number)
    {
        if (m_round.BlankCount() == 0)
            return;
        const std::vector<bool> before = Shown();
        const int blank = number % m_round.BlankCount() + 1;
        const bool wasHard = m_round.IsHard(blank);
        m_round.ToggleHard(blank);
        Require(m_round.IsHard(blank) != wasHard && Shown() == before);
        Require(int(m_round.HardBlanks().size()) == m_round.HardCount());
    }

    void Undo()
    {
        if (!m_round.CanUndo())
            return;
        m_round.Undo();
        Require(Shown() == m_shownBefore && !m_round.CanUndo());
    }

    void ToggleLine(int number)
    {
        if (m_text.LineCount() == 0)
            return;
        const int count = m_round.lngOpenCount();
        const int shown = m_round.ShownCount();
        m_round.ToggleLine(m_text.BlanksOnLine(number % m_text.LineCount() + 1));
        Require(m_round.lngOpenCount() == count + std::max(0, m_round.ShownCount() - shown));
    }

    void Scroll(int line)
    {
        m_page = PageAt(line, m_text.LineCount(), Layout);
    }

    void Check() const
    {
        Require(m_page.topLine >= 1 && m_page.topLine <= m_page.maximum);
        const std::vector<bool> shown = Shown();
        Require(m_round.ShownCount() == std::count(shown.begin(), shown.end(), true));
    }

  private:
    static constexpr PageLayout Layout{
        .cellWidthPx = 7, .linePitchPx = 16, .heightPx = 5 + 4 * 16, .hasLineNumbers = true};

    void Click(const ClickTarget &target)
    {
        const std::vector<bool> before = Shown();
        const int count = m_round.lngOpenCount();
        if (target.blank == 0)
            return;
        Require(target == ClickTarget{.blank = target.blank}); // a hidden answer is never spoken
        const bool isShown = m_round.Toggle(target.blank);
        Require(isShown != before[size_t(target.blank)] && m_round.lngOpenCount() == count + int(isShown));
        Require(isShown || TargetInAnswer(m_text, m_round, target.blank) == ClickTarget());
    }

    /// Runs an action that may begin a new round, which must not change the count.
    template <typename Action>
    void BeginRound(Action action)
    {
        const std::vector<bool> before = Shown();
        const int count = m_round.lngOpenCount();
        const unsigned number = m_round.RoundNumber();
        action();
        if (m_round.RoundNumber() != number)
            m_shownBefore = before;
        Require(m_round.lngOpenCount() == count);
    }

    std::vector<bool> ShownAtFirst() const
    {
        std::vector<bool> shown{false};
        for (int blank = 1; blank <= m_round.BlankCount(); ++blank)
            shown.push_back(m_round.IsOnlyHard() && !m_round.IsHard(blank));
        return shown;
    }

    std::vector<bool> Shown() const
    {
        std::vector<bool> shown{false}; // blanks are numbered from 1
        for (int blank = 1; blank <= m_round.BlankCount(); ++blank)
            shown.push_back(m_round.bolOpen(blank));
        return shown;
    }

    DisplayText m_text;
    StudyRound m_round;
    PageInView m_page;
    TextSpan m_current;
    std::vector<bool> m_shownBefore; // what was shown before the last round began
};

} // namespace

// Input: the text up to a zero byte, then the actions.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    FuzzInput input(data, size);
    StudyLines lines;
    ReadAllLines(input.TakeText(), ExpandTabs::No, &lines);
    if (!lines.BracketsTakeTurns())
        return 0; // not a valid study file
    Study study(std::move(lines));
    while (!input.IsAtEnd()) {
        const int action = input.TakeByte();
        switch (action % 12) {
        case 0: {
            const int xPx = input.TakeByte() * 3;
            study.ClickAt(xPx, input.TakeByte() / 3);
            break;
        }
        case 1:
            study.HideAll();
            break;
        case 2:
            study.Scroll(input.TakeByte());
            break;
        case 3:
            study.ClickNext(action > 127);
            break;
        case 4:
            study.ToggleHard(input.TakeByte());
            break;
        case 5:
            study.StudyOnlyHard(action > 127);
            break;
        case 6:
            study.Undo();
            break;
        case 7:
            study.ToggleLine(input.TakeByte());
            break;
        default:
            study.PressEnter();
        }
        study.Check();
    }
    return 0;
}
