// The state of studying one file, and the rules by which keys and clicks change it. Lines and blanks are numbered from
// 1; 0 means none. Nothing here takes longer for a longer file.
#pragma once

#include "text/modDisplayText.h"
#include "view/modPageInView.h"

#include <vector>

class QRandomGenerator;

class StudyRound
{
  public:
    /// A new file: every answer hidden, nothing counted, no line marked.
    void Load(int blankCount);

    /// The same file read again, which may now have more or fewer blanks. The first blanks keep their state by number,
    /// whatever was inserted before them; the rest are hidden. Count and mark stay.
    void Reload(int blankCount);

    int BlankCount() const
    {
        return int(m_shownIn.size()) - 1;
    }

    /// Whether the answer of a blank is shown.
    bool bolOpen(int blank) const
    {
        return m_shownIn[size_t(blank)] == m_round;
    }

    /// Shows a hidden answer, which counts, or hides a shown one, which does not.
    /// @return whether it is shown now
    bool Toggle(int blank);

    /// Hides every answer.
    void HideAll();

    int ShownCount() const
    {
        return m_shownCount;
    }

    bool AllShown() const
    {
        return m_shownCount == BlankCount();
    }

    /// Answers shown since the session began.
    int lngOpenCount() const
    {
        return m_openCount;
    }

    /// Line marked in the strip of line numbers, 0 for none.
    int lngMarkLine() const
    {
        return m_markLine;
    }

    /// Marks a line, or none with 0.
    void MarkLine(int line)
    {
        m_markLine = line;
    }

  private:
    // The round in which each blank was last shown; 0 = in none. So hiding all answers is one step, however many. The
    // blanks are numbered from 1; element 0 is none's.
    std::vector<unsigned> m_shownIn{0};
    unsigned m_round = 1;
    int m_shownCount = 0;
    int m_openCount = 0;
    int m_markLine = 0;
};

/// Blanks on the lines in view.
BlankRange VisibleBlanks(const DisplayText &text, const PageInView &page);

/// First blank of some whose answer is hidden, or 0.
int FirstHiddenBlank(const StudyRound &round, const BlankRange &range);

/// Blank under a click, or 0 when none is hit.
/// @param xPx, yPx  pixels inside picText; yPx <= 5 is the top margin and hits nothing
/// @param topLine  line in the first row
/// @return a click exactly on an edge of a box is no hit, nor is one beside the text on a box that is out of view there
int HitTest(const DisplayText &text, int xPx, int yPx, int topLine, const PageLayout &layout);

/// What Enter does.
enum class EnterAction
{
    Reveal, ///< show the answer of the blank that is named with it
    TurnPage,
    AskThenTurn, ///< ask whether to go on studying, and turn the page unless the window closes
};

struct EnterDecision
{
    EnterAction action;
    int blank; ///< for Reveal, else 0
};

/// Fewest blanks of a file at whose end the learner is asked whether to go on. The number is meant.
constexpr int FewestBlanksToAsk = 20;

/// Decides what Enter does: the next hidden answer on the page, or else the next page.
EnterDecision DecideEnter(const StudyRound &round, const DisplayText &text, const PageInView &page);

/// Turns the page: hides the answers where a new round begins, and says which line comes to the top. After the last
/// page of a file whose last answer is shown it goes back to line 1, and so does a turn that would change neither the
/// top line nor what is shown.
/// @return the new top line, 1..page.maximum
int TurnPage(StudyRound *round, const PageInView &page);

/// The top line of a page that holds a hidden answer, drawn at random: one of the pages that Enter turns through, and
/// the one in view only when nothing is hidden on the others. 0 when no answer is hidden.
int RandomPage(const StudyRound &round, const DisplayText &text, const PageInView &page, QRandomGenerator *random);

/// Line marked by a click in the strip of line numbers.
int MarkLineAt(int yPx, int topLine, const PageLayout &layout);

/// "32個の正解をすべて表示しました。" and the question whether to go on.
QString AllShownMessage(int blankCount);
