// SPDX-FileCopyrightText: 2026 The Kotoban developers
// SPDX-License-Identifier: MIT

#include "study/modStudyRound.h"

#include <QRandomGenerator>

#include <algorithm>

using namespace Qt::Literals::StringLiterals;

void StudyRound::Load(int blankCount, const std::vector<int> &hardBlanks)
{
    *this = StudyRound();
    m_changedIn.fill(std::vector<unsigned>(size_t(blankCount) + 1));
    MarkAsHard(hardBlanks);
}

void StudyRound::Reload(int blankCount, const std::vector<int> &hardBlanks, const std::vector<int> &numbersBefore)
{
    // While only hard blanks are studied, the new marks decide what is hidden, and only those already hard keep
    // their state.
    std::array<std::vector<int>, 2> shown;
    std::set<int> missed;
    for (int blank = 1; blank <= blankCount; ++blank) {
        const int before = numbersBefore.empty() ? blank : numbersBefore[size_t(blank) - 1];
        if (before == 0 || before > BlankCount())
            continue;
        if (IsOpen(false, before))
            shown[0].push_back(blank);
        if (m_isOnlyHard && IsHard(before) && IsOpen(true, before))
            shown[1].push_back(blank);
        if (m_missed.contains(before))
            missed.insert(blank);
    }
    m_changedIn.fill(std::vector<unsigned>(size_t(blankCount) + 1));
    MarkAsHard(hardBlanks);
    m_before.reset();
    m_lastShown = 0;
    for (const bool isOnlyHard : {false, true}) {
        BeginRound(isOnlyHard, m_rounds[isOnlyHard].lap);
        for (const int blank : shown[isOnlyHard])
            if (!IsOpen(isOnlyHard, blank))
                Change(isOnlyHard, blank);
    }
    std::erase_if(missed, [this](int blank) { return !IsHard(blank); });
    m_missed = std::move(missed);
}

void StudyRound::MarkAsHard(const std::vector<int> &blanks)
{
    m_hardBlanks = blanks;
    m_isHard.assign(m_changedIn[0].size(), false);
    for (const int blank : blanks)
        m_isHard[size_t(blank)] = true;
    m_isOnlyHard = m_isOnlyHard && !m_hardBlanks.empty();
}

/// Shows a hidden answer or hides a shown one, without counting it.
void StudyRound::Change(bool isOnlyHard, int blank)
{
    Round &round = m_rounds[isOnlyHard];
    const bool wasChanged = IsChanged(isOnlyHard, blank);
    m_changedIn[isOnlyHard][size_t(blank)] = wasChanged ? 0 : round.number;
    round.changedCount += wasChanged ? -1 : 1;
    const int shown = IsOpen(isOnlyHard, blank) ? 1 : -1;
    round.shownCount += shown;
    round.hardShownCount += IsHard(blank) ? shown : 0;
}

bool StudyRound::Toggle(int blank)
{
    m_before.reset();
    Change(m_isOnlyHard, blank);
    if (bolOpen(blank)) {
        ++m_openCount;
        m_hasShownOfAll = m_hasShownOfAll || !m_isOnlyHard;
        m_lastShown = blank;
    }
    return bolOpen(blank);
}

void StudyRound::ToggleLine(const BlankRange &blanks)
{
    const bool hasHidden = std::ranges::any_of(blanks, [this](int blank) { return !bolOpen(blank); });
    for (const int blank : blanks)
        if (hasHidden ? !bolOpen(blank) : !IsShownAtFirst(m_isOnlyHard, blank))
            Toggle(blank);
}

void StudyRound::HideAll()
{
    if (IsUntouched())
        return; // nothing happened in this round, so what was before it stays restorable
    KeepBefore();
    BeginRound(m_isOnlyHard, NextLap(m_isOnlyHard));
}

void StudyRound::HideAllOfFile()
{
    if (m_isOnlyHard)
        StudyOnlyHard(false);
    else if (!IsUntouched())
        KeepBefore();
    if (!IsUntouched())
        BeginRound(false, NextLap(false));
}

void StudyRound::StudyOnlyHard(bool isOnlyHard)
{
    if (isOnlyHard == m_isOnlyHard || m_hardBlanks.empty())
        return;
    KeepBefore();
    m_isOnlyHard = isOnlyHard;
    if (isOnlyHard)
        BeginRound(true, 1);
}

std::vector<BlankRange> StudyRound::ShownRanges(size_t most) const
{
    std::vector<BlankRange> ranges;
    for (int blank = 1; blank <= BlankCount(); ++blank) {
        if (!IsOpen(false, blank))
            continue;
        int end = blank + 1;
        while (end <= BlankCount() && IsOpen(false, end))
            ++end;
        if (ranges.size() == most)
            return {};
        ranges.emplace_back(blank, end);
        blank = end;
    }
    return ranges;
}

