// SPDX-FileCopyrightText: 2026 The Kotoban developers
// SPDX-License-Identifier: MIT

#include "study/modStudySession.h"

#include "base/modFile.h"
#include "store/modDB_SQLite.h"
#include "text/modCheckText.h"
#include "text/modPictureName.h"

#include <QFileInfo>

#include <utility>

using namespace Qt::Literals::StringLiterals;

StudySession::StudySession(const SystemServices &services, StudyDatabase &database, const QString &listFolder,
                           const QString &userName, const std::function<void()> &textGoes, int interimSeconds)
    : m_services(services), m_database(database), m_userName(userName),
      m_marks(JoinPath(listFolder, u"ListMark.txt"_s), userName), m_places(JoinPath(listFolder, u"ListPlace.txt"_s)),
      m_textGoes(textGoes), m_interimSeconds(interimSeconds)
{
}

StudyReading StudySession::Open(const QString &path)
{
    m_start = m_services.Now();
    m_completedAt = m_start;
    m_completedCount = 0;
    m_path.clear();
    ReplaceText(DisplayText());
    m_round.Load(0);
    m_isMarkChanged = false;
    m_lastLine = 0;
    m_clockStart = QDateTime();
    DBInsRecKotoban(m_database, m_start, m_userName, RecordedTitle(path));
    StudyReading reading = Read(path);
    if (reading.refusal)
        return reading;
    m_path = path;
    m_round.Load(m_text.Blanks().Count(), m_marks.Find(GetFileTitle(path), m_text));
    m_lastLine = m_places.Line(m_userName, GetFileTitle(path));
    m_clockStart = m_services.Now();
    return reading;
}

StudyReading StudySession::ReadAgain()
{
    const QString title = GetFileTitle(m_path);
    const QStringList marks = m_marks.Entries(title, m_text, m_round.HardBlanks());
    StudyReading reading = Read(m_path);
    if (!reading.refusal)
        m_round.Reload(m_text.Blanks().Count(), m_marks.FindIn(marks, title, m_text));
    return reading;
}

/// Reads the text of a file; keeps the previous text if it is refused.
StudyReading StudySession::Read(const QString &path)
{
    const QDateTime fileTime =
        QFileInfo(path).lastModified(); // taken first, so that a change during reading is noticed
    StudyLines lines;
    if (TextRefusal refusal = ReadStudyText(path, MaxLineBytes, &lines))
        return {std::move(refusal)};
    m_fileTime = fileTime;
    ReplaceText(DisplayText(std::move(lines)));
    return {{}, BadPictureNames(m_text)};
}

void StudySession::ReplaceText(DisplayText text)
{
    if (m_textGoes)
        m_textGoes();
    m_text = std::move(text);
}

bool StudySession::IsFileChanged() const
{
    const QFileInfo file(m_path);
    return IsFileOpen() && file.exists() && file.lastModified() != m_fileTime;
}

QStringList StudySession::Complete(int topLine)
{
    QStringList messages;
    if (HasBegun()) {
        m_completedAt = m_services.Now();
        m_completedCount = m_round.lngOpenCount(); // even after a fault, which the user is told
        DBUpdRecKotoban(m_database, m_services, m_start, m_userName, m_completedCount);
    }
    if (const FileFault fault = KeepMarks())
        messages += MarksNotSavedMessage(fault);
    if (!IsFileOpen())
        return messages;
    if (const FileFault fault = m_places.Write(m_userName, GetFileTitle(m_path), topLine))
        messages += FaultMessage(u"学習を終えた所を保存できません。"_s, fault);
    return messages;
}

void StudySession::CompleteSoFar()
{
    const int count = m_round.lngOpenCount();
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

void StudySession::ToggleHard(int blank)
{
    m_round.ToggleHard(blank);
    m_isMarkChanged = true;
}

QString MarksNotSavedMessage(const FileFault &fault)
{
    return FaultMessage(u"苦手の印を保存できません。"_s, fault);
}

FileFault StudySession::KeepMarks()
{
    if (!m_isMarkChanged)
        return {};
    FileFault fault = m_marks.Write(GetFileTitle(m_path), m_text, m_round.HardBlanks());
    m_isMarkChanged = bool(fault);
    return fault;
}

std::optional<ElapsedTime> StudySession::ClockTick() const
{
    return m_clockStart.isValid() ? ::ClockTick(m_clockStart, m_services.Now()) : std::nullopt;
}
