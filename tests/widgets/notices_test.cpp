// SPDX-FileCopyrightText: 2026 The Kotoban developers
// SPDX-License-Identifier: MIT

#include "support/Rows.h"
#include "widgets/modNotices.h"

#include <gtest/gtest.h>

using namespace Qt::Literals::StringLiterals;

TEST(Notices, SeveralTopics_TheMostImportantIsShown)
{
    Notices notices;
    const auto shown = [&notices] { return notices.Current() ? notices.Current()->second.text : QString(); };
    EXPECT_FALSE(notices.Remove(NoticeTopic::Done));
    EXPECT_TRUE(notices.Put(NoticeTopic::Offer, {.text = u"offer"_s}));
    EXPECT_FALSE(notices.Put(NoticeTopic::FirstKeys, {.text = u"keys"_s})) << "less important";
    EXPECT_EQ(shown(), u"offer"_s);
    EXPECT_TRUE(notices.Put(NoticeTopic::FileChange, {.text = u"change"_s}));
    EXPECT_FALSE(notices.Put(NoticeTopic::FileChange, {.text = u"change"_s})) << "the same again";
    EXPECT_FALSE(notices.Remove(NoticeTopic::Offer));
    EXPECT_EQ(shown(), u"change"_s);
    EXPECT_TRUE(notices.Remove(NoticeTopic::FileChange));
    EXPECT_EQ(shown(), u"keys"_s);
    EXPECT_TRUE(notices.Put(NoticeTopic::FirstKeys, {.text = u"other"_s}));
    EXPECT_EQ(shown(), u"other"_s);
}

TEST(FitNotice, LessRoom_LosesKeysThenTextThenOffers)
{
    const NoticeWidths search{.textPx = 100, .leastTextPx = 40, .gapPx = 10, .offers = {{50, 20}, {50, 20}, {30, 30}}};
    const NoticeWidths shortText{.textPx = 30, .leastTextPx = 40, .gapPx = 10, .offers = {{50, 20}}};
    const Rows<NoticeWidths, int, NoticeFit> rows = {
        {search, 260, {100, 3, true}},   {search, 259, {100, 3, false}},  {search, 200, {100, 3, false}},
        {search, 199, {99, 3, false}},   {search, 140, {40, 3, false}},   {search, 139, {79, 2, false}},
        {search, 69, {69, 0, false}},    {search, 0, {0, 0, false}},      {shortText, 90, {30, 1, true}},
        {shortText, 60, {30, 1, false}}, {shortText, 59, {30, 0, false}}, {{.textPx = 50}, 20, {20, 0, false}},
    };
    for (const auto &[widths, availablePx, fit] : rows)
        EXPECT_EQ(FitNotice(widths, availablePx), fit) << widths.textPx << " in " << availablePx;
}
