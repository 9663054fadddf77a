// SPDX-FileCopyrightText: 2026 The Kotoban developers
// SPDX-License-Identifier: MIT

#include "exchange/modTable.h"

#include <QDeadlineTimer>

#include <algorithm>
#include <map>

using namespace Qt::Literals::StringLiterals;

namespace {

constexpr QChar Quote = u'"';
constexpr int SampleRows = 20; // rows that a guess is based on
constexpr QStringView Separators[] = {u"\t", u",", u";", u" - ", u" \u2013 ", u" \u2014 "}; // guessed

bool IsLineEnd(QChar character)
{
    return character == u'\r' || character == u'\n';
}

bool IsBlank(QStringView text)
{
    return std::ranges::all_of(text, [](QChar character) { return character.isSpace(); });
}

/// Whether a spreadsheet could run a cell, apart from any apostrophes before it; see GuardedCell.
bool IsFormula(QStringView cell)
{
    while (cell.startsWith(u'\''))
        cell = cell.sliced(1);
    const bool runsWhole = cell.startsWith(u'=');
    const bool runsParts = !cell.isEmpty() && QStringView(u"+-@\t\r").contains(cell.front());
    return runsWhole || (runsParts && (cell.contains(u'(') || cell.contains(u'|') || cell.contains(u'!')));
}

/// 1-based number of the line at a position in a text.
int LineAt(QStringView text, qsizetype position)
{
    int line = 1;
    for (qsizetype at = 0; at < position; ++at)
        line += text[at] == u'\n' || (text[at] == u'\r' && (at + 1 == text.size() || text[at + 1] != u'\n'));
    return line;
}

/// The line around a position in a text, without its line ending.
QStringView LineAround(QStringView text, qsizetype position)
{
    qsizetype start = position;
    while (start > 0 && !IsLineEnd(text[start - 1]))
        --start;
    return text.sliced(start, std::find_if(text.begin() + position, text.end(), IsLineEnd) - text.begin() - start);
}

} // namespace

QStringView Table::Cell(int row, int column) const
{
    if (column > CellCount(row))
        return {};
    const size_t cell = size_t(RowAt(row).firstCell + column - 1);
    const qint32 start = cell == 0 ? 0 : m_cellEnds[cell - 1];
    return QStringView(m_text).sliced(start, m_cellEnds[cell] - start);
}

int Table::UnevenRows() const
{
    int uneven = 0;
    for (int row = 2; row <= RowCount(); ++row)
        uneven += CellCount(row) != CellCount(1);
    return uneven;
}

void Table::Clear()
{
    m_text.resize(0);
    m_cellEnds.clear();
    m_rows.clear();
    m_columnCount = 0;
}

TableReader::TableReader(QStringView text, const TableFormat &format, Table memory)
    : m_source(text), m_format(format), m_isCsv(format.separator == u"," || format.separator == u";"),
      m_at(format.start), m_number(format.firstNumber), m_table(std::move(memory))
{
    m_table.Clear();
}

bool TableReader::GoOn(const QDeadlineTimer &deadline, int mostRows)
{
    constexpr int cellsOfPiece = 64; // asking for the time takes as long as a short cell
    const auto hasMore = [&] { return m_isGood && m_at < m_source.size() && m_table.RowCount() < mostRows; };
    while (hasMore()) {
        for (int left = cellsOfPiece; left > 0 && hasMore(); --left)
            ReadNextCell();
        if (deadline.hasExpired())
            break;
    }
    return hasMore();
}

double TableReader::Done() const
{
    return m_source.isEmpty() ? 1 : double(m_at) / double(m_source.size());
}

int TableReader::ErrorLine() const
{
    return m_isGood ? 0 : LineAt(m_source, m_at);
}

void TableReader::ReadNextCell()
{
    if (m_column == 0) {
        m_rowStart = m_at;
        m_firstCell = qint32(m_table.m_cellEnds.size());
    }
    ++m_column;
    m_isGood = ReadCell();
    EndCell();
    if (!m_isGood || m_at == m_source.size() || IsLineEnd(m_source[m_at])) {
        EndRow();
        return;
    }
    m_at += m_format.separator.size();
    if (m_at == m_source.size()) { // an empty cell is the last
        ++m_column;
        EndCell();
        EndRow();
    }
}

