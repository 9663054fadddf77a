// SPDX-FileCopyrightText: 2026 The Kotoban developers
// SPDX-License-Identifier: MIT

// The lines of a study file: one contiguous text and a table of line starts, together with facts gathered while reading
// so that no one has to scan the whole text again. Lines are numbered from 1. Positions in the text are 32-bit, which
// is enough for MaxFileBytes.
#pragma once

#include <QString>
#include <QStringView>

#include <algorithm>
#include <vector>

class LineSieve;

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

    /// The text of lines first..last, without separators. Requires 1 <= first <= last <= Count().
    QStringView Lines(int first, int last) const
    {
        return QStringView(m_text).sliced(StartOf(first), StartOf(last + 1) - StartOf(first));
    }

    /// 0-based position in the text of all lines where a line, 1..Count() + 1, starts.
    qint32 StartOf(int line) const
    {
        return m_starts[size_t(line) - 1];
    }

    /// The first line at or after fromLine, 1..Count() + 1, that contains a character; 0 if there is none.
    int NextLineWith(QChar character, int fromLine) const;

    /// The first line at or after fromLine, 1..Count() + 1, that a sieve lets through; 0 if there is none.
    int NextLineThrough(const LineSieve &sieve, int fromLine) const;

    /// Whether "[" and "]" alternate on every line, "[" first and "]" last.
    bool BracketsTakeTurns() const
    {
        return m_bracketsTakeTurns;
    }

    /// Number of blanks, provided that BracketsTakeTurns().
    int BlankCount() const
    {
        return int(m_brackets.size() / 2);
    }

    /// Length of the longest line in bytes of code page 932. Reading does not change a line's length in bytes: an
    /// undecodable byte becomes one character, which counts as one byte.
    qsizetype LongestLineBytes() const
    {
        return m_longestLineBytes;
    }

    void Clear()
    {
        *this = StudyLines();
    }

    /// Replaces every "[" and "]" by a space.
    /// @return their 0-based positions in the text of all lines, ascending
    std::vector<qint32> BlankOutBrackets();

  private:
    friend class StudyLinesWriter;

    QString m_text;
    std::vector<qint32> m_starts{0}; // start of each line, then the end of the last one
    std::vector<qint32> m_brackets;  // position of each bracket in m_text
    bool m_bracketsTakeTurns = true;
    qsizetype m_longestLineBytes = 0;
};

/// Builds the StudyLines of a whole file, character by character.
class StudyLinesWriter
{
  public:
    /// @param capacity  maximum number of characters in the text, without line endings
    explicit StudyLinesWriter(qsizetype capacity);

    char16_t *next; ///< where the next character other than a bracket goes; advanced by the caller that writes it

    /// Adds "[" or "]".
    void AddBracket(char16_t bracket)
    {
        const bool isOpening = bracket == u'[';
        m_lines.m_bracketsTakeTurns &= isOpening != m_isInBrackets;
        m_isInBrackets = isOpening;
        m_lines.m_brackets.push_back(Written());
        *next++ = bracket;
    }

    /// @param byteCount  length of the line in bytes, after tab expansion
    void EndLine(qsizetype byteCount)
    {
        m_lines.m_bracketsTakeTurns &= !m_isInBrackets;
        m_isInBrackets = false;
        m_lines.m_longestLineBytes = std::max(m_lines.m_longestLineBytes, byteCount);
        m_lines.m_starts.push_back(Written());
    }

    /// Returns the lines ended so far. The writer must not be used afterwards.
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
