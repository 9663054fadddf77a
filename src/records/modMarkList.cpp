// SPDX-FileCopyrightText: 2026 The Kotoban developers
// SPDX-License-Identifier: MIT

#include "records/modMarkList.h"

#include "text/modLineSieve.h"

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
        LineSieve sieve;
        for (const QString &line : std::as_const(m_displayed)) {
            m_lines.insert(line, {});
            sieve.Add(line);
        }
        if (wanted.isEmpty())
            return;
        for (int line = 0; (line = text.NextLineThrough(sieve, line + 1)) > 0;) {
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

/// The lines of list entries, each split into its fields.
QStringList LinesOf(const std::vector<QStringList> &marks)
{
    QStringList lines;
    for (const QStringList &mark : marks)
        lines += mark.value(2);
    return lines;
}

QStringList LinesOf(const DisplayText &text, const std::vector<int> &blanks)
{
    QStringList lines;
    for (const int blank : blanks)
        lines += LineInFile(text, text.Blanks().LineOf(blank));
    return lines;
}

/// @param marks  list entries, each split into its fields; empty if it is none
std::vector<MarkedBlank> BlanksOf(const std::vector<QStringList> &marks, const Occurrences &occurrences,
                                  const DisplayText &text)
{
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

/// What an entry says about a blank: its line, its number on it and the occurrence of the line.
QStringList PlaceOf(int blank, const Occurrences &occurrences, const DisplayText &text)
{
    const int line = text.Blanks().LineOf(blank);
    const QString inFile = LineInFile(text, line);
    return {inFile, QString::number(text.NumberOnLine(blank)), QString::number(occurrences.Number(inFile, line))};
}

constexpr EntryField Text, Number{.isNumber = true}, Occurrence{.isNumber = true, .ifAbsent = u"1"};
constexpr EntryField FormOfEntry[] = {Text, Text, Text, Number, Occurrence};

} // namespace

MarkList::MarkList(const QString &path, const QString &userName)
    : m_list(path, {FormOfEntry, MaxMarkListBytes, false}), m_userName(userName)
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
    const std::vector<QStringList> marks = Fields(entries);
    return BlanksOf(marks, Occurrences(text, LinesOf(marks)), text);
}

std::vector<QStringList> MarkList::Fields(const QStringList &entries) const
{
    std::vector<QStringList> fields;
    for (const QString &entry : entries)
        fields.push_back(m_list.Entry(entry));
    return fields;
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
    const Occurrences occurrences(text, LinesOf(text, blanks));
    QStringList entries;
    for (const int blank : blanks)
        entries += m_list.Line(QStringList{m_userName, title} + PlaceOf(blank, occurrences, text));
    return entries;
}

FileFault MarkList::Write(const QString &title, const DisplayText &text, const std::vector<int> &blanks) const
{
    const std::vector<QStringList> present = Fields(m_list.Lines({m_userName, title}));
    const Occurrences occurrences(text,
                                  LinesOf(present) + LinesOf(text, blanks)); // looks at each line of the text once
    QStringList removed;
    QStringList added;
    std::vector<int> missing = blanks;
    for (const MarkedBlank &marked : BlanksOf(present, occurrences, text)) {
        const auto kept = std::ranges::lower_bound(blanks, marked.blank);
        if (kept == blanks.end() || *kept != marked.blank)
            removed += m_list.Line(present[size_t(marked.entry)]);
        else
            missing[size_t(kept - blanks.begin())] = 0;
    }
    for (const int blank : missing)
        if (blank > 0)
            added += m_list.Line(QStringList{m_userName, title} + PlaceOf(blank, occurrences, text));
    return m_list.Change(removed, added);
}

QString NoHardBlankMessage(const QString &fileTitle)
{
    return u"次のファイルには苦手の印のある空欄がありません。\r\n    ファイル名＝"_s + fileTitle;
}
