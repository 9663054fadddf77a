// SPDX-FileCopyrightText: 2026 The Kotoban developers
// SPDX-License-Identifier: MIT

// Rounds of hard blanks only, and undoing a round.
#include "study/modStudyRound.h"
#include "support/TestFiles.h"

#include <gtest/gtest.h>

using namespace Qt::Literals::StringLiterals;

namespace {

/// The answers of a round in order: x for shown, - for hidden.
QString Open(const StudyRound &round)
{
    QString open;
    for (int blank = 1; blank <= round.BlankCount(); ++blank)
        open += round.bolOpen(blank) ? u'x' : u'-';
    return open;
}

} // namespace

TEST(StudyRound, OnlyHardStudied_HidesOnlyHardBlanks)
{
    StudyRound round;
    round.Load(5, {2, 4});
    round.Toggle(1);
    round.StudyOnlyHard(true);
    EXPECT_EQ(Open(round), u"x-x-x"_s);
    EXPECT_EQ(round.ShownCount(), 3);
    EXPECT_EQ(round.lngOpenCount(), 1) << "that does not count as an answer";
    round.Toggle(2);
    round.Toggle(5);
    EXPECT_EQ(round.ShownCount(), 3);
    EXPECT_EQ(round.lngOpenCount(), 2);
    round.HideAll();
    EXPECT_EQ(Open(round), u"x-x-x"_s) << "a new round of hard blanks";
    round.Undo();
    EXPECT_EQ(Open(round), u"xxx--"_s);
    EXPECT_EQ(round.lngOpenCount(), 2);
    EXPECT_FALSE(round.CanUndo());
    round.HideAll();
    round.HideAllOfFile();
    EXPECT_EQ(Open(round), u"-----"_s);
    round.Undo();
    EXPECT_TRUE(round.IsOnlyHard());
    round.ToggleHard(2);
    EXPECT_EQ(Open(round), u"x-x-x"_s) << "marking neither shows nor hides anything";
    round.ToggleHard(3);
    EXPECT_EQ(Open(round), u"x-x-x"_s);
    EXPECT_EQ(round.ShownCount(), 3);
    round.HideAll();
    EXPECT_EQ(Open(round), u"xx--x"_s);
    round.ToggleHard(3);
    round.ToggleHard(4);
    EXPECT_FALSE(round.IsOnlyHard()) << "no hard blanks are left";
    EXPECT_EQ(Open(round), u"x----"_s) << "as before";
    EXPECT_FALSE(round.CanUndo());
}

TEST(StudyRound, ReloadWhileOnlyHardStudied_KeepsShownAnswers)
{
    StudyRound round;
    round.Load(3, {2});
    round.StudyOnlyHard(true);
    round.Reload(4, {3});
    EXPECT_EQ(Open(round), u"xx-x"_s) << "the new marks decide";
    EXPECT_TRUE(round.IsHard(3) && round.IsOnlyHard());
    round.Toggle(3);
    round.Reload(4, {3, 4});
    EXPECT_EQ(Open(round), u"xxx-"_s);
    EXPECT_EQ(round.ShownCount(), 3);
    round.ToggleLine(BlankRange(1, 5));
    EXPECT_EQ(Open(round), u"xxxx"_s);
    round.ToggleLine(BlankRange(1, 5));
    EXPECT_EQ(Open(round), u"xx--"_s) << "only the hard blanks of a line are hidden again";
    round.Toggle(4);
    round.HideAll();
    round.ToggleHard(4);
    round.ToggleHard(1);
    EXPECT_EQ(Open(round), u"xx--"_s);
    round.Undo();
    EXPECT_EQ(Open(round), u"xx-x"_s) << "marks changed in between do not affect it";
    EXPECT_EQ(round.ShownCount(), 3);
}

TEST(StudyRound, ReloadedWithNumbersBefore_EachBlankKeepsItsState)
{
    StudyRound round;
    round.Load(4, {1, 2, 3, 4});
    round.Toggle(2);
    round.StudyOnlyHard(true);
    round.Toggle(3);
    round.MarkMissed(3);
    round.Toggle(4);
    round.Reload(3, {1, 2, 3}, {4, 3, 0});
    EXPECT_EQ(Open(round), u"xx-"_s);
    EXPECT_EQ(round.LearnedBlanks(), std::vector<int>({1})) << "what was missed stays so";
    round.StudyOnlyHard(false);
    EXPECT_EQ(Open(round), u"---"_s) << "the only one that was shown here is gone";
    EXPECT_EQ(round.lngOpenCount(), 3);
}
