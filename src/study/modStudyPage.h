// SPDX-FileCopyrightText: 2026 The Kotoban developers
// SPDX-License-Identifier: MIT

// The page that is studied: the open text, which answers are shown, and every place in that text: the lines and cells
// in view, the keyboard target, the hit of a search, the hint, and what undo restores. Nobody else holds one, so when
// the text is replaced, none is left that points into the old text.
//
// Commands change the page and return what there is to repaint, to say and to ask. Lines and blanks are numbered from
// 1, 0 meaning none; cells from 0. A command takes the same time whatever the length of the file.
#pragma once

#include "study/modClickTarget.h"

#include <QStringList>

/// What a command did, for the window that shows the page.
struct [[nodiscard]] PageChange
{
    // To repaint.
    bool isPageChanged = false;   ///< everything: the page has moved, or any number of answers were shown or hidden
    bool isTargetMoved = false;   ///< the frame of the keyboard target
    bool isHitMoved = false;      ///< the mark of a search's hit
    bool isLineMarked = false;    ///< the line numbers
    std::vector<int> answers{};   ///< blanks in view whose answers may have been shown or hidden
    std::vector<int> hints{};     ///< blanks in view whose hint was shown or hidden
    int markedBlank = 0;          ///< blank that was marked as hard, or no longer is; may be out of view
    bool areMarksRemoved = false; ///< those of any number of blanks

    // To say.
    bool isCounted = false;          ///< the answer count has grown
    std::optional<QString> notice{}; ///< what was done and can be undone; empty if an earlier notice is out of date
    QString answer{};                ///< answers shown by a key, to be read aloud
    QString word{};                  ///< word or answer that was clicked, to be read aloud
    QString picture{};               ///< name of the picture that was clicked

    /// To ask, with yes and no: whether to go on after the last answer. TurnPage goes on. Or else, if isAboutMarks,
    /// whether to remove the marks of answers that were known: RemoveLearnedMarks does; Enter goes on in either case.
    QString question{};
    bool isAboutMarks = false;
};

class StudyPage
{
  public:
    /// Shows a new file from its first line on, with all answers hidden.
    /// @param hardBlanks  ascending
    /// @param lastLine  where the user stopped the last time, to be offered; 0 if unknown
    void Load(DisplayText text, const std::vector<int> &hardBlanks, int lastLine);

    /// Replaces the text by that of the same file after it was changed. Answers are kept as StudyRound::Reload says,
    /// and so are the top line, the first cell in view and the offered line, as far as they still exist; all other
    /// places are forgotten.
    /// @param hardBlanks  ascending
    /// @param numbersBefore  the number that each blank had before, 0 for a new one, if that is known
    void Reload(DisplayText text, const std::vector<int> &hardBlanks, const std::vector<int> &numbersBefore = {});

    /// Shows no file, in which every command does nothing.
    void Clear();

    bool IsFileOpen() const
    {
        return m_isFileOpen;
    }

    /// The text of the open file; without lines if there is none. Its address never changes.
    const DisplayText &Text() const
    {
        return m_text;
    }
    const StudyRound &Round() const
    {
        return m_round;
    }

    /// The geometry of the page, with its first cell in view.
    const PageLayout &Layout() const
    {
        return m_layout;
    }
    const PageInView &InView() const
    {
        return m_view;
    }
    int TopLine() const
    {
        return m_view.topLine;
    }
    int LargestLeftCell() const
    {
        return m_layout.isWrapping ? 0 : std::max(0, m_text.LongestLineCells() - m_layout.CellsInView());
    }

    /// The keyboard target, which is in view, and the hit that a search went to; on line 0 if there is none.
    const TextSpan &Current() const
    {
        return m_places.current;
    }
    const TextSpan &Found() const
    {
        return m_places.found;
    }

    /// Where assistive technology is to look: at the keyboard target or what was shown since, an answer or a hint; on
    /// line 0 if there is nothing such in view.
    const TextSpan &Caret() const
    {
        return m_places.caret;
    }

    /// Whether there is such a hit and the page has not moved since ShowFound.
    bool IsAtFound() const
    {
        return m_places.found.line > 0 && m_places.topAtFound == TopLine();
    }

    /// The hidden blank in view whose first characters are shown, and how many.
    int HintedBlank() const
    {
        return m_places.hintedBlank;
    }
    int HintLength() const
    {
        return m_places.hintLength;
    }

    /// How many hard answers are hidden while only these are studied and none of them is in view; 0 otherwise.
    int HiddenHardElsewhere() const;

    /// The line at which the user stopped the last time, until the page has moved or an answer was shown.
    int OfferedLine() const
    {
        return m_places.offeredLine;
    }

    /// Where the user stops now: the line of the answer shown last, or that of the last time; 1 if there is neither.
    int StoppedAt() const
    {
        return m_places.stoppedLine;
    }

    /// The hidden blank in view that Enter shows next.
    int NextBlank() const
    {
        return FirstHiddenBlank(m_round, VisibleBlanks(m_text, m_view));
    }

    /// The blank that the key for hard blanks marks: the chosen one, or else the one whose answer was shown last.
    int BlankToMark() const;

    /// What is at a pixel of the text area.
    ClickTarget TargetAt(int xPx, int yPx) const
    {
        return ::TargetAt(m_text, m_round, xPx, yPx, m_view, m_layout);
    }

    /// Sets another size of the page or of its rows and cells. Top line and first cell stay as far as possible; where
    /// lines wrapped, the top line comes back with the next size that allows it, unless the user has gone on meanwhile.
    /// @param layout  its first cell is ignored
    PageChange SetLayout(const PageLayout &layout);

