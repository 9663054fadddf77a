// SPDX-FileCopyrightText: 2026 The Kotoban developers
// SPDX-License-Identifier: MIT

// How much was studied in some sessions, and the texts that say so.
#pragma once

#include "store/modDB_SQLite.h"

/// Time and answers of some sessions that have at least one answer each.
struct StudySum
{
    qint64 seconds = 0;
    qint64 answers = 0; ///< 0 if there is no session

    StudySum &operator+=(const StudySum &other)
    {
        seconds += other.seconds;
        answers += other.answers;
        return *this;
    }

    bool operator==(const StudySum &) const = default;
};

/// What was studied in one session. One during which the clock was set back counts as 0 seconds, not as negative time.
StudySum SumOf(const RecordedSession &session);

/// Whole minutes; less than one counts as 1, none as 0.
qint64 StudyMinutes(qint64 seconds);

/// Those as a text: "25分", "1時間12分".
QString StudyTimeText(qint64 seconds);

/// "25分 134問"
QString StudySumText(const StudySum &sum);

/// Hours if there are any, minutes and seconds: "1時間 5分 9秒".
QString HoursMinutesSeconds(qint64 seconds);

/// "20秒", "12分40秒", with hours if there are any.
QString SessionTimeText(qint64 seconds);
