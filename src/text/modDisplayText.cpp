#include "text/modDisplayText.h"

#include "platform/modCodePage.h"

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

DisplayText::DisplayText(const StudyLines &lines) : m_lines(lines)
{
    m_blanks.countUpTo.reserve(size_t(lines.Count()) + 1);
    m_blanks.countUpTo.push_back(0);
    for (int line = 1; line <= lines.Count(); ++line) {
        AddBlanksOfLine(lines.at1(line), line);
        m_blanks.countUpTo.push_back(m_blanks.Count());
    }
    m_lines.Replace(u'[', u' ');
    m_lines.Replace(u']', u' ');
}

void DisplayText::AddBlanksOfLine(QStringView line, int lineNumber)
{
    int cell = 0;
    for (int column = 1; column <= line.size(); ++column) {
        const QChar character = line[column - 1];
        if (character == u'[') {
            m_blanks.line.push_back(lineNumber);
            m_blanks.startColumn.push_back(column);
            m_blanks.startCell.push_back(cell);
        }
        cell += CellsOf(character);
        if (character == u']') {
            m_blanks.answerLength.push_back(column - m_blanks.startColumn.back() - 1);
            m_blanks.endCell.push_back(cell);
        }
    }
}

QString DisplayText::MaskedLine(int line) const
{
    QString text = Line(line).toString();
    const int last = m_blanks.LastOnLines(line, line);
    for (int blank = m_blanks.FirstOnLines(line, line); blank > 0 && blank <= last; ++blank) {
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

int CellsOf(QChar character)
{
    return IsDoubleByte(character) ? 2 : 1;
}

BoxEdges GetBqInfoFromLine(const BlankTable &blanks, int blank, int cellWidthPx, int textLeftPx)
{
    const size_t i = size_t(blank) - 1;
    return {textLeftPx + blanks.startCell[i] * cellWidthPx, textLeftPx + blanks.endCell[i] * cellWidthPx};
}
