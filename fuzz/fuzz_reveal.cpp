// SPDX-FileCopyrightText: 2026 The Kotoban developers
// SPDX-License-Identifier: MIT

// Studying any text with any sequence of keys, clicks, searches, new sizes, new texts and files closed and opened, with
// lines that wrap or do not.
#include "input.h"
#include "require.h"
#include "study/modPageText.h"
#include "text/modReadText.h"

#include <QRandomGenerator>

namespace {

/// What a page looks like, and its count.
struct Seen
{
    explicit Seen(const StudyPage &page)
        : view(page.InView()), leftCell(page.Layout().leftCell), current(page.Current()), found(page.Found()),
          hintedBlank(page.HintedBlank()), markLine(page.Round().lngMarkLine()), count(page.Round().lngOpenCount()),
          round(page.Round().RoundNumber()), isOnlyHard(page.Round().IsOnlyHard())
    {
        for (int blank = 1; blank <= page.Round().BlankCount(); ++blank) {
            isShown.push_back(page.Round().bolOpen(blank));
            isHard.push_back(page.Round().IsHard(blank));
        }
    }

    PageInView view;
    int leftCell;
    TextSpan current;
    TextSpan found;
    int hintedBlank;
    int markLine;
    int count;
    unsigned round;
    bool isOnlyHard;
    std::vector<bool> isShown{false}; // blanks are numbered from 1
    std::vector<bool> isHard{false};
};

DisplayText TextOf(const QByteArray &bytes)
{
    StudyLines lines;
    ReadAllLines(bytes, ExpandTabs::No, &lines);
    return DisplayText(std::move(lines));
}

class Study
{
  public:
    explicit Study(const QByteArray &text) : m_bytes(text)
    {
        m_page.Load(TextOf(text), {}, int(text.size() % 9));
        Run([&] { return Resize(4, 20, 0, text.size() % 2 == 0); });
    }

    /// Runs the next command and checks what must hold after each.
    void Run(FuzzInput *input)
    {
        const int action = input->TakeByte();
        if (action % 16 == 8)
            ChangeText(input->TakeByte());
        else if (action % 16 == 9)
            StudyByEnterAlone(input);
        else if (action % 16 > 12)
            PressEnter();
        else
            Run([&] { return Do(action, input); });
    }

  private:
    PageChange Do(int action, FuzzInput *input)
    {
        const int byte = input->TakeByte();
        switch (action % 16) {
        case 0:
            return Click(m_page.TargetAt(byte, input->TakeByte() / 2));
        case 1:
            return m_page.HideAll();
        case 2:
            return Resize(byte, input);
        case 3:
            return m_page.GoToTarget(byte > 127, byte % 2 == 0);
        case 4:
            return m_page.Current().line > 0 && byte % 2 == 0
                       ? Click(TargetOf(m_page.Text(), m_page.Round(), m_page.Current()))
                       : ToggleWholeLine();
        case 5: {
            const int blanks = m_page.Round().BlankCount();
            return m_page.ToggleHard(byte % 2 == 0 || blanks == 0 ? m_page.BlankToMark() : byte % blanks + 1);
        }
        case 6:
            return byte % 4 == 0 ? m_page.EnterMissed() : m_page.StudyOnlyHard(byte > 127);
        case 7:
            m_isUndo = m_page.Round().CanUndo();
            return m_page.Undo();
        case 10:
            return m_page.ShowHint();
        case 11: {
            const int line = m_page.Text().LineCount() == 0 ? 0 : byte % (m_page.Text().LineCount() + 1);
            return m_page.ShowFound(line == 0 ? TextSpan() : TextSpan{line, 1, int(m_page.Text().Line(line).size())});
        }
        default:
            return Move(byte % 9, input->TakeByte());
        }
    }

    PageChange Move(int way, int count)
    {
        QRandomGenerator random{quint32(count)};
        switch (way) {
        case 0:
            return m_page.HideHint();
        case 1:
            return m_page.ClickLineNumber(count);
        case 2:
            return m_page.MoveLineMark(count % 9 - 4);
        case 3:
            return m_page.MoveByLines(count % 19 - 9);
        case 4:
            return count % 2 == 0 ? m_page.MoveToNextPage() : m_page.MoveToPreviousPage();
        case 5:
            return m_page.MoveToEnd();
        case 6:
            return m_page.MoveToRandomPage(&random);
        case 7:
            return m_page.MoveByCells(count - 128);
        default:
            return m_page.ShowLine(count);
        }
    }

