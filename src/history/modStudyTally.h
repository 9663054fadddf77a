// SPDX-FileCopyrightText: 2026 The Kotoban developers
// SPDX-License-Identifier: MIT

// One user's record over all years, as sums for each study file and each day. It is read in slices so that no window
// need wait for it. The user did not ask for it, so a database fault is not reported: there are no sums then until
// ReadRecent and ReadNext have read all of it again.
#pragma once

#include "history/modStudySum.h"

#include <QHash>

/// The sessions with one study file that have at least one answer.
struct StudyTally
{
    int times = 0;
    QDate lastDay; ///< invalid if there is none
    StudySum sum = {};
};

class StudyTallies
{
  public:
    using ByTitle = QHash<QString, StudyTally>;

    StudyTallies(StudyDatabase &database, const QString &userName) : m_database(database), m_userName(userName) {}

    /// Reads again what has been recorded since the day of the first call, that day included. ReadNext reads the
    /// earlier days. Where the clock has been set back to before that day, all is read again. Sessions after today are
    /// left out.
    /// @return false after a database fault
    bool ReadRecent(const QDate &today);

    /// Reads more of the earlier days, newest first, until a deadline.
    /// @return whether there is more to read; false after a database fault
    bool ReadNext(const QDeadlineTimer &until);

    /// Tally of the study file with a title, as far as the record has been read; of no session after a fault.
    StudyTally Of(const QString &title) const;

    /// The tallies of all files that were studied.
    ByTitle OfAll() const;

    /// What was studied on a day; of no session before FirstReadDay.
    StudySum OnDay(const QDate &day) const;

    /// The earliest day that has been read, with all after it up to today; invalid if there is none.
    QDate FirstReadDay() const;

    /// Whether all of the record has been read; false after a fault.
    bool IsComplete() const
    {
        return m_firstRecentDay.isValid() && m_unread.IsEmpty();
    }

    /// Whether the last reading ended with a database fault.
    bool HasFailed() const
    {
        return m_hasFailed;
    }

  private:
    /// The sums over some days.
    struct Sums
    {
        ByTitle byTitle;
        QHash<QDate, StudySum> byDay;
    };

    bool Read(const QDeadlineTimer &until, DaySpan *days, Sums *sums);

    StudyDatabase &m_database;
    QString m_userName;
    QDate m_firstRecentDay; // invalid before the first ReadRecent and after a fault
    Sums m_recent;
    DaySpan m_unread; // of the days before that
    Sums m_before;
    bool m_hasFailed = false;
};

/// Number of days in a row on which the user has studied, up to today or, if there is nothing yet today, yesterday; -1
/// while the days that have been read are too few to know.
int StudyStreak(const StudyTallies &tallies, const QDate &today);

/// When a study file was studied, for the list: "9回　最後 今日", "1回　最後 11/24（火）"; empty without a session.
QString StudiedText(const StudyTally &tally, const QDate &today);

/// The same after the numbers of blanks and hard words, as a sentence: "空欄67，苦手3，9回，最後は今日".
QString StudyFiguresSentence(int blanks, int hard, const StudyTally &tally, const QDate &today);

/// All of it as a sentence: "これまでに 5ファイル，27回，3時間24分".
QString AllTalliesSentence(const StudyTallies::ByTitle &tallies);
