#include "text/modDisplayText.h"

#include "base/modCodePage.h"

#include <utility>

int BlankTable::FirstOnLines(int first, int last) const
{
    const int before = countUpTo[size_t(first) - 1];
    return countUpTo[size_t(last)] > before ? before + 1 : 0;
}

int BlankTable::LastOnLines(int first, int last) const
{
    const int upTo = countUpTo[size_t(last)];
    return upTo > countUpTo[size_t(first) - 1] ? upTo : 0;
}

DisplayText::DisplayText(StudyLines lines) : m_lines(std::move(lines))
{
    const std::vector<qint32> brackets = m_lines.BlankOutBrackets(); // in turns: two make a blank
    m_blanks.line.reserve(brackets.size() / 2);
    m_blanks.startColumn.reserve(brackets.size() / 2);
    m_blanks.answerLength.reserve(brackets.size() / 2);
    m_blanks.countUpTo.reserve(size_t(m_lines.Count()) + 1);
    m_blanks.countUpTo.push_back(0);
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
    const int last = m_blanks.LastOnLines(line, line);
    for (int blank = m_blanks.FirstOnLines(line, line); blank > 0 && blank <= last; ++blank) {
        if (isHidden && !isHidden(blank))
            continue;
        const size_t i = size_t(blank) - 1;
        const qsizetype start = m_blanks.startColumn[i] - 1;
        for (qsizetype at = start; at < start + m_blanks.answerLength[i] + 2; ++at)
            text[at] = CellsOf(text[at]) == 2 ? QChar(0x3000) : QChar(u' ');
    }
    return text;
}

QStringView DisplayText::Answer(int blank) const
{
    const size_t i = size_t(blank) - 1;
    return Line(m_blanks.line[i]).sliced(m_blanks.startColumn[i], m_blanks.answerLength[i]);
}

CellRange DisplayText::Cells(int blank) const
{
    const size_t i = size_t(blank) - 1;
    const QStringView line = Line(m_blanks.line[i]);
    const int start = CellsOf(line.first(m_blanks.startColumn[i] - 1));
    return {start, start + 2 + CellsOf(Answer(blank))};
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
