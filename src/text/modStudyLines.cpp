// SPDX-FileCopyrightText: 2026 The Kotoban developers
// SPDX-License-Identifier: MIT

#include "text/modStudyLines.h"

#include "platform/modMemory.h"
#include "text/modLineSieve.h"

#include <utility>

int StudyLines::NextLineWith(QChar character, int fromLine) const
{
    const qsizetype found = m_text.indexOf(character, StartOf(fromLine));
    if (found < 0)
        return 0;
    return int(std::upper_bound(m_starts.begin(), m_starts.end(), found) - m_starts.begin());
}

int StudyLines::NextLineThrough(const LineSieve &sieve, int fromLine) const
{
    for (int line = fromLine; line <= Count(); ++line)
        if (sieve.LetsThrough(at1(line)))
            return line;
    return 0;
}

std::vector<qint32> StudyLines::BlankOutBrackets()
{
    QChar *const text = m_text.data();
    for (const qint32 bracket : m_brackets)
        text[bracket] = u' ';
    return std::exchange(m_brackets, {});
}

StudyLinesWriter::StudyLinesWriter(qsizetype capacity)
{
    m_lines.m_text = QString(capacity, Qt::Uninitialized);
    PreferLargePages(m_lines.m_text.data(), capacity * qsizetype(sizeof(QChar)));
    // Generous estimates: unused capacity costs no memory, and a vector that outgrows its capacity is reallocated.
    ReserveLargePages(&m_lines.m_starts, size_t(capacity / 4));
    ReserveLargePages(&m_lines.m_brackets, size_t(capacity / 4));
    next = reinterpret_cast<char16_t *>(m_lines.m_text.data());
    m_begin = next;
}

StudyLines StudyLinesWriter::Finish()
{
    m_lines.m_text.truncate(Written());
    m_lines.m_text.squeeze();
    return std::move(m_lines);
}
