// Uncovering answers with any keys and clicks in any text.
#include "input.h"
#include "require.h"
#include "text/modReadText.h"
#include "view/modPageText.h"
#include "view/modSpots.h"
#include "view/modStudyRound.h"
#include "view/modWordAt.h"

namespace {

/// The window's part in it: a page of a few rows and its scroll bar.
class Study
{
  public:
    explicit Study(StudyLines lines) : m_text(std::move(lines))
    {
        m_round.Load(m_text.Blanks().Count());
        const bool canScroll = m_text.LineCount() > 0 && m_text.LineCount() >= Layout.RowsPerPage();
        m_page = {1, Layout.RowsPerPage(), Layout.LargeChange(), canScroll ? m_text.LineCount() : 1, canScroll};
    }

    void PressEnter()
    {
        const std::vector<bool> before = Shown();
        const int count = m_round.lngOpenCount;
        const EnterDecision decision = DecideEnter(m_round, m_text, m_page);
        if (decision.action == EnterAction::Reveal) {
            Require(m_round.Toggle(decision.blank));
            const int line = m_text.Blanks().line[size_t(decision.blank) - 1];
            Require(line >= m_page.topLine && line < m_page.topLine + m_page.rows);
            Require(m_round.lngOpenCount == count + 1);
            std::vector<bool> expected = before;
            expected[size_t(decision.blank) - 1] = true;
            Require(!before[size_t(decision.blank) - 1] && Shown() == expected);
            return;
        }
        for (int line = m_page.topLine; line < m_page.topLine + m_page.rows && line <= m_text.LineCount(); ++line)
            for (size_t blank = 0; blank < before.size(); ++blank)
                Require(m_text.Blanks().line[blank] != line || before[blank]);
        Require(decision.action != EnterAction::AskThenTurn ||
                (m_round.AllShown() && before.size() >= size_t(FewestBlanksToAsk)));
        m_page.topLine = TurnPage(&m_round, m_page);
        Require(m_round.lngOpenCount == count);
        const std::vector<bool> after = Shown();
        Require(after == before || after == std::vector<bool>(before.size(), false));
    }

    void Click(int xPx, int yPx)
    {
        const std::vector<bool> before = Shown();
        const int count = m_round.lngOpenCount;
        const int blank = HitTest(m_text, xPx, yPx, m_page.topLine, Layout);
        const QString word = TextUnderPointer(m_text, m_round, xPx, yPx, m_page.topLine, Layout);
        Require(blank == 0 || before[size_t(blank) - 1] || word.isEmpty()); // nothing hidden is ever spoken
        PictureUnderPointer(m_text, m_round, xPx, yPx, m_page.topLine, Layout);
        if (blank == 0)
            return;
        const bool isShown = m_round.Toggle(blank);
        Require(isShown != before[size_t(blank) - 1] && m_round.lngOpenCount == count + int(isShown));
    }

    /// Goes on to the next thing that keys can reach, and clicks it where the program does.
    void ClickNextSpot(bool withWords)
    {
        m_spot = NextPlace(SpotsInView(m_text, m_page, withWords), m_spot, false);
        if (m_spot.line == 0)
            return;
        Require(m_spot.line >= m_page.topLine && m_spot.line < m_page.topLine + m_page.rows);
        const QStringView line = m_text.Line(m_spot.line);
        Require(m_spot.column >= 1 && m_spot.length >= 1 && m_spot.column - 1 + m_spot.length <= line.size());
        SpokenOffset(m_text, m_round, m_page.topLine, m_spot.line, m_spot.column - 1);
        Click(Layout.TextLeftPx() + CellsOf(line.first(m_spot.column - 1)) * Layout.cellWidthPx +
                  Layout.cellWidthPx / 2,
              Layout.RowTopPx(m_spot.line - m_page.topLine + 1) + Layout.linePitchPx / 2);
    }

    void HideAll()
    {
        const int count = m_round.lngOpenCount;
        m_round.HideAll();
        Require(Shown() == std::vector<bool>(Shown().size(), false) && m_round.lngOpenCount == count);
    }

    void Scroll(int line)
    {
        m_page.topLine = qBound(1, line, m_page.maximum);
    }

    void Check() const
    {
        Require(m_page.topLine >= 1 && m_page.topLine <= m_page.maximum);
        const std::vector<bool> shown = Shown();
        Require(m_round.AllShown() == (std::count(shown.begin(), shown.end(), false) == 0));
    }

  private:
    static constexpr PageLayout Layout{7, 16, 5 + 4 * 16, true};

    std::vector<bool> Shown() const
    {
        std::vector<bool> shown;
        for (int blank = 1; blank <= m_round.BlankCount(); ++blank)
            shown.push_back(m_round.bolOpen(blank));
        return shown;
    }

    DisplayText m_text;
    StudyRound m_round;
    PageInView m_page;
    Place m_spot;
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
            study.Click(xPx, input.TakeByte() / 3);
            break;
        }
        case 1:
            study.HideAll();
            break;
        case 2:
            study.Scroll(input.TakeByte());
            break;
        case 3:
            study.ClickNextSpot(action > 127);
            break;
        default:
            study.PressEnter();
        }
        study.Check();
    }
    return 0;
}
