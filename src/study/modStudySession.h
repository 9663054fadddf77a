// SPDX-FileCopyrightText: 2026 The Kotoban developers
// SPDX-License-Identifier: MIT

// A user's study of one file after another: the open file with its page, the session's row in the database and the
// clock.
#pragma once

#include "history/modReward.h"
#include "platform/modSystemServices.h"
#include "records/modHardNote.h"
#include "records/modPlaceList.h"
#include "store/Sqlite3Func.h"
#include "study/modStudyClock.h"
#include "study/modStudyPage.h"
#include "text/modReadText.h"

/// A killed program loses at most the answers of this time.
constexpr int InterimSeconds = 60;

/// Of larger files, of some hundred thousand lines, what was shown is not kept for the next time, only the line: the
/// hash that tells whether a file is the same would take longer than half of its reading.
constexpr qint64 MaxResumedBytes = 4 * BytesPerMegabyte;

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
    /// @param interimSeconds  how often CompleteSoFar runs by itself
    StudySession(const SystemServices &services, StudyDatabase &database, const QString &listFolder,
                 const QString &userName, int interimSeconds = InterimSeconds);

    /// Ends the session without writing anything: no file is open afterwards, the page is empty, the clock is stopped,
    /// and there is no row to complete.
    void End();

    /// Ends the session and begins one with a file. Its row is inserted before the file is read, so that every attempt
    /// leaves one. After a refusal no file is open.
    /// @param note  if the file is the note of hard words: what was written into it
    StudyReading Open(const QString &path, std::optional<HardNote> note = {});

    /// Saves the marks and reads the open file again, for StudyPage::Reload. Session and clock continue. After a
    /// refusal nothing has changed. The mark of a line that was edited stays in the list, where the line may find it
    /// again.
    /// @param note  as above
    StudyReading ReadAgain(std::optional<HardNote> note = {});

    /// Completes the session's row, if there is one. A session that continues is completed again at its end.
    void CompleteRow();

    /// Saves the marks and where the user stops in the open file, if there is one.
    /// @return one message for everything that could not be saved
    QStringList KeepLists();

    /// Both of the above.
    QStringList Complete();

    /// Completes the row with what has been answered so far, for the case that the program does not live to the end of
    /// the session. Does nothing if the number of answers is the one last written. Silent: after a fault, the next call
    /// tries again. Marks and places are not saved.
    void CompleteSoFar();

    /// Calls CompleteSoFar if it is time to, or if the system's clock has been set back.
    void CompleteSoFarWhenDue();

    /// The blanks that the user has marked as hard, in all files, as last saved.
    const MarkList &Marks() const
    {
        return m_marks;
    }

    /// Whether marks have changed since they were saved.
    bool HasUnsavedMarks() const
    {
        return m_page.Round().MarksVersion() != m_keptMarks;
    }

    /// Saves the marks if any have changed. After a fault the next call tries again.
    FileFault KeepMarks();

    /// Whether there is a row to complete, as there is even for a file that was refused.
    bool HasBegun() const
    {
        return m_start.isValid();
    }

    /// What has been recorded of the session by now; without a start if there is no row.
    EndedSession Recorded() const;

    /// Full path of the open file; empty if there is none.
    const QString &Path() const
    {
        return m_path;
    }

    /// Whether the open file is the note of hard words. Its marks are those of its sources, and no place is kept for
    /// it.
    bool IsHardNote() const
    {
        return m_note.has_value();
    }

    /// Where a line of the open file is to be edited: there, or in the study file that it comes from.
    HardNote::Source SourceOf(int line) const;

    /// Goes on where the user stopped the last time, see StudyPage::Resume. Answers are shown only if the file is still
    /// the same.
    PageChange Resume();

    /// Whether the file at that path has been modified or replaced since its text was read.
    bool IsFileChanged() const;

    StudyPage &Page()
    {
        return m_page;
    }

    /// What the clock shows now, or nothing if it does not change.
    std::optional<ElapsedTime> ClockTick() const;

  private:
    StudyReading Read(const QString &path, DisplayText *text);
    FileFault KeepMarksOfNote() const;

    const SystemServices &m_services;
    StudyDatabase &m_database;
    QString m_userName;
    MarkList m_marks;
    PlaceList m_stops; // where users stopped
    Place m_place;     // where this one did the last time
    std::optional<HardNote> m_note;
    QDateTime m_start; // key of the row; invalid before the first session
    QString m_path;
    QDateTime m_fileTime; // modification time before the text was read
    qint64 m_fileSize = 0;
    QString m_fileHash; // SHA-1, made while the file is read, so that no key press takes the time; empty if too large
    int m_interimSeconds;
    QDateTime m_completedAt;  // when the row was last to be written, its insertion included
    int m_completedCount = 0; // number of answers then
    StudyPage m_page;
    unsigned m_keptMarks = 0; // StudyRound::MarksVersion of the marks that are saved
    QDateTime m_clockStart;   // invalid while no file is open
};
