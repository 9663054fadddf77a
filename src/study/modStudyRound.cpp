// SPDX-FileCopyrightText: 2026 The Kotoban developers
// SPDX-License-Identifier: MIT

#include "study/modStudyRound.h"

#include <QRandomGenerator>

#include <algorithm>

using namespace Qt::Literals::StringLiterals;

void StudyRound::Load(int blankCount, const std::vector<int> &hardBlanks)
{
    *this = StudyRound();
    m_changedIn.assign(size_t(blankCount) + 1, 0);
    MarkAsHard(hardBlanks);
}

void StudyRound::Reload(int blankCount, const std::vector<int> &hardBlanks)
{
    // While only hard blanks are studied, the new marks decide what is hidden, and only those already hard keep
    // their state.
    std::vector<int> shown;
    for (int blank = 1; blank <= qMin(blankCount, BlankCount()); ++blank)
        if (bolOpen(blank) && (!m_isOnlyHard || IsHard(blank)))
            shown.push_back(blank);
    m_changedIn.assign(size_t(blankCount) + 1, 0);
    MarkAsHard(hardBlanks);
    BeginRound();
    m_before.reset();
    m_lastShown = 0;
    for (const int blank : shown)
        if (!bolOpen(blank))
            Change(blank);
}

void StudyRound::MarkAsHard(const std::vector<int> &blanks)
{
    m_isHard.assign(m_changedIn.size(), false);
    for (const int blank : blanks)
        m_isHard[size_t(blank)] = true;
    m_hardCount = int(blanks.size());
    m_isOnlyHard = m_isOnlyHard && m_hardCount > 0;
}

/// Shows a hidden answer or hides a shown one, without counting it.
void StudyRound::Change(int blank)
{
    unsigned &changedIn = m_changedIn[size_t(blank)];
    const bool isChanged = changedIn == m_round.number;
    changedIn = isChanged ? 0 : m_round.number;
    m_round.changedCount += isChanged ? -1 : 1;
    m_round.shownCount += bolOpen(blank) ? 1 : -1;
}

bool StudyRound::Toggle(int blank)
{
    m_before.reset();
    Change(blank);
    if (bolOpen(blank)) {
        ++m_openCount;
        m_lastShown = blank;
    }
    return bolOpen(blank);
}

void StudyRound::ToggleLine(const BlankRange &blanks)
{
    const bool hasHidden = std::ranges::any_of(blanks, [this](int blank) { return !bolOpen(blank); });
    for (const int blank : blanks)
        if (hasHidden ? !bolOpen(blank) : !IsShownAtFirst(blank))
            Toggle(blank);
}

void StudyRound::HideAll()
{
    if (IsUntouched() && m_round.showsEasy == m_isOnlyHard)
        return; // nothing happened in this round, so the one before it stays restorable
    m_wasOnlyHard = m_isOnlyHard;
    BeginRound();
}

void StudyRound::StudyOnlyHard(bool isOnlyHard)
{
    m_wasOnlyHard = m_isOnlyHard;
    m_isOnlyHard = isOnlyHard && m_hardCount > 0;
    BeginRound();
}

void StudyRound::BeginRound()
{
    m_before = m_round;
    m_keptBefore.clear();
    m_round = Round{.number = ++m_lastNumber, .showsEasy = m_isOnlyHard};
    m_round.shownCount = m_isOnlyHard ? BlankCount() - m_hardCount : 0;
}

void StudyRound::Undo()
{
    m_round = *m_before;
    m_before.reset();
    m_isOnlyHard = m_wasOnlyHard && m_hardCount > 0;
    for (const KeptBlank &kept : m_keptBefore) {
        const bool isChanged = kept.wasShown != IsShownAtFirst(kept.blank);
        m_changedIn[size_t(kept.blank)] = isChanged ? m_round.number : 0;
        m_round.changedCount += int(isChanged) - int(kept.wasChanged);
    }
}

