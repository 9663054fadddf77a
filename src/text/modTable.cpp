#include "text/modTable.h"

#include "text/modHtmlText.h"

#include <algorithm>
#include <limits>
#include <map>
#include <utility>

namespace {

constexpr QChar Quote = u'"';
constexpr int SampleRows = 20; // that a guess is made from

bool IsLineEnd(QChar character)
{
    return character == u'\r' || character == u'\n';
}

bool IsBlank(QStringView text)
{
    return std::ranges::all_of(text, [](QChar character) { return character.isSpace(); });
}

/// 1-based line of a place in a text.
int LineAt(QStringView text, qsizetype place)
{
    int line = 1;
    for (qsizetype at = 0; at < place; ++at)
        line += text[at] == u'\n' || (text[at] == u'\r' && (at + 1 == text.size() || text[at + 1] != u'\n'));
    return line;
}

/// The line that a place in a text stands on, without its end.
QStringView LineAround(QStringView text, qsizetype place)
{
    qsizetype start = place;
    while (start > 0 && !IsLineEnd(text[start - 1]))
        --start;
    return text.sliced(start, std::find_if(text.begin() + place, text.end(), IsLineEnd) - text.begin() - start);
}

/// The first line that holds more than blanks. @param start  where the text begins
QStringView FirstLine(QStringView text, qsizetype start)
{
    const auto first =
        std::find_if(text.begin() + start, text.end(), [](QChar character) { return !character.isSpace(); });
    return first == text.end() ? QStringView() : LineAround(text, first - text.begin());
}

} // namespace

int Table::CellCount(int row) const
{
    const bool isLast = row == RowCount();
    return int(isLast ? qint32(m_cellEnds.size()) : m_rows[size_t(row)].firstCell) - m_rows[size_t(row) - 1].firstCell;
}

