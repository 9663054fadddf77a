// A learner's study of one file after the other: the open file with its text, how far the learner is, the session's row
// in the records and the clock.
#pragma once

#include "files/modMarkList.h"
#include "files/modPlaceList.h"
#include "platform/modSystemServices.h"
#include "store/Sqlite3Func.h"
#include "view/modStudyClock.h"
#include "view/modStudyRound.h"

class StudySession
{
  public:
    /// @param services  tells the time; it and the database must outlive this
    /// @param listFolder  folder of the lists of what is hard and where users stopped
    StudySession(const SystemServices &services, StudyDatabase &database, const QString &listFolder,
                 const QString &userName);

    /// Begins a session with a file. Its row is inserted before the file is read, so that every attempt leaves one.
    /// @param message  the refusal, or what is wrong with the pictures of a file that was read
    /// @return false after a refusal; no file is open then, and the clock stands
    bool Open(const QString &path, QString *message);

    /// Reads the open file once more. Session and clock go on, and the answers keep their state by the number of their
    /// blank.
    /// @param errorLine  line of the fault that the refusal names
    /// @return false after a refusal; all is then as it was
    bool ReadAgain(QString *message, int *errorLine);

    /// Completes the session's row, if there is one, and keeps the marks and where the user stops. A session that goes
    /// on is completed again at its end.
    /// @param topLine  line at the top of the page
    /// @return what could not be kept, a message for each
    QStringList Complete(int topLine);

    /// The line, 1-based, at which the user stopped in the open file the last time; 0 when that is not known or the
    /// file has become shorter.
    int LastLine() const
    {
        return m_lastLine;
    }

    /// Marks a blank as hard, or takes the mark away. It is kept by the next KeepMarks or Complete.
    void ToggleHard(int blank);

    /// What the user has marked as hard, in all files, as it was last kept.
    const MarkList &Marks() const
    {
        return m_marks;
    }

    /// Keeps the marks, where any was changed.
    /// @return false when they cannot be; message then holds the whole of it for the user
    bool KeepMarks(QString *message);

    /// Whether there is a row to complete, which is so too for a file that was refused.
    bool HasBegun() const
    {
        return m_start.isValid();
    }

    bool IsFileOpen() const
    {
        return !m_path.isEmpty();
    }

    /// Full path of the open file, empty while there is none.
    const QString &Path() const
    {
        return m_path;
    }

    /// Whether another file, or another version of it, has been at that path since the text was read from it.
    bool IsFileChanged() const;

    /// The text of the open file; without lines while there is none. Its address stays the same.
    const DisplayText &Text() const
    {
        return m_text;
    }

    StudyRound &Round()
    {
        return m_round;
    }

    const StudyRound &Round() const
    {
        return m_round;
    }

    /// What the clock shows now, or nothing when it stays as it is.
    std::optional<ElapsedTime> ClockTick() const;

  private:
    bool Read(const QString &path, QString *message, int *errorLine);

    const SystemServices &m_services;
    StudyDatabase &m_database;
    QString m_userName;
    MarkList m_marks;
    PlaceList m_places;
    QDateTime m_start; // the row's key; not valid before the first session
    QString m_path;
    QDateTime m_fileTime; // of the last change before the text was read
    DisplayText m_text;
    StudyRound m_round;
    bool m_isMarkChanged = false; // since the marks were kept
    int m_lastLine = 0;
    QDateTime m_clockStart; // not valid while no file is open
};
