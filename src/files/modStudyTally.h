// SPDX-FileCopyrightText: 2026 The Kotoban developers
// SPDX-License-Identifier: MIT

// How often and when last each study file was studied: one user's record over all years, read in slices so that the
// list of files need not wait for it. The user did not ask for it, so a database fault is not reported: there are no
// tallies then until ReadRecent and ReadNext have read all of it again.
#pragma once

#include "store/modDB_SQLite.h"

#include <QHash>

/// The sessions with one study file that have at least one answer.
struct StudyTally
{
    int times = 0;
    QDate lastDay; ///< invalid if there is none
};

class StudyTallies
{
  public:
    StudyTallies(StudyDatabase &database, const QString &userName) : m_database(database), m_userName(userName) {}

    /// Reads again what has been recorded since the day of the first call, that day included. ReadNext reads the
    /// earlier days.
    /// @return false after a database fault
    bool ReadRecent(const QDate &today);

    /// Reads more of the earlier days, newest first, until a deadline.
    /// @return whether there is more to read; false after a database fault
    bool ReadNext(const QDeadlineTimer &until);

    /// Tally of the study file with a title, as far as the record has been read; of no session after a fault.
    StudyTally Of(const QString &title) const;

    /// Whether all of the record has been read; false after a fault.
    bool IsComplete() const
    {
        return m_firstRecentDay.isValid() && m_unread.IsEmpty();
    }

  private:
    using ByTitle = QHash<QString, StudyTally>;

    bool Read(const QDeadlineTimer &until, DaySpan *days, ByTitle *tallies);

    StudyDatabase &m_database;
    QString m_userName;
    QDate m_firstRecentDay; // invalid before the first ReadRecent and after a fault
    ByTitle m_recent;
    DaySpan m_unread; // of the days before that
    ByTitle m_before;
};

/// When a study file was studied, for the list: "9回　最後 今日", "1回　最後 11/24（火）"; empty without a session.
QString StudiedText(const StudyTally &tally, const QDate &today);

/// The same after the number of blanks, as a sentence: "空欄67，9回，最後は今日".
QString StudyFiguresSentence(int blanks, const StudyTally &tally, const QDate &today);
