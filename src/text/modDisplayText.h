// What the page shows of a study file: its lines with the brackets gone, and the table of its blanks. Lines, columns
// and blanks are numbered from 1. A column is a character; a cell is half the width of a full-width character.
//
//     line  = { text | blank | picture }
//     blank = '[' word ']'                  the word is hidden until the learner uncovers it
#pragma once

#include "text/modStudyLines.h"

#include <functional>
#include <ranges>
#include <vector>

/// Numbers of blanks that follow each other, for a loop; may be empty.
using BlankRange = std::ranges::iota_view<int, int>;

/// The blanks of a file in file order: by line, and from left to right within a line.
struct BlankTable
{
    std::vector<int> line;         ///< line of blank i at [i - 1]
    std::vector<int> startColumn;  ///< column of its "["
    std::vector<int> answerLength; ///< characters between the brackets
    std::vector<int> countUpTo{0}; ///< [n] = how many blanks lie on lines 1..n

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

    /// The blanks on lines first..last. 1 <= first <= last + 1, last <= number of lines
    BlankRange OnLines(int first, int last) const
    {
        return BlankRange(countUpTo[size_t(first) - 1] + 1, countUpTo[size_t(last)] + 1);
    }
};

/// The half-width cells that a blank covers with its brackets: from start up to, not including, end; 0 is the first.
struct CellRange
{
    int start;
    int end;
};

/// The horizontal edges of a blank's box, pixels.
struct BoxEdges
{
    int leftPx;
    int rightPx;
};

/// A stretch of a line.
struct TextSpan
{
    int line = 0; ///< 0 = nowhere
    int column = 0;
    int length = 0; ///< characters

    /// Of characters of a line from a 0-based one on.
    static TextSpan At(int line, qsizetype index, qsizetype length)
    {
        return {.line = line, .column = int(index) + 1, .length = int(length)};
    }

    /// 0-based index of its first character.
    qsizetype Index() const
    {
        return column - 1;
    }

    bool operator==(const TextSpan &) const = default;
};

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

    /// A line with "[" and "]" each replaced by one space, so that every character keeps its column.
    QStringView Line(int line) const
    {
        return m_lines.at1(line);
    }

    /// Lines first..last in one piece, with nothing between them. 1 <= first <= last <= LineCount()
    QStringView Lines(int first, int last) const
    {
        return m_lines.Lines(first, last);
    }

    /// Cells of the longest line: as many as it has bytes.
    int LongestLineCells() const
    {
        return int(m_lines.LongestLineBytes());
    }

    /// The first line from a given one on, 1..LineCount() + 1, that holds a character; 0 when there is none.
    int NextLineWith(QChar character, int fromLine) const
    {
        return m_lines.NextLineWith(character, fromLine);
    }

    /// The same line with every blank masked, brackets included: a full-width character becomes an ideographic space,
    /// any other a half-width one, so that nothing moves.
    /// @param isHidden  whether a blank is masked; without it all are
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

    /// The text between the brackets of a blank, 1..Blanks().Count().
    QStringView Answer(int blank) const;

    /// Where a blank stands in its line, brackets included.
    TextSpan Span(int blank) const;

    /// Where it stands as cells.
    CellRange Cells(int blank) const
    {
        return Cells(Span(blank));
    }

    /// The cells of a stretch of a line, as far as the line goes.
    CellRange Cells(const TextSpan &span) const;

  private:
    StudyLines m_lines;
    BlankTable m_blanks;
};

/// Half-width cells that a character takes: 2 when it has two bytes in code page 932, else 1.
int CellsOf(QChar character);

/// Half-width cells of the characters of a text.
int CellsOf(QStringView text);

/// Edges of a blank's box. @param cellWidthPx  width of a half-width cell; @param textLeftPx  left edge of column 1,
/// which is negative where the line begins out of view
BoxEdges GetBqInfoFromLine(const DisplayText &text, int blank, int cellWidthPx, int textLeftPx);
