// Uncovering answers with any keys and clicks in any text.
#include "input.h"
#include "require.h"
#include "search/modSearch.h"
#include "text/modReadText.h"
#include "view/modClickTarget.h"
#include "view/modPageText.h"

namespace {

/// The window's part in it: a page of a few rows.
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
                (m_round.AllShown() && m_round.BlankCount() >= FewestBlanksToAsk));
        const int topLine = TurnPage(&m_round, m_page);
        Scroll(topLine);
        Require(m_page.topLine == topLine);
        Require(m_round.lngOpenCount() == count);
        const std::vector<bool> after = Shown();
        Require(after == before || after == std::vector<bool>(before.size(), false));
    }

    void ClickAt(int xPx, int yPx)
    {
        Click(TargetAt(m_text, m_round, xPx, yPx, m_page.topLine, Layout));
    }

    /// Goes on to the next thing that keys can reach, and clicks it.
    void ClickNext(bool withWords)
    {
        m_current = NextSpan(TargetsInView(m_text, m_page, withWords), m_current, false);
        if (m_current.line == 0)
            return;
        Require(m_page.Holds(m_current.line));
        const QStringView line = m_text.Line(m_current.line);
        Require(m_current.Index() >= 0 && m_current.length >= 1 && m_current.Index() + m_current.length <= line.size());
        SpokenOffset(m_text, m_round, m_page.topLine, m_current.line, m_current.Index());
        Click(TargetOf(m_text, m_round, m_current));
    }

    void HideAll()
    {
        const int count = m_round.lngOpenCount();
        m_round.HideAll();
        Require(Shown() == std::vector<bool>(Shown().size(), false) && m_round.lngOpenCount() == count);
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
        Require(target == ClickTarget{.blank = target.blank}); // nothing hidden is ever spoken
        const bool isShown = m_round.Toggle(target.blank);
        Require(isShown != before[size_t(target.blank)] && m_round.lngOpenCount() == count + int(isShown));
        Require(isShown || TargetInAnswer(m_text, m_round, target.blank) == ClickTarget());
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
};

} // namespace

// Input: the text up to a zero byte, then the actions.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    FuzzInput input(data, size);
    StudyLines lines;
    ReadAllLines(input.TakeText(), ExpandTabs::No, &lines);
    if (!lines.BracketsTakeTurns())
        return 0; // no study file
    Study study(std::move(lines));
    while (!input.IsAtEnd()) {
        const int action = input.TakeByte();
        switch (action % 8) {
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
        default:
            study.PressEnter();
        }
        study.Check();
    }
    return 0;
}
