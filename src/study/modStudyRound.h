// SPDX-FileCopyrightText: 2026 The Kotoban developers
// SPDX-License-Identifier: MIT

// The state of studying one file, and the rules by which keys and clicks change it. Lines and blanks are numbered from
// 1; 0 means none. A key or a click takes the same time whatever the length of the file.
#pragma once

#include "study/modPageInView.h"
#include "text/modDisplayText.h"

#include <array>
#include <optional>
#include <set>
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
    /// @param numbersBefore  the number that each blank had before, 0 for a new one, if that is known
    void Reload(int blankCount, const std::vector<int> &hardBlanks = {}, const std::vector<int> &numbersBefore = {});

    int BlankCount() const
    {
        return int(m_isHard.size()) - 1;
    }

    /// Whether the answer of a blank is shown.
    bool bolOpen(int blank) const
    {
        return IsOpen(m_isOnlyHard, blank);
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
        return Current().number;
    }

    /// Number of the lap, from 1: another one begins when answers are hidden after all of them were shown. Studying
    /// only hard blanks has laps of its own.
    int Lap() const
    {
        return Current().lap;
    }

    /// Begins a new round: hides all answers or, while only hard blanks are studied, hides those and shows the others.
    void HideAll();

    /// Begins a new round of all blanks, also while only hard ones are studied.
    void HideAllOfFile();

    /// Switches to studying only the blanks marked as hard, which begins a new round of them, or back to all, which
    /// brings back every answer as it was before.
    void StudyOnlyHard(bool isOnlyHard);

    bool IsOnlyHard() const
    {
        return m_isOnlyHard;
    }

    /// The blanks whose answers are shown while all are studied, as few ranges as possible; none if there would be more
    /// than `most`. Takes time proportional to the number of blanks.
    std::vector<BlankRange> ShownRanges(size_t most) const;

    /// Shows the answers of some ranges of blanks, ascending, without counting them, which begins a new round. Does
    /// nothing once an answer was shown, or while only hard blanks are studied.
    void ShowAgain(const std::vector<BlankRange> &ranges);

    /// Whether the last new round, or the last switch between hard blanks and all, can be undone: no answer has been
    /// shown or hidden since.
    bool CanUndo() const
    {
        return m_before.has_value();
    }

    /// Undoes the last new round or switch. Counted answers stay counted.
    void Undo();

    /// Whether a blank is marked as hard.
    bool IsHard(int blank) const
    {
        return m_isHard[size_t(blank)];
    }

    /// Marks a blank as hard, or removes the mark. Its answer stays as it is, unless the last mark is removed while
    /// only hard blanks are studied: then all are studied again, as they were before.
    void ToggleHard(int blank);

    /// Marks a blank as hard because its answer was not known.
    void MarkMissed(int blank);

    /// The hard blanks whose answers were shown in this round and not marked since, ascending, while only hard blanks
    /// are studied. Takes time proportional to the number of hard blanks.
    std::vector<int> LearnedBlanks() const;

    /// Removes the marks of those.
    void RemoveLearnedMarks();

    int HardCount() const
    {
        return int(m_hardBlanks.size());
    }

    /// All blanks marked as hard, ascending.
    const std::vector<int> &HardBlanks() const
    {
        return m_hardBlanks;
    }

    /// Number of hard blanks whose answers are shown while only hard blanks are studied.
    int HardShownCount() const
    {
        return m_rounds[1].hardShownCount;
    }

    /// The first hard blank after another whose answer is hidden, or else the first of all; 0 if there is none.
    int NextHiddenHard(int after) const;

    /// Changes whenever marks do.
    unsigned MarksVersion() const
    {
        return m_marksVersion;
    }

    int ShownCount() const
    {
        return Current().shownCount;
    }

    /// Whether all answers are as they were when the round began.
    bool IsUntouched() const
    {
        return Current().changedCount == 0;
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

    /// Whether one of these was shown while all blanks were studied.
    bool HasShownOfAll() const
    {
        return m_hasShownOfAll;
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
        int changedCount = 0; ///< blanks that have changed since it began
        int shownCount = 0;
        int hardShownCount = 0; ///< kept in rounds of hard blanks only
        int lap = 1;
    };

    /// State of a blank in the round of hard blanks that can be restored.
    struct KeptBlank
    {
        int blank;
        bool wasShown;
        bool wasChanged;
    };

    /// What Undo restores.
    struct Before
    {
        bool isOnlyHard;
        std::array<Round, 2> rounds;
        std::set<int> missed;
        std::vector<KeptBlank> kept{}; ///< blanks whose marks were changed since
    };

    const Round &Current() const
    {
        return m_rounds[m_isOnlyHard];
    }
    bool IsShownAtFirst(bool isOnlyHard, int blank) const
    {
        return isOnlyHard && !m_isHard[size_t(blank)];
    }
    bool IsChanged(bool isOnlyHard, int blank) const
    {
        return m_changedIn[isOnlyHard][size_t(blank)] == m_rounds[isOnlyHard].number;
    }
    bool IsOpen(bool isOnlyHard, int blank) const
    {
        return IsChanged(isOnlyHard, blank) != IsShownAtFirst(isOnlyHard, blank);
    }
    void Change(bool isOnlyHard, int blank);
    int NextLap(bool isOnlyHard) const;
    void BeginRound(bool isOnlyHard, int lap);
    void KeepBefore();
    bool WasShownBefore(int blank);
    void MarkAsHard(const std::vector<int> &blanks);

    // Studying all blanks, [0], and only hard ones, [1], have a round each, so that the one is as it was after the
    // other. m_changedIn has the round in which each blank was last shown or hidden; 0 for none. This makes hiding all
    // answers a single step. Indexed by blank number from 1; element 0 is unused.
    bool m_isOnlyHard = false;
    std::array<Round, 2> m_rounds;
    std::array<std::vector<unsigned>, 2> m_changedIn;
    unsigned m_lastNumber = 1; // largest round number used
    std::optional<Before> m_before;

    std::vector<bool> m_isHard{false}; // indexed like m_changedIn
    std::vector<int> m_hardBlanks;     // the same, ascending
    std::set<int> m_missed;            // in the round of hard blanks
    unsigned m_marksVersion = 0;

    int m_lastShown = 0;
    int m_openCount = 0;
    bool m_hasShownOfAll = false;
    int m_markLine = 0;
};

