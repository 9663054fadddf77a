// SPDX-FileCopyrightText: 2026 The Kotoban developers
// SPDX-License-Identifier: MIT

#include "text/modDisplayText.h"

#include "base/modCodePage.h"
#include "platform/modMemory.h"

#include <algorithm>
#include <tuple>
#include <utility>

bool IsBefore(const TextSpan &first, const TextSpan &second)
{
    return std::tie(first.line, first.column) < std::tie(second.line, second.column);
}

TextSpan NextSpan(const std::vector<TextSpan> &spans, const TextSpan &from, bool backwards)
{
    if (spans.empty())
        return TextSpan();
    if (backwards) {
        const auto next = std::lower_bound(spans.begin(), spans.end(), from, IsBefore);
        return next == spans.begin() ? spans.back() : *(next - 1);
    }
    const auto next = std::upper_bound(spans.begin(), spans.end(), from, IsBefore);
    return next == spans.end() ? spans.front() : *next;
}

DisplayText::DisplayText(StudyLines lines) : m_lines(std::move(lines))
{
    const std::vector<qint32> brackets = m_lines.BlankOutBrackets(); // alternating: each two make a blank
    ReserveLargePages(&m_blanks.line, brackets.size() / 2);
    ReserveLargePages(&m_blanks.startColumn, brackets.size() / 2);
    ReserveLargePages(&m_blanks.answerLength, brackets.size() / 2);
    ReserveLargePages(&m_blanks.countUpTo, size_t(m_lines.Count()) + 1);
    size_t i = 0;
    for (int line = 1; line <= m_lines.Count(); ++line) {
        for (; i + 1 < brackets.size() && brackets[i] < m_lines.StartOf(line + 1); i += 2) {
            m_blanks.line.push_back(line);
            m_blanks.startColumn.push_back(brackets[i] - m_lines.StartOf(line) + 1);
            m_blanks.answerLength.push_back(brackets[i + 1] - brackets[i] - 1);
        }
        m_blanks.countUpTo.push_back(m_blanks.Count());
    }
}

QString DisplayText::MaskedLine(int line, const std::function<bool(int)> &isHidden) const
{
    QString text = Line(line).toString();
    for (const int blank : BlanksOnLine(line)) {
        if (isHidden && !isHidden(blank))
            continue;
        const qsizetype start = m_blanks.StartColumnOf(blank) - 1;
        for (qsizetype at = start; at < start + m_blanks.AnswerLengthOf(blank) + 2; ++at)
            text[at] = CellsOf(text[at]) == 2 ? QChar(0x3000) : QChar(u' ');
    }
    return text;
}

QStringView DisplayText::Answer(int blank) const
{
    return Line(m_blanks.LineOf(blank)).sliced(m_blanks.StartColumnOf(blank), m_blanks.AnswerLengthOf(blank));
}

TextSpan DisplayText::Span(int blank) const
{
    return {.line = m_blanks.LineOf(blank),
            .column = m_blanks.StartColumnOf(blank),
            .length = m_blanks.AnswerLengthOf(blank) + 2};
}

CellRange DisplayText::Cells(const TextSpan &span) const
{
    const QStringView line = Line(span.line);
    const qsizetype start = qMin(span.Index(), line.size());
    const int startCell = CellsOf(line.first(start));
    return {.start = startCell, .end = startCell + CellsOf(line.sliced(start, qMin(span.length, line.size() - start)))};
}

int CellsOf(QChar character)
{
    return IsDoubleByte(character) ? 2 : 1;
}

int CellsOf(QStringView text)
{
    int cells = 0;
    for (const QChar character : text)
        cells += CellsOf(character);
    return cells;
}

BoxEdges GetBqInfoFromLine(const DisplayText &text, int blank, int cellWidthPx, int textLeftPx)
{
    const CellRange cells = text.Cells(blank);
    return {textLeftPx + cells.start * cellWidthPx, textLeftPx + cells.end * cellWidthPx};
}
