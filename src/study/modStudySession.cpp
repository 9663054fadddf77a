// SPDX-FileCopyrightText: 2026 The Kotoban developers
// SPDX-License-Identifier: MIT

#include "study/modStudySession.h"

#include "base/modDateText.h"
#include "base/modFile.h"
#include "store/modDB_SQLite.h"
#include "text/modCheckText.h"
#include "text/modPictureName.h"

#include <QCryptographicHash>
#include <QFileInfo>

#include <numeric>
#include <utility>

using namespace Qt::Literals::StringLiterals;

StudySession::StudySession(const SystemServices &services, StudyDatabase &database, const QString &listFolder,
                           const QString &userName, int interimSeconds)
    : m_services(services), m_database(database), m_userName(userName),
      m_marks(JoinPath(listFolder, u"ListMark.txt"_s), userName), m_stops(JoinPath(listFolder, u"ListPlace.txt"_s)),
      m_interimSeconds(interimSeconds)
{
}

void StudySession::End()
{
    m_start = QDateTime(); // first, so that no row is completed with the count of an empty page
    m_clockStart = QDateTime();
    m_path.clear();
    m_note.reset();
    m_page.Clear();
    m_keptMarks = 0;
}

namespace {

/// The blanks of the note of hard words, all of which are hard.
std::vector<int> BlanksOfNote(const HardNote &note, const DisplayText &text)
{
    std::vector<int> blanks(size_t(qMin(note.BlankCount(), text.Blanks().Count())));
    std::iota(blanks.begin(), blanks.end(), 1);
    return blanks;
}

/// The number that each blank had in an older note, 0 for a new one.
std::vector<int> NumbersIn(const HardNote &old, const HardNote &note, int blankCount)
{
    QHash<QString, int> numbers;
    for (int blank = 1; blank <= old.BlankCount(); ++blank)
        numbers.insert(old.EntryOf(blank), blank);
    std::vector<int> numbersBefore(static_cast<size_t>(blankCount));
    for (int blank = 1; blank <= qMin(blankCount, note.BlankCount()); ++blank)
        numbersBefore[size_t(blank) - 1] = numbers.value(note.EntryOf(blank));
    return numbersBefore;
}

} // namespace

StudyReading StudySession::Open(const QString &path, std::optional<HardNote> note)
{
    End();
    m_start = m_services.Now();
    m_completedAt = m_start;
    m_completedCount = 0;
    DBInsRecKotoban(m_database, m_start, m_userName, RecordedTitle(path));
    DisplayText text;
    StudyReading reading = Read(path, &text);
    if (reading.refusal)
        return reading;
    const std::vector<int> hardBlanks = note ? BlanksOfNote(*note, text) : m_marks.Find(GetFileTitle(path), text);
    m_path = path;
    m_place = note ? Place() : m_stops.Find(m_userName, QFileInfo(path).fileName());
    m_note = std::move(note);
    m_page.Load(std::move(text), hardBlanks, m_place.line);
    m_clockStart = m_services.Now();
    return reading;
}

StudyReading StudySession::ReadAgain(std::optional<HardNote> note)
{
    const QString title = GetFileTitle(m_path);
    const QStringList marks = m_marks.Entries(title, m_page.Text(), m_page.Round().HardBlanks());
    const bool areKept = !KeepMarks(); // of the old lines, some of which may be gone
    DisplayText text;
    StudyReading reading = Read(m_path, &text);
    if (reading.refusal)
        return reading;
    std::vector<int> hardBlanks;
    std::vector<int> numbersBefore;
    if (note) {
        hardBlanks = BlanksOfNote(*note, text);
        numbersBefore = NumbersIn(*m_note, *note, text.Blanks().Count());
        m_note = std::move(note);
    } else {
        hardBlanks = areKept ? m_marks.Find(title, text) : m_marks.FindIn(marks, text);
    }
    m_page.Reload(std::move(text), hardBlanks, numbersBefore);
    return reading;
}

HardNote::Source StudySession::SourceOf(int line) const
{
    const HardNote::Source source = m_note ? m_note->SourceOf(line) : HardNote::Source();
    return source.path.isEmpty() ? HardNote::Source{m_path, line} : source;
}

PageChange StudySession::Resume()
{
    const bool isSameFile = !m_place.shown.empty() && !m_fileHash.isEmpty() && m_place.fileBytes == m_fileSize &&
                            m_place.fileHash == m_fileHash;
    return m_page.Resume(isSameFile ? m_place.shown : std::vector<BlankRange>());
}