/// Blanks on the lines that are in view as a whole, or on the top line.
BlankRange VisibleBlanks(const DisplayText &text, const PageInView &page);

/// First blank in a range whose answer is hidden, or 0. While only hard blanks are studied, others do not count: they
/// are hidden only where the user has done so.
int FirstHiddenBlank(const StudyRound &round, const BlankRange &range);

/// Blank at a click, or 0 if none is hit.
/// @param xPx, yPx  pixels inside picText; yPx <= 5 is the top margin and hits nothing
/// @return 0 also for a click exactly on the edge of a box, or left of the text on a box that is partly out of view
int HitTest(const DisplayText &text, int xPx, int yPx, const PageInView &page, const PageLayout &layout);

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
/// line 1 after the last page if the file's last answer is shown, or if the turn would otherwise change nothing; where
/// lines wrap, in any case when the last line is at the top.
/// @return the new top line, 1..page.maximum
int TurnPage(StudyRound *round, const PageInView &page);

/// The top line of a random page with a hidden answer, out of the pages that Enter turns through. The page in view is
/// chosen only if no other one has any. 0 if no answer is hidden.
int RandomPage(const StudyRound &round, const DisplayText &text, const PageInView &page, QRandomGenerator *random);

/// The same for hard blanks while only those are studied; there are fewer of them.
constexpr int MinHardToAsk = 5;

/// "32個の正解をすべて表示しました。" followed by the question whether to go on.
QString AllShownMessage(int blankCount);

/// The same after a round of hard blanks, and the question that comes before it: whether the marks of the answers that
/// were known shall be removed.
QString HardShownMessage(int hardCount);
QString LearnedMessage(int learnedCount);