    PageChange Resize(int byte, FuzzInput *input)
    {
        const int other = input->TakeByte();
        return Resize(byte % 9, other % 40, byte / 9, other >= 128);
    }

    /// Sets another size of the page, in rows and cells without zoom, and another zoom.
    PageChange Resize(int rows, int cells, int zoom, bool isWrapping)
    {
        m_isResized = true;
        return m_page.SetLayout({.cellWidthPx = 7 + zoom,
                                 .linePitchPx = 16 + 2 * zoom,
                                 .widthPx = cells * 7,
                                 .heightPx = PageLayout::TopMarginPx + rows * 16,
                                 .hasLineNumbers = cells % 2 == 1,
                                 .isWrapping = isWrapping});
    }

    PageChange Click(const ClickTarget &target)
    {
        Require(target.blank == 0 || target == ClickTarget{.blank = target.blank}); // a hidden answer is never spoken
        PageChange change = m_page.Click(target);
        const bool isHidden = target.blank > 0 && !m_page.Round().bolOpen(target.blank);
        Require(!isHidden || (change.word.isEmpty() && change.picture.isEmpty()));
        if (change.isCounted)
            RequireRowsInView(target.blank);
        return change;
    }

    PageChange ToggleWholeLine()
    {
        PageChange change = m_page.ToggleWholeLine();
        if (change.isCounted)
            for (const int blank : change.answers)
                RequireRowsInView(blank);
        return change;
    }

    void PressEnter()
    {
        const Seen before(m_page);
        const int next = m_page.NextBlank();
        Run([this] { return m_page.Enter(); });
        if (!m_change.answers.empty()) {
            Require(m_change.answers.size() == 1 && m_change.isCounted);
            RequireInView(m_change.answers.front());
            return;
        }
        if (next > 0 && m_page.TopLine() == before.view.topLine && m_page.InView().TopCell() != before.view.TopCell()) {
            RequireInView(next); // the next Enter opens it
            return;
        }
        for (const int blank : VisibleBlanks(m_page.Text(), before.view))
            Require(before.isShown[size_t(blank)] || (before.isOnlyHard && !before.isHard[size_t(blank)]));
        const StudyRound &round = m_page.Round();
        if (m_change.question.isEmpty()) { // the next hard answer is in view, or a new round has begun
            Require(!before.isOnlyHard || round.RoundNumber() != before.round || m_page.NextBlank() > 0);
            return;
        }
        if (m_change.isAboutMarks) {
            Require(before.isOnlyHard && round.HardShownCount() == round.HardCount());
            if (round.HardCount() % 2 == 0)
                Run([this] { return m_page.RemoveLearnedMarks(); });
            Run([this] { return m_page.Enter(); });
            Require(m_change.answers.empty() && !m_change.isAboutMarks);
        }
        Require(before.isOnlyHard || (round.AllShown() && round.BlankCount() >= MinBlanksToAsk));
        if (!m_change.question.isEmpty())
            Run([this] { return m_page.TurnPage(); });
    }

    /// An answer is in view as a whole, or as much of it as the page has room for.
    void RequireInView(int blank) const
    {
        const PageInView &view = m_page.InView();
        const CellRange cells = m_page.Text().Cells(blank);
        const int line = m_page.Text().Blanks().LineOf(blank);
        Require(view.Holds(line));
        Require(view.isWrapped || LeftCellShowing(cells, m_page.Layout()) == m_page.Layout().leftCell);
        RequireRowsInView(blank);
    }

    /// Its last rows may be below a page that its first ones fill.
    void RequireRowsInView(int blank) const
    {
        const PageInView &view = m_page.InView();
        const CellRange cells = m_page.Text().Cells(blank);
        const int line = m_page.Text().Blanks().LineOf(blank);
        int next = cells.start;
        for (const PageRow &row : view.rows)
            if (row.line == line && row.cells.start <= next)
                next = std::max(next, InRow(cells, row).end);
        const bool isPageFull = view.rows.back().cells.end == next && view.TopCell() <= cells.start &&
                                view.rows.front().cells.end > cells.start;
        Require(next == cells.end || isPageFull);
    }

