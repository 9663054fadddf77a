#include "text/modStudyLines.h"

#include "platform/modMemory.h"

#include <utility>

void StudyLines::BlankOutBrackets()
{
    QChar *const text = m_text.data();
    for (size_t i = 0; i < m_marks.size(); ++i)
        if (m_marks[i] == u'[' || m_marks[i] == u']')
            text[m_markPlaces[i]] = u' ';
    m_marks = std::vector<char16_t>();
    m_markPlaces = std::vector<qint32>();
    m_markStarts.assign(m_starts.size(), 0);
}

StudyLinesWriter::StudyLinesWriter(qsizetype room)
{
    m_lines.m_text = QString(room, Qt::Uninitialized);
    PreferLargePages(m_lines.m_text.data(), room * qsizetype(sizeof(QChar)));
    // Guesses that few files outgrow.
    ReserveLargePages(&m_lines.m_starts, size_t(room / 32));
    ReserveLargePages(&m_lines.m_markStarts, size_t(room / 32));
    ReserveLargePages(&m_lines.m_marks, size_t(room / 16));
    ReserveLargePages(&m_lines.m_markPlaces, size_t(room / 16));
    next = reinterpret_cast<char16_t *>(m_lines.m_text.data());
    m_begin = next;
}

StudyLines StudyLinesWriter::Finish()
{
    m_lines.m_text.truncate(Written());
    m_lines.m_text.squeeze();
    return std::move(m_lines);
}
