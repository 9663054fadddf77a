// SPDX-FileCopyrightText: 2026 The Kotoban developers
// SPDX-License-Identifier: MIT

// A user's study of one file after another: the open file with its text, the progress, the session's row in the
// database and the clock.
#pragma once

#include "platform/modSystemServices.h"
#include "records/modMarkList.h"
#include "records/modPlaceList.h"
#include "store/Sqlite3Func.h"
#include "study/modStudyClock.h"
#include "study/modStudyRound.h"
#include "text/modReadText.h"

#include <functional>

/// A killed program loses at most the answers of this time.
constexpr int InterimSeconds = 60;

/// What came of reading a study file.
struct [[nodiscard]] StudyReading
{
    TextRefusal refusal;           ///< why the file was refused, if it was
    QStringList badPictureNames{}; ///< of a file that was read; see BadPictureNamesMessage
};

/// The complete text for the user about marks that could not be saved.
QString MarksNotSavedMessage(const FileFault &fault);

class StudySession
{
  public:
    /// @param services  supplies the time; it and the database must outlive the session
    /// @param listFolder  folder of the lists of hard blanks and of the places where users stopped
    /// @param textGoes  called each time before the text is replaced, for whoever holds a place in it; may be empty
    /// @param interimSeconds  how often CompleteSoFar runs by itself
    StudySession(const SystemServices &services, StudyDatabase &database, const QString &listFolder,
                 const QString &userName, const std::function<void()> &textGoes = {},
                 int interimSeconds = InterimSeconds);

    /// Begins a session with a file. Its row is inserted before the file is read, so that every attempt leaves one.
    /// After a refusal no file is open, and the clock is stopped.
    StudyReading Open(const QString &path);

    /// Reads the open file again. Session and clock continue, and answers keep their state by blank number. After a
    /// refusal nothing has changed.
    StudyReading ReadAgain();

    /// Completes the session's row, if there is one, and saves the marks and where the user stops. A session that
    /// continues is completed again at its end.
    /// @param topLine  line at the top of the page
    /// @return one message for everything that could not be saved
    QStringList Complete(int topLine);

    /// Completes the row with what has been answered so far, for the case that the program does not live to the end of
    /// the session. Does nothing if the number of answers is the one last written. Silent: after a fault, the next call
    /// tries again. Marks and places are not saved.
    void CompleteSoFar();

    /// Calls CompleteSoFar if it is time to, or if the system's clock has been set back.
    void CompleteSoFarWhenDue();

    /// The line, 1-based, at which the user last stopped in the open file; 0 if unknown or if the file is now shorter.
    int LastLine() const
    {
        return m_lastLine <= m_text.LineCount() ? m_lastLine : 0;
    }

    /// Marks a blank as hard, or removes the mark. The next KeepMarks or Complete saves it.
    void ToggleHard(int blank);

    /// The blanks that the user has marked as hard, in all files, as last saved.
    const MarkList &Marks() const
    {
        return m_marks;
    }

    /// Saves the marks if any have changed. After a fault the next call tries again.
    FileFault KeepMarks();

    /// Whether there is a row to complete, as there is even for a file that was refused.
    bool HasBegun() const
    {
        return m_start.isValid();
    }

    bool IsFileOpen() const
    {
        return !m_path.isEmpty();
    }

    /// Full path of the open file; empty if there is none.
    const QString &Path() const
    {
        return m_path;
    }

    /// Whether the file at that path has been modified or replaced since its text was read.
    bool IsFileChanged() const;

    /// The text of the open file; without lines if there is none. Its address never changes.
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

    /// What the clock shows now, or nothing if it does not change.
    std::optional<ElapsedTime> ClockTick() const;

  private:
    StudyReading Read(const QString &path);
    void ReplaceText(DisplayText text);

    const SystemServices &m_services;
    StudyDatabase &m_database;
    QString m_userName;
    MarkList m_marks;
    PlaceList m_places;
    QDateTime m_start; // key of the row; invalid before the first session
    QString m_path;
    QDateTime m_fileTime; // modification time before the text was read
    std::function<void()> m_textGoes;
    int m_interimSeconds;
    QDateTime m_completedAt;  // when the row was last to be written, its insertion included
    int m_completedCount = 0; // number of answers then
    DisplayText m_text;
    StudyRound m_round;
    bool m_isMarkChanged = false; // since the marks were saved
    int m_lastLine = 0;
    QDateTime m_clockStart; // invalid while no file is open
};
