// SPDX-FileCopyrightText: 2026 The Kotoban developers
// SPDX-License-Identifier: MIT

#include "history/modReward.h"

using namespace Qt::Literals::StringLiterals;

Reward RewardOf(const StudyTallies &tallies, const EndedSession &ended, const QDate &today)
{
    return {StudyStreak(tallies, today), tallies.OnDay(today), ended.sum};
}

std::vector<RewardPart> PartsOf(const Reward &reward, int most)
{
    const bool hasStreak = reward.streak > 1; // a single day is no row
    std::vector<RewardPart> parts;
    if (hasStreak)
        parts.push_back({u"日連続"_s, QString::number(reward.streak), true});
    if (reward.today.answers > 0)
        parts.push_back({u"今日"_s, StudySumText(reward.today)});
    else if (reward.streak >= 0)
        parts.push_back({hasStreak ? u"今日はこれからです。"_s : u"今日から始めましょう。"_s, QString()});
    if (reward.ended.answers > 0)
        parts.push_back(
            {u"今回"_s, SessionTimeText(reward.ended.seconds) + u' ' + QString::number(reward.ended.answers) + u'問'});
    if (int(parts.size()) > most)
        parts.resize(size_t(most));
    return parts;
}

QString RewardText(const Reward &reward)
{
    QStringList texts;
    for (const RewardPart &part : PartsOf(reward))
        texts += part.isStreak ? part.number + part.caption : QString(part.caption + u' ' + part.number).trimmed();
    return texts.join(u"　"_s);
}
