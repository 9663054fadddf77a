// SPDX-FileCopyrightText: 2026 The Kotoban developers
// SPDX-License-Identifier: MIT

// What the page shows of a study file: its lines without brackets, and the table of its blanks. Lines, columns and
// blanks are numbered from 1. A column is a character; a cell is half the width of a full-width character.
//
//     line    = { text | blank | picture }
//     blank   = '[' word ']'                the word is hidden until the user uncovers it
//     picture = '｢' name '｣'                see modPictureName.h
#pragma once

#include "text/modStudyLines.h"

#include <functional>
#include <ranges>
#include <vector>

/// Consecutive blank numbers, to loop over; may be empty.
using BlankRange = std::ranges::iota_view<int, int>;

/// The blanks of a file in file order: by line, and from left to right within a line. Blank i is at index i - 1.
struct BlankTable
{
    std::vector<int> line;         ///< its line
    std::vector<int> startColumn;  ///< column of its "["
    std::vector<int> answerLength; ///< number of characters between the brackets
    std::vector<int> countUpTo{0}; ///< by line number instead: [n] is the number of blanks on lines 1..n

    int Count() const
    {
        return int(line.size());
    }

    int LineOf(int blank) const
    {
        return line[size_t(blank) - 1];
    }

    int StartColumnOf(int blank) const
    {
        return startColumn[size_t(blank) - 1];
    }

    int AnswerLengthOf(int blank) const
    {
        return answerLength[size_t(blank) - 1];
    }

    /// The blanks on lines first..last. Requires 1 <= first <= last + 1 and last <= number of lines.
    BlankRange OnLines(int first, int last) const
    {
        return BlankRange(countUpTo[size_t(first) - 1] + 1, countUpTo[size_t(last)] + 1);
    }
};

/// A half-open range [start, end) of half-width cells of a line, numbered from 0.
struct CellRange
{
    int start;
    int end;

    bool operator==(const CellRange &) const = default;
};

/// The horizontal edges of a blank's box, in pixels.
struct BoxEdges
{
    int leftPx;
    int rightPx;
};

/// A range of characters in a line.
struct TextSpan
{
    int line = 0; ///< 0 = no span
    int column = 0;
    int length = 0; ///< in characters

    /// The span that starts at a 0-based character index.
    static TextSpan At(int line, qsizetype index, qsizetype length)
    {
        return {.line = line, .column = int(index) + 1, .length = int(length)};
    }

    /// 0-based index of the first character.
    qsizetype Index() const
    {
        return column - 1;
    }

    /// 0-based index of the last character.
    qsizetype LastIndex() const
    {
        return Index() + length - 1;
    }

    bool operator==(const TextSpan &) const = default;
};

/// File order of spans.
bool IsBefore(const TextSpan &first, const TextSpan &second);

/// The first span after a position in file order, wrapping around at the end; backwards the last one before it.
/// @param spans  in file order
/// @return a span on line 0 if there are none
TextSpan NextSpan(const std::vector<TextSpan> &spans, const TextSpan &from, bool backwards);

class DisplayText
{
  public:
    DisplayText() = default;

    /// @param lines  accepted by ReadTextFile
    explicit DisplayText(StudyLines lines);

    int LineCount() const
    {
        return m_lines.Count();
    }

    /// A line with every "[" and "]" replaced by a space, so that every character keeps its column.
    QStringView Line(int line) const
    {
        return m_lines.at1(line);
    }

    /// Lines first..last as one text without separators. Requires 1 <= first <= last <= LineCount().
    QStringView Lines(int first, int last) const
    {
        return m_lines.Lines(first, last);
    }

    /// Width of the longest line in cells, which equals its length in bytes.
    int LongestLineCells() const
    {
        return int(m_lines.LongestLineBytes());
    }

    /// The first line at or after fromLine, 1..LineCount() + 1, that contains a character; 0 if there is none.
    int NextLineWith(QChar character, int fromLine) const
    {
        return m_lines.NextLineWith(character, fromLine);
    }

    /// The first line at or after fromLine, 1..LineCount() + 1, that a sieve lets through; 0 if there is none.
    int NextLineThrough(const LineSieve &sieve, int fromLine) const
    {
        return m_lines.NextLineThrough(sieve, fromLine);
    }

    /// A line with its blanks masked, brackets included: a full-width character becomes an ideographic space, any other
    /// a half-width one, so that nothing moves.
    /// @param isHidden  whether to mask a blank; if empty, all are masked
    QString MaskedLine(int line, const std::function<bool(int blank)> &isHidden = {}) const;

    const BlankTable &Blanks() const
    {
        return m_blanks;
    }

    /// The blanks of a line, from left to right.
    BlankRange BlanksOnLine(int line) const
    {
        return m_blanks.OnLines(line, line);
    }

    /// A blank by its number on its line, 1 for the leftmost; 0 if the line has not so many.
    int BlankOnLine(int line, int number) const
    {
        const BlankRange blanks = BlanksOnLine(line);
        return number <= int(blanks.size()) ? blanks.front() + number - 1 : 0;
    }

    /// The number of a blank on its line.
    int NumberOnLine(int blank) const
    {
        return blank - BlanksOnLine(m_blanks.LineOf(blank)).front() + 1;
    }

    /// The text between the brackets of a blank, 1..Blanks().Count().
    QStringView Answer(int blank) const;

    /// The span of a blank, brackets included.
    TextSpan Span(int blank) const;

    /// The cells of a blank, brackets included.
    CellRange Cells(int blank) const
    {
        return Cells(Span(blank));
    }

    /// The cells of a span, clipped to its line.
    CellRange Cells(const TextSpan &span) const;

  private:
    StudyLines m_lines;
    BlankTable m_blanks;
};

/// Width of a character in half-width cells: 2 if it takes two bytes in code page 932, else 1.
int CellsOf(QChar character);

/// Width of a text in half-width cells.
int CellsOf(QStringView text);

/// Edges of a blank's box.
/// @param cellWidthPx  width of a half-width cell
/// @param textLeftPx  left edge of column 1; negative if the line begins out of view
BoxEdges GetBqInfoFromLine(const DisplayText &text, int blank, int cellWidthPx, int textLeftPx);