bool TableReader::ReadCell()
{
    if (m_at < m_source.size() && m_source[m_at] == Quote) {
        const Quoted quoted = ReadQuotedCell();
        if (quoted != Quoted::IsNone)
            return quoted == Quoted::Ends;
    }
    const qsizetype start = m_at;
    while (m_at < m_source.size() && !EndsCell(m_at))
        ++m_at;
    m_table.m_text += m_source.sliced(start, m_at - start);
    return true;
}

TableReader::Quoted TableReader::ReadQuotedCell()
{
    const qsizetype cellStart = m_table.m_text.size();
    const Quoted quoted = TakeQuotedCell();
    if (quoted == Quoted::Ends) {
        for (const QStringView separator : Separators)
            if (QStringView(m_table.m_text).sliced(cellStart).contains(separator) &&
                !m_quotedSeparators.contains(separator))
                m_quotedSeparators += separator.toString();
        return quoted;
    }
    m_table.m_text.truncate(cellStart);
    // Only in CSV is an unterminated quote an error: other programs write quotes literally.
    return m_isCsv ? quoted : Quoted::IsNone;
}

TableReader::Quoted TableReader::TakeQuotedCell()
{
    bool hasLineEnds = false;
    qsizetype at = m_at + 1;
    for (bool isOpen = true; isOpen;) {
        const qsizetype quote = m_source.indexOf(Quote, at);
        if (quote < 0)
            return Quoted::NeverEnds;
        const QStringView piece = m_source.sliced(at, quote - at);
        hasLineEnds = hasLineEnds || std::ranges::any_of(piece, IsLineEnd);
        m_table.m_text += piece;
        isOpen = quote + 1 < m_source.size() && m_source[quote + 1] == Quote;
        if (isOpen)
            m_table.m_text += Quote;
        at = quote + (isOpen ? 2 : 1);
    }
    while (at < m_source.size() && m_source[at] == u' ' && !EndsCell(at))
        ++at;
    if ((at == m_source.size() || EndsCell(at)) && !(hasLineEnds && HoldsWholeRows(at))) {
        m_at = at;
        return Quoted::Ends;
    }
    // Literal quotes, as around direct speech, do not span lines: here the closing quote was forgotten.
    return hasLineEnds ? Quoted::NeverEnds : Quoted::IsNone;
}

/// Whether a quoted cell that spans lines has separators too, and its lines all have as many. If so, they are rows
/// of speech that begins in one and ends in another; what a spreadsheet quotes hardly ever looks like that.
/// @param end  position after the cell
bool TableReader::HoldsWholeRows(qsizetype end) const
{
    if (m_isCsv || !m_source.sliced(m_at, end - m_at).contains(m_format.separator))
        return false;
    const auto separatorsAt = [this](qsizetype at) { return LineAround(m_source, at).count(m_format.separator); };
    const qsizetype separators = separatorsAt(m_at);
    for (qsizetype at = m_at; at < end; ++at)
        if (IsLineEnd(m_source[at]) && separatorsAt(at + 1) != separators && !m_source.sliced(at).startsWith(u"\r\n"))
            return false;
    return true;
}

bool TableReader::EndsCell(qsizetype at) const
{
    const QString &separator = m_format.separator;
    const QChar character = m_source[at];
    return IsLineEnd(character) ||
           (character == separator.front() && (separator.size() == 1 || m_source.sliced(at).startsWith(separator)));
}

void TableReader::EndCell()
{
    const qsizetype start = m_table.m_cellEnds.empty() ? 0 : m_table.m_cellEnds.back();
    if (m_format.leftOut.contains(m_column)) {
        m_table.m_text.truncate(start);
        return;
    }
    if (m_format.isHtml) {
        const QString plain = TextOfHtml(QStringView(m_table.m_text).sliced(start), m_format.pictureNameOf);
        m_table.m_text.truncate(start);
        m_table.m_text += plain;
    } else if (m_format.pictureNameOf &&
               QStringView(m_table.m_text).sliced(start).contains(u"<img", Qt::CaseInsensitive)) {
        const QString named = WithPictureNames(QStringView(m_table.m_text).sliced(start), m_format.pictureNameOf);
        m_table.m_text.truncate(start);
        m_table.m_text += named;
    }
    const QStringView cell = QStringView(m_table.m_text).sliced(start);
    if (m_format.isGuarded && cell.startsWith(u'\'') && IsFormula(cell))
        m_table.m_text.remove(start, 1);
    m_table.m_cellEnds.push_back(qint32(m_table.m_text.size()));
}

