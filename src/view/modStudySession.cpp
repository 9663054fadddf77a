#include "view/modStudySession.h"

#include "store/modDB_SQLite.h"
#include "text/modCheckText.h"
#include "text/modPictureName.h"
#include "text/modReadText.h"

#include <QFileInfo>

#include <utility>

StudySession::StudySession(const SystemServices &services, StudyDatabase &database, const QString &userName)
    : m_services(services), m_database(database), m_userName(userName)
{
}

bool StudySession::Open(const QString &path, QString *message)
{
    m_start = m_services.Now();
    m_path.clear();
    m_text = DisplayText();
    m_round.Load(0);
    m_clockStart = QDateTime();
    DBInsRecKotoban(m_database, m_start, m_userName, GetFileTitle(path));
    int errorLine = 0;
    if (!Read(path, message, &errorLine))
        return false;
    m_path = path;
    m_round.Load(m_text.Blanks().Count());
    m_clockStart = m_services.Now();
    return true;
}

bool StudySession::ReadAgain(QString *message, int *errorLine)
{
    if (!Read(m_path, message, errorLine))
        return false;
    m_round.Reload(m_text.Blanks().Count());
    return true;
}

/// Takes the text of a file, or leaves the one there is.
bool StudySession::Read(const QString &path, QString *message, int *errorLine)
{
    const QDateTime fileTime = QFileInfo(path).lastModified(); // first: a change while it is read is one
    StudyLines lines;
    if (!ReadTextFile(path, MaxLineBytes, &lines, message, errorLine))
        return false;
    m_fileTime = fileTime;
    m_text = DisplayText(std::move(lines));
    *message = BadPictureNamesMessage(BadPictureNames(m_text));
    return true;
}

bool StudySession::IsFileChanged() const
{
    const QFileInfo file(m_path);
    return IsFileOpen() && file.exists() && file.lastModified() != m_fileTime;
}

void StudySession::Complete()
{
    if (HasBegun())
        DBUpdRecKotoban(m_database, m_services, m_start, m_userName, m_round.lngOpenCount());
}

std::optional<ElapsedTime> StudySession::ClockTick() const
{
    return m_clockStart.isValid() ? ::ClockTick(m_clockStart, m_services.Now()) : std::nullopt;
}
