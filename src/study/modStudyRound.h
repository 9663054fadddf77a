// SPDX-FileCopyrightText: 2026 The Kotoban developers
// SPDX-License-Identifier: MIT

// The state of studying one file, and the rules by which keys and clicks change it. Lines and blanks are numbered from
// 1; 0 means none. A key or a click takes the same time whatever the length of the file.
#pragma once

#include "study/modPageInView.h"
#include "text/modDisplayText.h"

#include <optional>
#include <vector>

class QRandomGenerator;

class StudyRound
{
  public:
    /// Starts a new file: all answers hidden, nothing counted, no line marked. @param hardBlanks  ascending
    void Load(int blankCount, const std::vector<int> &hardBlanks = {});

    /// Adopts the same file after it was read again, possibly with more or fewer blanks. Blanks keep their state by
    /// number, even if others were inserted before them; new ones are hidden. While only hard blanks are studied, all
    /// others are shown, and hard ones keep their state if they were hard before. Count and marked line stay.
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

    /// The blank whose answer was shown last; 0 if there is none or the file was read again since.
    int LastShown() const
    {
        return m_lastShown;
    }

    /// Shows all hidden answers of a line, each of which counts, or hides all if none is hidden.
    /// @param blanks  those of the line
    void ToggleLine(const BlankRange &blanks);

    /// Unique number of the current round.
    unsigned RoundNumber() const
    {
        return m_round.number;
    }

    /// Begins a new round: hides all answers or, while only hard blanks are studied, hides those and shows the others.
    void HideAll();

    /// Switches to studying only the blanks marked as hard, or back to all; either begins a new round.
    void StudyOnlyHard(bool isOnlyHard);

    bool IsOnlyHard() const
    {
        return m_isOnlyHard;
    }

    /// Whether the last new round can be undone: no answer has been shown or hidden since.
    bool CanUndo() const
    {
        return m_before.has_value();
    }

    /// Undoes the last new round: restores the round before it. Counted answers stay counted.
    void Undo();

    /// Whether a blank is marked as hard.
    bool IsHard(int blank) const
    {
        return m_isHard[size_t(blank)];
    }

    /// Marks a blank as hard, or removes the mark. Its answer stays as it is. After the last mark is removed, the next
    /// round studies all blanks again.
    void ToggleHard(int blank);

    int HardCount() const
    {
        return m_hardCount;
    }

    /// All blanks marked as hard, ascending. Takes time proportional to the number of blanks.
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

    /// The line marked in the strip of line numbers, 0 for none.
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
        bool showsEasy = false; ///< whether it began with the blanks that are not hard shown
        int changedCount = 0;   ///< blanks that have changed since it began
        int shownCount = 0;
    };

    bool IsShownAtFirst(int blank) const
    {
        return m_round.showsEasy && !m_isHard[size_t(blank)];
    }

    /// State of a blank in the round that can be restored.
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

    // The round in which each blank was last shown or hidden; 0 for none. This makes hiding all answers a single step.
    // Indexed by blank number from 1; element 0 is unused.
    std::vector<unsigned> m_changedIn{0};
    std::vector<bool> m_isHard{false};
    int m_hardCount = 0;
    bool m_isOnlyHard = false;
    unsigned m_lastNumber = 1; // largest round number used
    Round m_round;
    std::optional<Round> m_before;       // the round that can be restored
    bool m_wasOnlyHard = false;          // belongs to m_before
    std::vector<KeptBlank> m_keptBefore; // blanks whose marks were changed since
    int m_lastShown = 0;
    int m_openCount = 0;
    int m_markLine = 0;
};

/// Blanks on the lines in view.
BlankRange VisibleBlanks(const DisplayText &text, const PageInView &page);

/// First blank in a range whose answer is hidden, or 0.
int FirstHiddenBlank(const StudyRound &round, const BlankRange &range);

/// Blank at a click, or 0 if none is hit.
/// @param xPx, yPx  pixels inside picText; yPx <= 5 is the top margin and hits nothing
/// @param topLine  line in the first row
/// @return 0 also for a click exactly on the edge of a box, or left of the text on a box that is partly out of view
int HitTest(const DisplayText &text, int xPx, int yPx, int topLine, const PageLayout &layout);

/// What Enter does.
enum class EnterAction
{
    Reveal, ///< show the answer of EnterDecision::blank
    TurnPage,
    AskThenTurn, ///< ask whether to go on studying, and turn the page unless the window closes
};

struct EnterDecision
{
    EnterAction action;
    int blank; ///< for Reveal, else 0
};

/// Files with at least this many blanks ask at their end whether to go on; in shorter ones the question would come too
/// often.
constexpr int MinBlanksToAsk = 20;

/// Decides what Enter does: show the next hidden answer on the page, or else turn the page.
EnterDecision DecideEnter(const StudyRound &round, const DisplayText &text, const PageInView &page);

/// Turns the page: hides the answers if a new round begins, and returns the line that comes to the top. Goes back to
/// line 1 after the last page if the file's last answer is shown, or if the turn would otherwise change nothing.
/// @return the new top line, 1..page.maximum
int TurnPage(StudyRound *round, const PageInView &page);

/// The top line of a random page with a hidden answer, out of the pages that Enter turns through. The page in view is
/// chosen only if no other one has any. 0 if no answer is hidden.
int RandomPage(const StudyRound &round, const DisplayText &text, const PageInView &page, QRandomGenerator *random);

/// The line that a click in the strip of line numbers marks.
int MarkLineAt(int yPx, int topLine, const PageLayout &layout);

/// "32個の正解をすべて表示しました。" followed by the question whether to go on.
QString AllShownMessage(int blankCount);