    /// Enter alone opens every answer of a file in its order, each once and in view, whatever the size of the page.
    void StudyByEnterAlone(FuzzInput *input)
    {
        m_page.Load(DisplayText(m_page.Text()), {}, 0);
        m_canUndo = false;
        const int blanks = m_page.Round().BlankCount();
        const unsigned round = m_page.Round().RoundNumber();
        // A press opens an answer, goes down by a line or a row at least, or turns back to the top.
        const int lines = m_page.Text().LineCount();
        const int presses = 2 * int(lines == 0 ? 0 : m_page.Text().Lines(1, lines).size()) + lines + 3;
        int left = presses;
        for (int shown = 0; shown < blanks;) {
            if (const int byte = input->TakeByte(); byte % 4 == 3 && !input->IsAtEnd()) {
                Run([&] { return Resize(byte, input); });
                left = presses;
            }
            const PageChange change = m_page.Enter();
            Require(left-- > 0 && change.question.isEmpty());
            if (change.answers.empty())
                continue;
            Require(change.answers == std::vector<int>{++shown});
            RequireInView(shown);
        }
        Require(m_page.Round().lngOpenCount() == blanks && m_page.Round().RoundNumber() == round);
    }

    /// Closes the file, opens one, or reads the open one again after it became shorter or longer.
    void ChangeText(int number)
    {
        const QByteArray half = m_bytes.first(m_bytes.lastIndexOf('\n', m_bytes.size() / 2) + 1);
        const QByteArray texts[] = {m_bytes, half, m_bytes + '\n' + m_bytes, "[x]\n" + m_bytes, QByteArray()};
        const DisplayText text = TextOf(texts[number % 5]);
        if (number < 192 && m_page.IsFileOpen())
            return ReadAgain(text);
        m_page.Clear();
        Require(!m_page.IsFileOpen() && m_page.Text().LineCount() == 0);
        if (number < 224)
            m_page.Load(text, {}, number % 9);
        m_canUndo = false;
        CheckPlaces();
        const Seen after(m_page);
        Require(after.view.topLine == 1 && after.leftCell + after.hintedBlank + after.markLine + after.count == 0);
        Require(after.current == TextSpan() && after.found == TextSpan() && !m_page.Round().CanUndo());
        Require(m_page.Round().ShownCount() + m_page.Round().HardCount() == 0);
    }

    void ReadAgain(const DisplayText &text)
    {
        const Seen before(m_page);
        const bool wasOnlyHard = m_page.Round().IsOnlyHard();
        std::vector<int> hardBlanks;
        for (int blank = 1; blank <= text.Blanks().Count(); ++blank)
            if (size_t(blank) < before.isHard.size() && before.isHard[size_t(blank)])
                hardBlanks.push_back(blank);
        m_page.Reload(text, hardBlanks);
        m_canUndo = false;
        CheckPlaces();
        const Seen after(m_page);
        Require(after.count == before.count && after.markLine == before.markLine);
        Require(after.current == TextSpan() && after.found == TextSpan() && after.hintedBlank == 0);
        Require(after.leftCell == std::min(before.leftCell, m_page.LargestLeftCell()));
        for (size_t blank = 1; blank < std::min(before.isShown.size(), after.isShown.size()); ++blank)
            Require(after.isShown[blank] == before.isShown[blank] || (wasOnlyHard && !before.isHard[blank]));
    }

    template <typename Command>
    void Run(Command command)
    {
        const Seen before(m_page);
        m_isResized = false;
        m_change = command();
        const Seen after(m_page);
        CheckPlaces();
        CheckAnswers(before, after);
        if (!m_change.isPageChanged)
            CheckRepainted(before, after);
        if (std::exchange(m_isUndo, false)) {
            const int topLine = PageAt(m_beforeRound.view.topLine, m_page.Text(), m_page.Layout()).topLine;
            Require(m_canUndo && after.isShown == m_beforeRound.isShown && after.view.topLine == topLine);
            m_canUndo = false;
            return;
        }
        const bool areMarksGone = before.isOnlyHard && !after.isOnlyHard && m_page.Round().HardCount() == 0;
        const bool isNewRound = after.round != before.round && !areMarksGone;
        if (isNewRound)
            m_beforeRound = before;
        const bool isHardOver = m_page.Round().HardCount() == 0 && m_beforeRound.isOnlyHard;
        m_canUndo = isNewRound || (m_canUndo && after.round == before.round && m_change.answers.empty() && !isHardOver);
        Require(m_canUndo == m_page.Round().CanUndo() || !m_change.answers.empty());
    }