/// Reads the text of a file. @param text  empty after a refusal
StudyReading StudySession::Read(const QString &path, DisplayText *text)
{
    const QDateTime fileTime =
        QFileInfo(path).lastModified(); // taken first, so that a change during reading is noticed
    StudyLines lines;
    QByteArray bytes;
    if (TextRefusal refusal = ReadStudyText(path, MaxLineBytes, &lines, &bytes))
        return {std::move(refusal)};
    m_fileTime = fileTime;
    m_fileSize = bytes.size();
    m_fileHash.clear();
    if (m_fileSize <= MaxResumedBytes)
        m_fileHash = QString::fromLatin1(QCryptographicHash::hash(bytes, QCryptographicHash::Sha1).toHex());
    *text = DisplayText(std::move(lines));
    return {{}, BadPictureNames(*text)};
}

/// In whole seconds, as they are recorded.
EndedSession StudySession::Recorded() const
{
    const QString day = DateText(m_start.date());
    const QString startTime = TimeText(m_start);
    const QString end = DateTimeText(m_completedAt);
    return {m_start, SumOf({day, startTime, {}, end, m_completedCount})};
}

bool StudySession::IsFileChanged() const
{
    const QFileInfo file(m_path);
    return m_page.IsFileOpen() && file.exists() && file.lastModified() != m_fileTime;
}

void StudySession::CompleteRow()
{
    if (!HasBegun())
        return;
    m_completedAt = m_services.Now();
    m_completedCount = m_page.Round().lngOpenCount(); // even after a fault, which the user is told
    DBUpdRecKotoban(m_database, m_services, m_start, m_userName, m_completedCount);
}

QStringList StudySession::Complete()
{
    CompleteRow();
    return KeepLists();
}

QStringList StudySession::KeepLists()
{
    QStringList messages;
    if (const FileFault fault = KeepMarks())
        messages += MarksNotSavedMessage(fault);
    if (!m_page.IsFileOpen() || m_note)
        return messages;
    Place place = m_place; // what was shown then stays until another answer is, not only among hard blanks
    if (m_page.Round().HasShownOfAll() && m_fileHash.isEmpty())
        place = Place();
    else if (m_page.Round().HasShownOfAll())
        place = {.fileBytes = m_fileSize, .fileHash = m_fileHash, .shown = m_page.Round().ShownRanges(MaxShownRanges)};
    place.line = m_page.StoppedAt();
    if (const FileFault fault = m_stops.Write(m_userName, QFileInfo(m_path).fileName(), place))
        messages += FaultMessage(u"学習を終えた所を保存できません。"_s, fault);
    return messages;
}

void StudySession::CompleteSoFar()
{
    const int count = m_page.Round().lngOpenCount();
    if (count == m_completedCount)
        return;
    m_completedAt = m_services.Now();
    const SilentFaults silent(m_database);
    if (DBUpdRecKotoban(m_database, m_services, m_start, m_userName, count))
        m_completedCount = count;
}

void StudySession::CompleteSoFarWhenDue()
{
    const qint64 seconds = m_completedAt.secsTo(m_services.Now());
    if (seconds >= m_interimSeconds || seconds < 0)
        CompleteSoFar();
}

QString MarksNotSavedMessage(const FileFault &fault)
{
    return FaultMessage(u"苦手の印を保存できません。"_s, fault);
}

FileFault StudySession::KeepMarks()
{
    if (!HasUnsavedMarks())
        return {};
    FileFault fault =
        m_note ? KeepMarksOfNote() : m_marks.Write(GetFileTitle(m_path), m_page.Text(), m_page.Round().HardBlanks());
    if (!fault)
        m_keptMarks = m_page.Round().MarksVersion();
    return fault;
}

/// Saves the marks of the note where they come from.
FileFault StudySession::KeepMarksOfNote() const
{
    QStringList kept;
    QStringList removed;
    for (int blank = 1; blank <= qMin(m_note->BlankCount(), m_page.Round().BlankCount()); ++blank)
        (m_page.Round().IsHard(blank) ? kept : removed) += m_note->EntryOf(blank);
    return m_marks.Change(removed, kept);
}

std::optional<ElapsedTime> StudySession::ClockTick() const
{
    return m_clockStart.isValid() ? ::ClockTick(m_clockStart, m_services.Now()) : std::nullopt;
}
