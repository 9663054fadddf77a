// The state of studying one file, and the rules by which keys and clicks change it. Lines and blanks are numbered from
// 1; 0 means none. Nothing here takes longer for a longer file.
#pragma once

#include "text/modDisplayText.h"
#include "view/modPageInView.h"

#include <optional>
#include <vector>

class QRandomGenerator;

class StudyRound
{
  public:
    /// A new file: every answer hidden, nothing counted, no line marked. @param hardBlanks  ascending
    void Load(int blankCount, const std::vector<int> &hardBlanks = {});

    /// The same file read again, which may now have more or fewer blanks. The first blanks keep their state by number,
    /// whatever was inserted before them; the rest are hidden. While only the hard ones are studied, those that are not
    /// hard are shown, and the others keep their state where they were hard before. Count and marked line stay.
    void Reload(int blankCount, const std::vector<int> &hardBlanks = {});

    int BlankCount() const
    {
        return int(m_changedIn.size()) - 1;
    }

    /// Whether the answer of a blank is shown.
    bool bolOpen(int blank) const
    {
        return (m_changedIn[size_t(blank)] == m_round.number) != IsShownAtFirst(blank);
    }

    /// Shows a hidden answer, which counts, or hides a shown one, which does not.
    /// @return whether it is shown now
    bool Toggle(int blank);

    /// The blank whose answer was shown last, 0 when there is none or the file was read again since.
    int LastShown() const
    {
        return m_lastShown;
    }

    /// Shows all hidden answers of a line, each of which counts, or hides all when none is hidden.
    /// @param blanks  those of the line
    void ToggleLine(const BlankRange &blanks);

    /// The number of the present round; every other one has another.
    unsigned RoundNumber() const
    {
        return m_round.number;
    }

    /// Begins a new round: hides every answer, or while only the hard ones are studied, every hard one, and shows the
    /// others.
    void HideAll();

    /// Studies only the blanks that are marked as hard, or all again; either begins a new round.
    void StudyOnlyHard(bool isOnlyHard);

    bool IsOnlyHard() const
    {
        return m_isOnlyHard;
    }

    /// Whether a round has begun since an answer was last shown or hidden, and the one before it can come back.
    bool CanTakeBack() const
    {
        return m_before.has_value();
    }

    /// Brings the round back that was there before the last one began. What was counted stays counted.
    void TakeBack();

    /// Whether a blank is marked as hard.
    bool IsHard(int blank) const
    {
        return m_isHard[size_t(blank)];
    }

    /// Marks a blank as hard, or takes the mark away. Its answer stays as it is. Without the last mark all blanks are
    /// studied again from the next round on.
    void ToggleHard(int blank);

    int HardCount() const
    {
        return m_hardCount;
    }

    /// All blanks that are marked as hard, ascending. It takes as long as there are blanks.
    std::vector<int> HardBlanks() const;

    int ShownCount() const
    {
        return m_round.shownCount;
    }

    /// Whether all answers are as they were when the round began.
    bool IsUntouched() const
    {
        return m_round.changedCount == 0;
    }

    bool AllShown() const
    {
        return ShownCount() == BlankCount();
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
    struct Round
    {
        unsigned number = 1;
        bool showsEasy = false; ///< whether the blanks that are not hard were shown when it began
        int changedCount = 0;   ///< blanks that are not as they were then
        int shownCount = 0;
    };

    bool IsShownAtFirst(int blank) const
    {
        return m_round.showsEasy && !m_isHard[size_t(blank)];
    }

    /// A blank in the round that can be taken back.
    struct KeptBlank
    {
        int blank;
        bool wasShown;
        bool wasChanged;
    };

    void Change(int blank);
    void KeepBefore(int blank);
    void MarkAsHard(const std::vector<int> &blanks);
    void BeginRound();

    // The round in which each blank was last changed, shown or hidden; 0 = in none. So hiding all answers is one step,
    // however many. The blanks are numbered from 1; element 0 is none's.
    std::vector<unsigned> m_changedIn{0};
    std::vector<bool> m_isHard{false};
    int m_hardCount = 0;
    bool m_isOnlyHard = false;
    unsigned m_lastNumber = 1; // of all rounds
    Round m_round;
    std::optional<Round> m_before;       // the round that can be taken back
    bool m_wasOnlyHard = false;          // with it
    std::vector<KeptBlank> m_keptBefore; // whose marks were changed since
    int m_lastShown = 0;
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