    /// Every place is in the text and, where it must be, in view.
    void CheckPlaces() const
    {
        const DisplayText &text = m_page.Text();
        const PageInView &view = m_page.InView();
        const auto isInText = [&text](const TextSpan &span) {
            return span.line == 0 || (span.line <= text.LineCount() && span.Index() >= 0 &&
                                      span.Index() + span.length <= text.Line(span.line).size());
        };
        Require(view.topLine >= 1 && view.topLine <= view.maximum && view.lastLine <= text.LineCount());
        Require(view.rows == PageAt(view.topLine, text, m_page.Layout(), view.TopCell()).rows);
        Require(int(view.rows.size()) <= m_page.Layout().RowsPerPage());
        for (size_t i = 1; i < view.rows.size(); ++i) {
            const PageRow &above = view.rows[i - 1];
            const bool goesOn = view.rows[i].line == above.line;
            Require(goesOn || view.rows[i].line == above.line + 1);
            Require(view.rows[i].cells.start == (goesOn ? above.cells.end : 0));
            Require(!goesOn || view.rows[i].cells.end > view.rows[i].cells.start);
        }
        Require(m_page.Layout().leftCell >= 0 && m_page.Layout().leftCell <= m_page.LargestLeftCell());
        Require(isInText(m_page.Current()) && isInText(m_page.Found()));
        Require(m_page.Current().line == 0 || (view.Holds(m_page.Current().line) && m_page.Current().length > 0));
        const int hinted = m_page.HintedBlank();
        Require(hinted == 0 || (!m_page.Round().bolOpen(hinted) && view.Holds(text.Blanks().LineOf(hinted)) &&
                                text.Answer(hinted).size() > 1));
        Require(m_page.OfferedLine() == 0 || (m_page.OfferedLine() > 1 && m_page.OfferedLine() <= text.LineCount()));
        Require(SpanSpokenAt(m_page, SpokenCursor(m_page)).line > 0 || text.LineCount() == 0);
    }

    /// Answers are shown and hidden only in view; one that was shown counts once. Only a new round changes others.
    void CheckAnswers(const Seen &before, const Seen &after) const
    {
        Require(m_page.Round().ShownCount() == std::count(after.isShown.begin(), after.isShown.end(), true));
        const std::vector<int> &hardBlanks = m_page.Round().HardBlanks();
        Require(std::count(after.isHard.begin(), after.isHard.end(), true) == std::ssize(hardBlanks));
        const auto isShownHard = [&after](int blank) { return after.isShown[size_t(blank)]; };
        Require(!after.isOnlyHard ||
                m_page.Round().HardShownCount() == std::count_if(hardBlanks.begin(), hardBlanks.end(), isShownHard));
        std::vector<bool> isShown = before.isShown;
        int shown = 0;
        for (const int blank : m_change.answers) {
            Require(before.view.Shows(m_page.Text().Blanks().LineOf(blank)));
            shown += int(after.isShown[size_t(blank)] && !isShown[size_t(blank)]);
            isShown[size_t(blank)] = after.isShown[size_t(blank)];
        }
        Require(after.round != before.round || after.isShown == isShown);
        Require(after.count == before.count + shown && m_change.isCounted == (shown > 0));
        Require(m_change.answer.isEmpty() || shown > 0);
    }

    /// Whatever looks different is repainted.
    void CheckRepainted(const Seen &before, const Seen &after) const
    {
        Require(after.view.topLine == before.view.topLine && after.leftCell == before.leftCell);
        Require(m_isResized || after.view.rows == before.view.rows);
        Require(m_change.isTargetMoved || after.current == before.current);
        Require(m_change.isHitMoved || after.found == before.found);
        Require(m_change.isLineMarked || after.markLine == before.markLine);
        std::vector<int> repainted = m_change.answers;
        repainted.insert(repainted.end(), m_change.hints.begin(), m_change.hints.end());
        repainted.push_back(m_change.markedBlank);
        for (const int blank : m_page.Text().Blanks().OnLines(after.view.topLine, after.view.LastShownLine())) {
            const size_t i = size_t(blank);
            const bool isSame = after.isShown[i] == before.isShown[i] && after.isHard[i] == before.isHard[i] &&
                                (after.hintedBlank == blank) == (before.hintedBlank == blank);
            Require(isSame || std::find(repainted.begin(), repainted.end(), blank) != repainted.end());
        }
    }

    QByteArray m_bytes;
    StudyPage m_page;
    PageChange m_change; // by the last command
    bool m_canUndo = false;
    bool m_isResized = false;   // by the last command
    bool m_isUndo = false;      // whether the command undoes something
    Seen m_beforeRound{m_page}; // that undo restores
};

} // namespace

// Input: the text up to a zero byte, then the commands.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    FuzzInput input(data, size);
    const QByteArray text = input.TakeText();
    StudyLines lines;
    ReadAllLines(text, ExpandTabs::No, &lines);
    if (!lines.BracketsTakeTurns())
        return 0; // not a valid study file
    Study study(text);
    while (!input.IsAtEnd())
        study.Run(&input);
    return 0;
}
