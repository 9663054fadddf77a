// The lines of a study file: one contiguous text, a table of where its lines start, and its marks, so that whoever is
// interested in brackets need not look through the text for them. Lines and columns are numbered from 1. Places in the
// text have 32 bits: a text has at most MaxCharacters characters.
#pragma once

#include <QString>
#include <QStringView>

#include <algorithm>
#include <limits>
#include <vector>

class StudyLines
{
  public:
    static constexpr qsizetype MaxCharacters = std::numeric_limits<qint32>::max();

    int Count() const
    {
        return int(m_starts.size()) - 1;
    }

    /// The line without its end. @param line  1..Count()
    QStringView at1(int line) const
    {
        const qsizetype start = m_starts[size_t(line) - 1];
        return QStringView(m_text).sliced(start, m_starts[size_t(line)] - start);
    }

    /// The marks of a line in their order, all other characters left out: "[", "]", "｢" and "｣".
    QStringView MarksOf(int line) const
    {
        const qsizetype start = m_markStarts[size_t(line) - 1];
        return AllMarks().sliced(start, m_markStarts[size_t(line)] - start);
    }

    /// The column of a line's mark. @param index  0-based place in MarksOf(line)
    int MarkColumn(int line, qsizetype index) const
    {
        return m_markPlaces[size_t(m_markStarts[size_t(line) - 1] + index)] - m_starts[size_t(line) - 1] + 1;
    }

    /// The marks of all lines.
    QStringView AllMarks() const
    {
        return QStringView(m_marks.data(), qsizetype(m_marks.size()));
    }

    /// Bytes of code page 932 of the longest line. A byte that the code page cannot decode is one character, and one
    /// byte again: no line changes its length by being read.
    qsizetype LongestLineBytes() const
    {
        return m_longestLineBytes;
    }

    void Clear()
    {
        *this = StudyLines();
    }

    /// Replaces every "[" and "]" by a space, and forgets all marks.
    void BlankOutBrackets();

  private:
    friend class StudyLinesWriter;

    QString m_text;
    std::vector<qint32> m_starts{0}; // start of each line, and behind them the end of the last
    std::vector<char16_t> m_marks;
    std::vector<qint32> m_markPlaces;    // of each mark in m_text
    std::vector<qint32> m_markStarts{0}; // first mark of each line, and behind them their number
    qsizetype m_longestLineBytes = 0;
};

/// Makes the lines of a whole file, one character after the other.
class StudyLinesWriter
{
  public:
    /// @param room  characters that the text will have at most, without line ends
    explicit StudyLinesWriter(qsizetype room);

    char16_t *next; ///< where the next character goes; moved on by whoever writes one

    void AddMark(char16_t mark)
    {
        m_lines.m_marks.push_back(mark);
        m_lines.m_markPlaces.push_back(Written());
        *next++ = mark;
    }

    /// @param byteCount  bytes that the line had in the file
    void EndLine(qsizetype byteCount)
    {
        m_lines.m_longestLineBytes = std::max(m_lines.m_longestLineBytes, byteCount);
        m_lines.m_starts.push_back(Written());
        m_lines.m_markStarts.push_back(qint32(m_lines.m_marks.size()));
    }

    /// Hands over the lines that were ended.
    StudyLines Finish();

  private:
    qint32 Written() const
    {
        return qint32(next - m_begin);
    }

    StudyLines m_lines;
    const char16_t *m_begin;
};