QStringView Table::Cell(int row, int column) const
{
    if (column > CellCount(row))
        return {};
    const size_t cell = size_t(m_rows[size_t(row) - 1].firstCell + column - 1);
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

/// Goes through a text once.
class TableReader
{
  public:
    TableReader(QStringView text, const TableFormat &format)
        : m_source(text), m_format(format), m_isTabbed(format.separator == u'\t'),
          m_tabsOfLine(m_isTabbed ? FirstLine(text, format.start).count(u'\t') : 0), m_at(format.start),
          m_number(format.firstNumber)
    {
    }

    /// @return false when a quoted cell never ends, on which the reader then stands
    bool Read(int mostRows)
    {
        bool isGood = true;
        while (isGood && m_at < m_source.size() && m_table.RowCount() < mostRows)
            isGood = ReadRow();
        return isGood;
    }

    qsizetype Place() const
    {
        return m_at;
    }

    Table TakeTable()
    {
        return std::move(m_table);
    }

  private:
    enum class Quoted
    {
        Ends,
        IsNone, ///< the quotes are text
        NeverEnds,
    };

    bool ReadRow()
    {
        const qsizetype start = m_at;
        const qint32 firstCell = qint32(m_table.m_cellEnds.size());
        bool isGood = true;
        int column = 1;
        for (;; ++column) {
            isGood = ReadCell();
            EndCell(column);
            if (!isGood || m_at == m_source.size() || IsLineEnd(m_source[m_at]))
                break;
            ++m_at;
        }
        const bool isLeftOut = column == 1 && IsBlank(m_source.sliced(start, m_at - start));
        EndRow(firstCell, isLeftOut);
        return isGood;
    }

    bool ReadCell()
    {
        if (m_at < m_source.size() && m_source[m_at] == Quote) {
            const Quoted quoted = ReadQuotedCell();
            if (quoted != Quoted::IsNone)
                return quoted == Quoted::Ends;
        }
        const qsizetype start = m_at;
        while (m_at < m_source.size() && !EndsCell(m_source[m_at]))
            ++m_at;
        m_table.m_text += m_source.sliced(start, m_at - start);
        return true;
    }

    Quoted ReadQuotedCell()
    {
        const qsizetype cellStart = m_table.m_text.size();
        const Quoted quoted = TakeQuotedCell();
        if (quoted == Quoted::Ends)
            return quoted;
        m_table.m_text.truncate(cellStart);
        // Programs that write tabs write quotes as they are: there one that never closes is a quote and no fault.
        return m_isTabbed ? Quoted::IsNone : quoted;
    }

    Quoted TakeQuotedCell()
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
        while (at < m_source.size() && m_source[at] == u' ' && !EndsCell(u' '))
            ++at;
        if ((at == m_source.size() || EndsCell(m_source[at])) && !(hasLineEnds && HoldsWholeRows(at))) {
            m_at = at;
            return Quoted::Ends;
        }
        // Nobody quotes a speaker over several lines: there the quote that ends the cell was forgotten.
        return hasLineEnds ? Quoted::NeverEnds : Quoted::IsNone;
    }

    /// Whether a quoted cell of a tabbed table runs over lines that are rows by themselves: it ends with the quote of
    /// another cell then. @param end  behind the cell
    bool HoldsWholeRows(qsizetype end) const
    {
        if (m_tabsOfLine == 0 || LineAround(m_source, m_at).count(u'\t') != m_tabsOfLine)
            return false;
        for (qsizetype at = m_at; at < end; ++at)
            if (IsLineEnd(m_source[at]) && LineAround(m_source, at + 1).count(u'\t') != m_tabsOfLine &&
                !m_source.sliced(at).startsWith(u"\r\n"))
                return false;
        return true;
    }

    bool EndsCell(QChar character) const
    {
        return character == m_format.separator || IsLineEnd(character);
    }

    void EndCell(int column)
    {
        const qsizetype start = m_table.m_cellEnds.empty() ? 0 : m_table.m_cellEnds.back();
        if (m_format.leftOut.contains(column)) {
            m_table.m_text.truncate(start);
            return;
        }
        if (m_format.isHtml) {
            const QString plain = TextOfHtml(QStringView(m_table.m_text).sliced(start));
            m_table.m_text.truncate(start);
            m_table.m_text += plain;
        }
        m_table.m_cellEnds.push_back(qint32(m_table.m_text.size()));
    }

    void EndRow(qint32 firstCell, bool isLeftOut)
    {
        std::vector<qint32> &ends = m_table.m_cellEnds;
        if (isLeftOut) {
            ends.resize(size_t(firstCell));
            m_table.m_text.truncate(ends.empty() ? 0 : ends.back());
        } else if (const int count = int(ends.size()) - firstCell; count > 0) {
            m_table.m_rows.push_back({firstCell, m_number});
            m_table.m_columnCount = std::max(m_table.m_columnCount, count);
        }
        ++m_number;
        if (m_at < m_source.size() && m_source[m_at] == u'\r')
            ++m_at;
        if (m_at < m_source.size() && m_source[m_at] == u'\n')
            ++m_at;
    }

    QStringView m_source;
    const TableFormat &m_format;
    bool m_isTabbed;
    qsizetype m_tabsOfLine; // in the first line of a tabbed table
    qsizetype m_at;
    int m_number;
    Table m_table;
};

bool ReadTable(const QString &text, const TableFormat &format, Table *table, int *errorLine)
{
    TableReader reader(text, format);
    const bool isGood = reader.Read(std::numeric_limits<int>::max());
    *table = isGood ? reader.TakeTable() : Table();
    *errorLine = isGood ? 0 : LineAt(text, reader.Place());
    return isGood;
}

namespace {

/// How many of some rows have as many cells as most of them, and how many cells that is. Rows of one cell tell nothing.
struct Likeness
{
    int rows = 0;
    int cells = 0;

    auto operator<=>(const Likeness &) const = default;
};

} // namespace

QChar GuessSeparator(QStringView rows)
{
    QChar best = u'\t';
    Likeness most;
    for (const QChar separator : {u'\t', u',', u';'}) {
        const TableFormat format{.separator = separator};
        TableReader reader(rows, format);
        reader.Read(SampleRows); // up to a quoted cell that never ends, if there is one
        const Table sample = reader.TakeTable();
        std::map<int, int> rowsByCells;
        for (int row = 1; row <= sample.RowCount(); ++row)
            ++rowsByCells[sample.CellCount(row)];
        Likeness likeness;
        for (const auto &[cells, count] : rowsByCells)
            if (cells > 1)
                likeness = std::max(likeness, Likeness{count, cells});
        if (likeness > most) {
            most = likeness;
            best = separator;
        }
        if (separator == u'\t' && likeness.rows > 0 && likeness.rows == sample.RowCount())
            break;
    }
    return best;
}