    /// Shows the next hidden answer in view, or else turns the page, possibly after a question. While only hard blanks
    /// are studied, brings the next of them to the top in place of turning the page. In a line higher than the page,
    /// first brings the row of the answer into view.
    PageChange Enter();

    /// Marks the answer shown last as hard, because the user did not know it, and does what Enter does.
    PageChange EnterMissed();

    /// Turns the page as Enter does.
    PageChange TurnPage();

    /// Does what a left click does: shows or hides an answer, says a word, opens a picture, and marks a line or none.
    /// Rows of a shown answer that are not in view come into view.
    PageChange Click(const ClickTarget &target);

    /// Clicks the keyboard target, or the number of a line or of the nearest one in view.
    PageChange ClickCurrent();
    PageChange ClickLineNumber(int line);

    /// Moves the line mark by some lines, up if negative.
    PageChange MoveLineMark(int lines)
    {
        return ClickLineNumber(m_round.lngMarkLine() + lines);
    }

    /// Begins a new round with all blanks.
    PageChange HideAll();

    /// Begins a new round with only the blanks marked as hard, or goes back to all as they were before.
    PageChange StudyOnlyHard(bool isOnlyHard);

    /// Goes on where the user stopped: brings that line to the top and, unless an answer was shown meanwhile, shows
    /// again what was shown the last time. Does nothing if both are unknown.
    PageChange Resume(const std::vector<BlankRange> &shown);

    /// Removes the marks of StudyRound::LearnedBlanks.
    PageChange RemoveLearnedMarks();

    /// Undoes the last new round, StudyOnlyHard or Resume unless an answer was shown or hidden since: restores the
    /// answers, the top line and, unless another line was marked since, the line mark.
    PageChange Undo();

    /// Marks a blank as hard, or removes the mark. Does nothing for 0.
    PageChange ToggleHard(int blank);

    /// Shows all hidden answers on the line of the chosen blank, or else on that of the next one; a second call hides
    /// them. In a line higher than the page, those that are in view together with that blank.
    PageChange ToggleWholeLine();

    /// Shows the first character of the chosen answer or, if that is shown, of the next one; one more if the first ones
    /// are shown already. The last one always stays hidden. The hint lasts until it is hidden, the page moves or an
    /// answer changes.
    PageChange ShowHint();
    PageChange HideHint();

    /// Makes the next target in view the current one, or backwards the previous one.
    /// @param withWords  whether words are targets too
    PageChange GoToTarget(bool backwards, bool withWords);

    /// Marks a hit and brings it into view, with a few lines above it if the page has to move; line 0 marks nothing.
    PageChange ShowFound(const TextSpan &found);

    /// Brings a line to the top, or the nearest possible one, and leaves no target current.
    PageChange ShowLine(int line);

    /// The same, but does nothing if that line is at the top already.
    PageChange MoveToLine(int line);

    /// Moves by some lines, up if negative.
    PageChange MoveByLines(int lines);

    /// Moves by some lines, up if negative, or, within a line higher than the page, by as many rows. Where lines wrap,
    /// not further than a page turn, so that no line is passed over unseen.
    PageChange MoveBySteps(int steps);

    /// Moves to the next page or the previous one, of which one line stays in view, or to the last one that leaves no
    /// row empty.
    PageChange MoveToNextPage()
    {
        return MoveByLines(m_view.pageSize);
    }
    PageChange MoveToPreviousPage();
    PageChange MoveToEnd();

    /// Moves to a random page that still has a hidden answer.
    PageChange MoveToRandomPage(QRandomGenerator *random);

    /// Makes a cell, or the nearest possible one, the first in view.
    PageChange MoveToCell(int cell);

    /// Moves sideways by some cells, to the left if negative.
    PageChange MoveByCells(int cells)
    {
        return MoveToCell(m_layout.leftCell + cells);
    }

  private:
    /// What undoing a new round restores, beside the answers.
    struct Before
    {
        int topLine = 1;
        int markLine = 0;
        int markLineAfter = 0; ///< the line mark when the new round began
    };

    /// Every place in the text. A new text begins without any.
    struct Places
    {
        int topLineWished = 0; ///< top line before a size of the page that does not allow it; 0 for the one in view
        TextSpan current{};
        TextSpan caret{};
        TextSpan found{};
        int topAtFound = 0; ///< top line after the search went there
        int hintedBlank = 0;
        int hintLength = 0;
        int wholeLineOf =
            0; ///< blank whose line was last shown as a whole, if no other answer was shown or hidden since
        int offeredLine = 0;
        int stoppedLine = 1;
        int finishedCount = 0; ///< hard answers of the round when its last one was shown and the user asked; 0 before
        Before before{};       ///< belongs to the round that undo restores
    };

    void ReplaceText(DisplayText text);
    void Place(int topLine, int topCell = 0);
    template <typename Action>
    PageChange BeginRound(Action action);
    PageChange Show(int blank);
    PageChange EnterOnlyHard();
    PageChange TurnToHard();
    PageChange Toggle(int blank);
    bool SetCurrent(const TextSpan &current);
    void StopAt(int line);
    bool ScrollTo(int topCell);
    bool BringIntoView(const TextSpan &span);
    bool BringRowsIntoView(const TextSpan &span);
    bool BringLineIntoView(const BlankRange &onLine);
    BlankRange InViewWith(int blank) const;
    int ChosenBlank() const;

    DisplayText m_text;
    StudyRound m_round;
    bool m_isFileOpen = false;
    PageLayout m_layout; // with the first cell in view
    PageInView m_view;   // follows from text, layout and top line
    Places m_places;
};