void StudyRound::ShowAgain(const std::vector<BlankRange> &ranges)
{
    if (m_isOnlyHard || !IsUntouched() || ranges.empty())
        return;
    KeepBefore();
    BeginRound(false, Current().lap);
    for (const BlankRange &range : ranges)
        for (int blank = range.front(); blank <= qMin(range.back(), BlankCount()); ++blank)
            Change(false, blank);
}

void StudyRound::KeepBefore()
{
    m_before = Before{.isOnlyHard = m_isOnlyHard, .rounds = m_rounds, .missed = m_missed};
}

/// The lap after a round: another one if all of its answers are shown.
int StudyRound::NextLap(bool isOnlyHard) const
{
    const Round &round = m_rounds[isOnlyHard];
    const bool isComplete = isOnlyHard ? round.hardShownCount == HardCount() : round.shownCount == BlankCount();
    return round.lap + (isComplete ? 1 : 0);
}

void StudyRound::BeginRound(bool isOnlyHard, int lap)
{
    m_rounds[isOnlyHard] =
        Round{.number = ++m_lastNumber, .shownCount = isOnlyHard ? BlankCount() - HardCount() : 0, .lap = lap};
    if (isOnlyHard)
        m_missed.clear();
}

void StudyRound::Undo()
{
    m_isOnlyHard = m_before->isOnlyHard;
    m_rounds = m_before->rounds;
    m_missed = std::move(m_before->missed);
    Round &round = m_rounds[1];
    for (const KeptBlank &kept : m_before->kept) {
        const bool isChanged = kept.wasShown != IsShownAtFirst(true, kept.blank);
        m_changedIn[1][size_t(kept.blank)] = isChanged ? round.number : 0;
        round.changedCount += int(isChanged) - int(kept.wasChanged);
    }
    m_before.reset();
}

/// Whether an answer is shown in the round of hard blanks that can be restored. That is derived from whether the blank
/// is hard, so it is saved before that changes.
bool StudyRound::WasShownBefore(int blank)
{
    const auto kept = std::ranges::find(m_before->kept, blank, &KeptBlank::blank);
    if (kept != m_before->kept.end())
        return kept->wasShown;
    const bool wasChanged = m_changedIn[1][size_t(blank)] == m_before->rounds[1].number;
    const bool wasShown = wasChanged != IsShownAtFirst(true, blank);
    m_before->kept.push_back({blank, wasShown, wasChanged});
    return wasShown;
}

void StudyRound::ToggleHard(int blank)
{
    const bool isHard = !IsHard(blank);
    const int added = isHard ? 1 : -1;
    if (m_before)
        m_before->rounds[1].hardShownCount += WasShownBefore(blank) ? added : 0;
    const bool isOpen = IsOpen(true, blank);
    m_isHard[size_t(blank)] = isHard;
    const auto at = std::ranges::lower_bound(m_hardBlanks, blank);
    if (isHard)
        m_hardBlanks.insert(at, blank);
    else
        m_hardBlanks.erase(at);
    ++m_marksVersion;
    if (isHard && m_isOnlyHard)
        m_missed.insert(blank);
    else
        m_missed.erase(blank);
    // In the round of hard blanks the answer stays as it is, although such a round begins with others than before.
    Round &round = m_rounds[1];
    const bool isChanged = isOpen != IsShownAtFirst(true, blank);
    round.changedCount += int(isChanged) - int(IsChanged(true, blank));
    round.hardShownCount += isOpen ? added : 0;
    m_changedIn[1][size_t(blank)] = isChanged ? round.number : 0;
    if (!m_hardBlanks.empty())
        return;
    if (m_isOnlyHard || (m_before && m_before->isOnlyHard))
        m_before.reset(); // nothing can go back to studying only hard blanks
    m_isOnlyHard = false;
}

void StudyRound::MarkMissed(int blank)
{
    if (!IsHard(blank))
        ToggleHard(blank);
    if (m_isOnlyHard)
        m_missed.insert(blank);
}

std::vector<int> StudyRound::LearnedBlanks() const
{
    std::vector<int> learned;
    if (m_isOnlyHard)
        std::ranges::copy_if(m_hardBlanks, std::back_inserter(learned),
                             [this](int blank) { return bolOpen(blank) && !m_missed.contains(blank); });
    return learned;
}

void StudyRound::RemoveLearnedMarks()
{
    for (const int blank : LearnedBlanks()) {
        m_isHard[size_t(blank)] = false; // which leaves the answer shown
        m_changedIn[1][size_t(blank)] = 0;
        --m_rounds[1].changedCount;
        --m_rounds[1].hardShownCount;
    }
    std::erase_if(m_hardBlanks, [this](int blank) { return !IsHard(blank); });
    ++m_marksVersion;
    m_before.reset();
    m_isOnlyHard = m_isOnlyHard && !m_hardBlanks.empty();
}

