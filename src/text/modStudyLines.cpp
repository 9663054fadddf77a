#include "text/modStudyLines.h"

#include "platform/modMemory.h"

#include <utility>

std::vector<qint32> StudyLines::BlankOutBrackets()
{
    QChar *const text = m_text.data();
    for (const qint32 place : m_brackets)
        text[place] = u' ';
    return std::exchange(m_brackets, {});
}

StudyLinesWriter::StudyLinesWriter(qsizetype room)
{
    m_lines.m_text = QString(room, Qt::Uninitialized);
    PreferLargePages(m_lines.m_text.data(), room * qsizetype(sizeof(QChar)));
    // Guesses that few files outgrow.
    ReserveLargePages(&m_lines.m_starts, size_t(room / 32));
    ReserveLargePages(&m_lines.m_brackets, size_t(room / 16));
    next = reinterpret_cast<char16_t *>(m_lines.m_text.data());
    m_begin = next;
}

StudyLines StudyLinesWriter::Finish()
{
    m_lines.m_text.truncate(Written());
    m_lines.m_text.squeeze();
    return std::move(m_lines);
}
