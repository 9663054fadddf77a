// SPDX-FileCopyrightText: 2026 The Kotoban developers
// SPDX-License-Identifier: MIT

// What a user has achieved: days in a row, what was studied today, and the session that has just ended.
#pragma once

#include "history/modStudyTally.h"

#include <vector>

/// A session that has just ended.
struct EndedSession
{
    QDateTime start; ///< invalid if there is none
    StudySum sum = {};
};

struct Reward
{
    int streak = -1; ///< days in a row as StudyStreak counts them
    StudySum today = {};
    StudySum ended = {}; ///< of the session that has just ended; without answers if there is none
};

Reward RewardOf(const StudyTallies &tallies, const EndedSession &ended, const QDate &today);

/// One of the things said.
struct RewardPart
{
    QString caption; ///< "今日"
    QString number;  ///< "25分 134問", in front of the caption if it is the streak; may be empty
    bool isStreak = false;
};

constexpr int AllRewardParts = 3;

/// What is said, one after the other. @param most  number of parts for which there is room
std::vector<RewardPart> PartsOf(const Reward &reward, int most = AllRewardParts);

/// The same as a text: "5日連続　今日 25分 134問　今回 12分40秒 67問".
QString RewardText(const Reward &reward);