/// Saves the state of a blank in the round that can be restored. That state is derived from whether the blank is hard,
/// so it must be saved before that changes.
void StudyRound::KeepBefore(int blank)
{
    const auto isKept = [blank](const KeptBlank &kept) { return kept.blank == blank; };
    if (!m_before || std::ranges::any_of(m_keptBefore, isKept))
        return;
    const bool wasChanged = m_changedIn[size_t(blank)] == m_before->number;
    m_keptBefore.push_back({blank, wasChanged != (m_before->showsEasy && !IsHard(blank)), wasChanged});
}

void StudyRound::ToggleHard(int blank)
{
    KeepBefore(blank);
    const bool wasOpen = bolOpen(blank);
    m_isHard[size_t(blank)] = !m_isHard[size_t(blank)];
    m_hardCount += m_isHard[size_t(blank)] ? 1 : -1;
    m_isOnlyHard = m_isOnlyHard && m_hardCount > 0;
    if (bolOpen(blank) == wasOpen)
        return;
    const int shownCount = m_round.shownCount;
    Change(blank);
    m_round.shownCount = shownCount;
}

std::vector<int> StudyRound::HardBlanks() const
{
    std::vector<int> blanks;
    for (int blank = 1; blank <= BlankCount(); ++blank)
        if (m_isHard[size_t(blank)])
            blanks.push_back(blank);
    return blanks;
}

BlankRange VisibleBlanks(const DisplayText &text, const PageInView &page)
{
    return text.Blanks().OnLines(page.topLine, page.lastLine);
}

int FirstHiddenBlank(const StudyRound &round, const BlankRange &range)
{
    for (const int blank : range)
        if (!round.bolOpen(blank))
            return blank;
    return 0;
}

int HitTest(const DisplayText &text, int xPx, int yPx, int topLine, const PageLayout &layout)
{
    if (yPx <= PageLayout::TopMarginPx || xPx < layout.TextLeftPx())
        return 0;
    const int line = layout.LineAt(yPx, topLine);
    if (line > text.LineCount())
        return 0;
    for (const int blank : text.BlanksOnLine(line)) {
        const BoxEdges box = GetBqInfoFromLine(text, blank, layout.cellWidthPx, layout.CellLeftPx(0));
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
    const bool isAtEnd = page.topLine + page.pageSize >= page.maximum;
    if (round.BlankCount() >= MinBlanksToAsk && round.AllShown() && isAtEnd)
        return {.action = EnterAction::AskThenTurn, .blank = 0};
    return {.action = EnterAction::TurnPage, .blank = 0};
}

int TurnPage(StudyRound *round, const PageInView &page)
{
    const bool wasUntouched = round->IsUntouched();
    if (!page.canScroll || page.topLine == page.maximum)
        round->HideAll();
    const int next = page.topLine + page.pageSize;
    // A file without blanks counts as one whose last answer is shown, so its pages start again at line 1.
    const bool isLastShown = round->BlankCount() == 0 || round->bolOpen(round->BlankCount());
    if (!isLastShown) {
        const int top = qMin(next, page.maximum);
        // At the end of an untouched round the turn would change nothing, and Enter would be stuck there.
        return wasUntouched && top == page.topLine ? 1 : top;
    }
    if (next < page.maximum)
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
            return page.TopOfPage(page.PageOf(text.Blanks().LineOf(blank)));
    // Hardly any are left, so take the next one after the last draw.
    for (int i = 1; i < blanks; ++i)
        if (const int next = (blank + i - 1) % blanks + 1; isHiddenElsewhere(next))
            return page.TopOfPage(page.PageOf(text.Blanks().LineOf(next)));
    return page.topLine;
}

int MarkLineAt(int yPx, int topLine, const PageLayout &layout)
{
    return layout.LineAt(yPx, topLine);
}

QString AllShownMessage(int blankCount)
{
    return QString::number(blankCount) + u"個の正解をすべて表示しました。\r\n学習を続けますか？"_s;
}
