// The lines of a study file: one contiguous text and a table of where its lines start, with what was noticed while they
// were read, so that nobody need look through the whole text for it again. Lines are numbered from 1. Places in the
// text have 32 bits, which no file that is read at all outgrows.
#pragma once

#include <QString>
#include <QStringView>

#include <algorithm>
#include <vector>

class StudyLines
{
  public:
    int Count() const
    {
        return int(m_starts.size()) - 1;
    }

    /// A line, 1..Count(). The view is valid until the lines change.
    QStringView at1(int line) const
    {
        const qsizetype start = StartOf(line);
        return QStringView(m_text).sliced(start, StartOf(line + 1) - start);
    }

    /// The text of lines first..last, which has nothing between them. 1 <= first <= last <= Count()
    QStringView Lines(int first, int last) const
    {
        return QStringView(m_text).sliced(StartOf(first), StartOf(last + 1) - StartOf(first));
    }

    /// Where a line, 1..Count() + 1, starts in the text of all lines, 0 the first character.
    qint32 StartOf(int line) const
    {
        return m_starts[size_t(line) - 1];
    }

    /// The first line from a given one on, 1..Count() + 1, that holds a character; 0 when there is none.
    int NextLineWith(QChar character, int fromLine) const;

    /// Whether the brackets of every line take turns, "[" first and "]" last.
    bool BracketsTakeTurns() const
    {
        return m_bracketsTakeTurns;
    }

    /// Blanks in lines whose brackets take turns.
    int BlankCount() const
    {
        return int(m_brackets.size() / 2);
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

    /// Replaces every "[" and "]" by a space.
    /// @return where they stood in the text of all lines, ascending, 0 the first character
    std::vector<qint32> BlankOutBrackets();

  private:
    friend class StudyLinesWriter;

    QString m_text;
    std::vector<qint32> m_starts{0}; // start of each line, and behind them the end of the last
    std::vector<qint32> m_brackets;  // place of each bracket in m_text
    bool m_bracketsTakeTurns = true;
    qsizetype m_longestLineBytes = 0;
};

/// Makes the lines of a whole file, one character after the other.
class StudyLinesWriter
{
  public:
    /// @param capacity  characters that the text will have at most, without line ends
    explicit StudyLinesWriter(qsizetype capacity);

    char16_t *next; ///< where the next character goes, other than a bracket; moved on by whoever writes one

    /// Adds "[" or "]".
    void AddBracket(char16_t bracket)
    {
        const bool isOpening = bracket == u'[';
        m_lines.m_bracketsTakeTurns &= isOpening != m_isInBrackets;
        m_isInBrackets = isOpening;
        m_lines.m_brackets.push_back(Written());
        *next++ = bracket;
    }

    /// @param byteCount  bytes that the line had in the file
    void EndLine(qsizetype byteCount)
    {
        m_lines.m_bracketsTakeTurns &= !m_isInBrackets;
        m_isInBrackets = false;
        m_lines.m_longestLineBytes = std::max(m_lines.m_longestLineBytes, byteCount);
        m_lines.m_starts.push_back(Written());
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
    bool m_isInBrackets = false;
};