int StudyRound::NextHiddenHard(int after) const
{
    if (m_hardBlanks.empty() || HardShownCount() == HardCount())
        return 0;
    const auto isHidden = [this](int blank) { return !IsOpen(true, blank); };
    const auto next = std::find_if(std::ranges::upper_bound(m_hardBlanks, after), m_hardBlanks.end(), isHidden);
    return next != m_hardBlanks.end() ? *next : *std::ranges::find_if(m_hardBlanks, isHidden);
}

BlankRange VisibleBlanks(const DisplayText &text, const PageInView &page)
{
    return text.Blanks().OnLines(page.topLine, page.lastLine);
}

int FirstHiddenBlank(const StudyRound &round, const BlankRange &range)
{
    for (const int blank : range)
        if (!round.bolOpen(blank) && (!round.IsOnlyHard() || round.IsHard(blank)))
            return blank;
    return 0;
}

int HitTest(const DisplayText &text, int xPx, int yPx, const PageInView &page, const PageLayout &layout)
{
    if (yPx <= PageLayout::TopMarginPx || xPx < layout.TextLeftPx())
        return 0;
    const size_t row = size_t(layout.RowOffsetAt(yPx));
    if (row >= page.rows.size())
        return 0;
    for (const int blank : text.BlanksOnLine(page.rows[row].line)) {
        const BoxEdges box = BoxInRow(text, blank, page.rows[row], layout);
        if (box.leftPx < xPx && xPx < box.rightPx)
            return blank;
    }
    return 0;
}

EnterDecision DecideEnter(const StudyRound &round, const DisplayText &text, const PageInView &page)
{
    if (round.BlankCount() == 0)
        return {.action = EnterAction::TurnPage, .blank = 0};
    const int hidden = FirstHiddenBlank(round, VisibleBlanks(text, page));
    if (hidden > 0)
        return {.action = EnterAction::Reveal, .blank = hidden};
    if (round.BlankCount() >= MinBlanksToAsk && round.AllShown() && page.IsAtEnd())
        return {.action = EnterAction::AskThenTurn, .blank = 0};
    return {.action = EnterAction::TurnPage, .blank = 0};
}

int TurnPage(StudyRound *round, const PageInView &page)
{
    const bool wasUntouched = round->IsUntouched();
    if (!page.canScroll || page.topLine == page.maximum)
        round->HideAll();
    // Where lines wrap, the last one may be alone on its page. Then the rule below would keep the page there.
    if (page.isWrapped && page.topLine == page.maximum)
        return 1;
    const int next = page.topLine + page.pageSize;
    // A file without blanks counts as one whose last answer is shown, so its pages start again at line 1.
    const bool isLastShown = round->BlankCount() == 0 || round->bolOpen(round->BlankCount());
    if (!isLastShown) {
        const int top = qMin(next, page.maximum);
        // At the end of an untouched round the turn would change nothing, and Enter would be stuck there.
        return wasUntouched && top == page.topLine ? 1 : top;
    }
    if (!page.IsAtEnd())
        return next;
    round->HideAll();
    return 1;
}

int RandomPage(const StudyRound &round, const DisplayText &text, const PageInView &page, QRandomGenerator *random)
{
    const int blanks = round.BlankCount();
    if (blanks == 0 || round.AllShown())
        return 0;
    const auto isHiddenElsewhere = [&](int blank) {
        return !round.bolOpen(blank) && !page.Holds(text.Blanks().LineOf(blank));
    };
    constexpr int draws = 1000;
    int blank = 0;
    for (int i = 0; i < draws; ++i)
        if (blank = 1 + random->bounded(blanks); isHiddenElsewhere(blank))
            return page.TopOfPageWith(text.Blanks().LineOf(blank));
    // Hardly any are left, so take the next one after the last draw.
    for (int i = 1; i < blanks; ++i)
        if (const int next = (blank + i - 1) % blanks + 1; isHiddenElsewhere(next))
            return page.TopOfPageWith(text.Blanks().LineOf(next));
    return page.topLine;
}

QString AllShownMessage(int blankCount)
{
    return QString::number(blankCount) + u"個の正解をすべて表示しました。\r\n学習を続けますか？"_s;
}

QString HardShownMessage(int hardCount)
{
    return u"苦手 "_s + AllShownMessage(hardCount);
}

QString LearnedMessage(int learnedCount)
{
    return u"覚えた "_s + QString::number(learnedCount) + u" 個の苦手の印を外しますか？"_s;
}