void TableReader::EndRow()
{
    const bool isLeftOut = m_column == 1 && IsBlank(m_source.sliced(m_rowStart, m_at - m_rowStart));
    std::vector<qint32> &ends = m_table.m_cellEnds;
    if (isLeftOut) {
        ends.resize(size_t(m_firstCell));
        m_table.m_text.truncate(ends.empty() ? 0 : ends.back());
    } else if (const int count = int(ends.size()) - m_firstCell; count > 0) {
        m_table.m_rows.push_back({m_firstCell, count, m_number});
        m_table.m_columnCount = std::max(m_table.m_columnCount, count);
    }
    m_column = 0;
    ++m_number;
    if (m_at < m_source.size() && m_source[m_at] == u'\r')
        ++m_at;
    if (m_at < m_source.size() && m_source[m_at] == u'\n')
        ++m_at;
}

bool ReadTable(const QString &text, const TableFormat &format, Table *table, int *errorLine)
{
    TableReader reader(text, format);
    reader.GoOn(QDeadlineTimer(QDeadlineTimer::Forever));
    *errorLine = reader.ErrorLine();
    *table = *errorLine == 0 ? reader.Take() : Table();
    return *errorLine == 0;
}

QString GuardedCell(QStringView cell)
{
    return IsFormula(cell) ? u'\'' + cell.toString() : cell.toString();
}

QString Quoted(const QString &field)
{
    return u'"' + QString(field).replace(u'"', u"\"\""_s) + u'"';
}

QString CsvField(QStringView text)
{
    const QString field = GuardedCell(text);
    return field.contains(u',') || field.contains(u'"') ? Quoted(field) : field;
}

namespace {

/// The most common row width in a sample. Rows of a single cell are not considered.
struct CommonWidth
{
    int rows = 0;  ///< number of rows with that width
    int cells = 0; ///< the width

    auto operator<=>(const CommonWidth &) const = default;
};

/// The result of splitting the first rows by one of the separators.
struct Sample
{
    QStringView separator;
    CommonWidth common;
    bool isEven;        // all rows have the same number of cells, more than one
    QStringList quoted; // separators that occur inside quoted cells
};

Sample SampleOf(QStringView rows, QStringView separator)
{
    TableReader reader(rows, TableFormat{.separator = separator.toString()});
    reader.GoOn(QDeadlineTimer(QDeadlineTimer::Forever), SampleRows); // a failure only makes the sample smaller
    const Table &table = reader.Rows();
    std::map<int, int> rowsByCells;
    for (int row = 1; row <= table.RowCount(); ++row)
        ++rowsByCells[table.CellCount(row)];
    Sample sample{separator, {}, false, reader.QuotedSeparators()};
    for (const auto &[cells, count] : rowsByCells)
        if (cells > 1)
            sample.common = std::max(sample.common, CommonWidth{count, cells});
    sample.isEven = sample.common.rows > 0 && sample.common.rows == table.RowCount();
    return sample;
}

/// Whether every comma at the beginning of a text is followed by a space, as in sentences.
bool HasOnlyCommasOfSentences(QStringView text)
{
    constexpr qsizetype looked = 100'000;
    text = text.first(qMin(text.size(), looked));
    return text.count(u',') == text.count(u", ");
}

} // namespace

QString GuessSeparator(QStringView rows)
{
    std::vector<Sample> samples;
    for (const QStringView separator : Separators)
        samples.push_back(SampleOf(rows, separator));
    const auto isEvenDash = [](const Sample &sample) { return sample.isEven && sample.separator.size() > 1; };
    if (std::ranges::any_of(samples, isEvenDash) && HasOnlyCommasOfSentences(rows))
        std::erase_if(samples, [](const Sample &sample) { return sample.separator == u","; });
    Sample best = samples.front();
    for (const Sample &sample : samples)
        if (!samples.front().isEven && sample.common > best.common)
            best = sample;
    // If another separator gives an even table with the best one inside quotes, the best one is only text.
    for (const Sample &sample : samples)
        if (sample.quoted.contains(best.separator) && sample.common.rows >= best.common.rows && sample.isEven)
            return sample.separator.toString();
    return best.separator.toString();
}
