// How often each study file was studied and when last: the record of one user over all years, read span by span, so
// that the list of files need not wait for it.
#pragma once

#include "files/modSessionSpans.h"
#include "store/Sqlite3Func.h"

#include <QHash>

/// The sessions with one study file in which something was answered.
struct StudyTally
{
    int times = 0;
    QDate lastDay; ///< invalid where there is none
};

class StudyTallies
{
  public:
    StudyTallies(StudyDatabase &database, const QString &userName);

    /// Reads anew what was recorded since the first call, in which that is the day itself; the rest is read by
    /// ReadNext.
    /// @return false after a database fault, which the user was told
    bool ReadRecent(const QDate &today);

    /// Reads one more span of days before that, the newest first.
    /// @return whether there is more to read. After a database fault, which the user was told, there is not
    bool ReadNext();

    /// Of the study file of a title, as far as it was read.
    StudyTally Of(const QString &title) const;

    /// Whether nothing was studied, as far as it was read.
    bool IsEmpty() const
    {
        return m_recent.isEmpty() && m_before.isEmpty();
    }

  private:
    using ByTitle = QHash<QString, StudyTally>;

    bool Read(const QDate &endDate, int dayCount, ByTitle *tallies, qsizetype *sessions);

    StudyDatabase &m_database;
    QString m_userName;
    QDate m_firstRecentDay; // invalid before the first ReadRecent
    ByTitle m_recent;
    SessionSpans m_unread;
    ByTitle m_before;
};

/// What the list shows of a study file that can be opened: "67問", "3回", "11/24". The day of a session a year ago or
/// longer is only its year, "2023年"; without a session the last two are empty.
QStringList StudyFigures(int blanks, const StudyTally &tally, const QDate &today);

/// The same as a sentence: "67問、3回、最後は2026/11/24".
QString StudyFiguresSentence(int blanks, const StudyTally &tally);
