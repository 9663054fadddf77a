// SPDX-FileCopyrightText: 2026 The Kotoban developers
// SPDX-License-Identifier: MIT

#include "records/modMarkList.h"

#include <algorithm>
#include <utility>

using namespace Qt::Literals::StringLiterals;

namespace {

/// A line as in its file, with brackets.
QString LineInFile(const DisplayText &text, int line)
{
    QString inFile = text.Line(line).toString();
    for (const int blank : text.BlanksOnLine(line)) {
        const TextSpan span = text.Span(blank);
        inFile[span.Index()] = u'[';
        inFile[span.LastIndex()] = u']';
    }
    return inFile;
}

/// A line of the file as displayed: brackets become spaces.
QString Displayed(const QString &lineInFile)
{
    return QString(lineInFile).replace(u'[', u' ').replace(u']', u' ');
}

/// Finds the lines of a text that equal any of the wanted lines, in order of occurrence.
class Occurrences
{
  public:
    /// @param wanted  lines as in the file
    Occurrences(const DisplayText &text, const QStringList &wanted)
    {
        for (const QString &line : wanted)
            m_displayed += Displayed(line);
        for (const QString &line : std::as_const(m_displayed))
            m_lines.insert(line, {});
        for (int line = 1; line <= text.LineCount() && !wanted.isEmpty(); ++line) {
            const auto found = m_lines.find(text.Line(line));
            if (found == m_lines.end())
                continue;
            std::vector<int> &equal = (*found)[LineInFile(text, line)];
            if (equal.empty())
                equal.push_back(0); // the first is at [1]
            equal.push_back(line);
        }
    }

    /// Number of the n-th line equal to `line`; 0 if there are fewer. @param occurrence  n, 1 for the first
    int Line(const QString &line, int occurrence) const
    {
        const std::vector<int> &lines = LinesEqualTo(line);
        return occurrence < int(lines.size()) ? lines[size_t(occurrence)] : 0;
    }

    /// Which of the lines equal to `line` is line number `at`; 1 for the first.
    int Number(const QString &line, int at) const
    {
        const std::vector<int> &lines = LinesEqualTo(line);
        return int(std::ranges::lower_bound(lines, at) - lines.begin());
    }

  private:
    /// By reference: a copy for each mark would be quadratic in a file of equal lines.
    const std::vector<int> &LinesEqualTo(const QString &line) const
    {
        static const std::vector<int> none;
        const auto alike = m_lines.constFind(Displayed(line));
        if (alike == m_lines.constEnd())
            return none;
        const auto equal = alike->constFind(line);
        return equal == alike->constEnd() ? none : *equal;
    }

    QStringList m_displayed;
    // By displayed text, then by line in the file; few lines differ only in their brackets.
    QHash<QStringView, QHash<QString, std::vector<int>>> m_lines;
};

constexpr EntryField Text, Number{.isNumber = true}, Occurrence{.isNumber = true, .ifAbsent = u"1"};
constexpr EntryField Fields[] = {Text, Text, Text, Number, Occurrence};

} // namespace

MarkList::MarkList(const QString &path, const QString &userName)
    : m_list(path, {Fields, MaxMarkListBytes, false}), m_userName(userName)
{
}

std::vector<int> MarkList::Find(const QString &title, const DisplayText &text) const
{
    return FindIn(m_list.Lines({m_userName, title}), text);
}

std::vector<int> MarkList::FindIn(const QStringList &entries, const DisplayText &text) const
{
    std::vector<int> blanks;
    for (const MarkedBlank &marked : Locate(entries, text))
        if (blanks.empty() || blanks.back() != marked.blank)
            blanks.push_back(marked.blank);
    return blanks;
}

std::vector<MarkedBlank> MarkList::Locate(const QStringList &entries, const DisplayText &text) const
{
    std::vector<QStringList> marks;
    QStringList wanted;
    for (const QString &line : entries) {
        marks.push_back(m_list.Entry(line));
        wanted += marks.back().value(2);
    }
    const Occurrences occurrences(text, wanted);
    std::vector<MarkedBlank> located;
    for (size_t i = 0; i < marks.size(); ++i) {
        const QStringList &entry = marks[i];
        const int line = entry.isEmpty() ? 0 : occurrences.Line(entry[2], entry[4].toInt());
        if (const int blank = line > 0 ? text.BlankOnLine(line, entry[3].toInt()) : 0; blank > 0)
            located.push_back({blank, qsizetype(i)});
    }
    std::ranges::stable_sort(located, {}, &MarkedBlank::blank);
    return located;
}

QHash<QString, QStringList> MarkList::EntriesByTitle() const
{
    QHash<QString, QStringList> entries;
    for (const QString &line : m_list.Lines({m_userName})) {
        const QStringList entry = m_list.Entry(line);
        entries[entry[1]] += m_list.Line(entry);
    }
    return entries;
}

bool MarkList::HasEntries(const QString &title) const
{
    return !m_list.Lines({m_userName, title}).isEmpty();
}

QStringList MarkList::Entries(const QString &title, const DisplayText &text, const std::vector<int> &blanks) const
{
    QStringList marked;
    for (const int blank : blanks)
        marked += LineInFile(text, text.Blanks().LineOf(blank));
    const Occurrences occurrences(text, marked);
    QStringList entries;
    for (size_t i = 0; i < blanks.size(); ++i) {
        const QString &line = marked[qsizetype(i)];
        entries += m_list.Line({m_userName, title, line, QString::number(text.NumberOnLine(blanks[i])),
                                QString::number(occurrences.Number(line, text.Blanks().LineOf(blanks[i])))});
    }
    return entries;
}

FileFault MarkList::Write(const QString &title, const DisplayText &text, const std::vector<int> &blanks) const
{
    const QStringList present = m_list.Lines({m_userName, title});
    QStringList removed;
    std::vector<int> added = blanks;
    for (const MarkedBlank &marked : Locate(present, text)) {
        const auto kept = std::ranges::lower_bound(blanks, marked.blank);
        if (kept == blanks.end() || *kept != marked.blank)
            removed += m_list.Line(m_list.Entry(present[marked.entry]));
        else
            added[size_t(kept - blanks.begin())] = 0;
    }
    std::erase(added, 0);
    return m_list.Change(removed, Entries(title, text, added));
}

QString NoHardBlankMessage(const QString &fileTitle)
{
    return u"次のファイルには苦手の印のある空欄がありません。\r\n    ファイル名＝"_s + fileTitle;
}
