#include "files/modMarkList.h"

#include "files/modListFile.h"
#include "text/modCheckText.h"
#include "text/modReadText.h"

#include <QHash>

#include <algorithm>
#include <bitset>
#include <optional>
#include <utility>

using namespace Qt::Literals::StringLiterals;

namespace {

/// A line as it stands in its file, with its brackets.
QString LineInFile(const DisplayText &text, int line)
{
    QString inFile = text.Line(line).toString();
    for (const int blank : text.BlanksOnLine(line)) {
        const TextSpan span = text.Span(blank);
        inFile[span.Index()] = u'[';
        inFile[span.Index() + span.length - 1] = u']';
    }
    return inFile;
}

/// The lines of a text that say what one of some lines says, each with which of the lines that say so it is. A text of
/// a million lines is gone through in a few milliseconds: few lines are as long as one of those that are looked for.
class Occurrences
{
  public:
    /// @param wanted  lines as they stand in the file
    Occurrences(const DisplayText &text, const QStringList &wanted)
    {
        std::bitset<128> lengths;
        for (const QString &line : wanted) {
            m_lines.insert(line, {});
            lengths.set(Slot(line.size()));
        }
        for (int line = 1; line <= text.LineCount() && !wanted.isEmpty(); ++line) {
            if (!lengths.test(Slot(text.Line(line).size())))
                continue;
            if (const auto found = m_lines.find(LineInFile(text, line)); found != m_lines.end())
                found->push_back(line);
        }
    }

    /// The line that is the n-th to say so, 0 when there are fewer. @param occurrence  1 for the first
    int Line(const QString &line, int occurrence) const
    {
        const QList<int> lines = m_lines.value(line);
        return occurrence >= 1 && occurrence <= lines.size() ? lines[occurrence - 1] : 0;
    }

    /// Which of the lines that say so a line is, 1 the first.
    int Number(const QString &line, int at) const
    {
        return int(m_lines.value(line).indexOf(at)) + 1;
    }

  private:
    static size_t Slot(qsizetype length)
    {
        return size_t(length) % 128;
    }

    QHash<QString, QList<int>> m_lines;
};

struct Entry
{
    QString line;
    int blankInLine = 0;
    int occurrence = 1;
};

/// What a line of the list marks in the file of a user; nothing when it is not about that file, or no entry.
std::optional<Entry> ReadEntry(const QString &listed, const QString &userName, const QString &title)
{
    const QStringList fields = listed.split(u'\t');
    if (fields.size() < 4 || fields.size() > 5 || fields[0] != ListField(userName) || fields[1] != ListField(title))
        return std::nullopt;
    const Entry entry{fields[2], fields[3].toInt(), fields.size() == 5 ? fields[4].toInt() : 1};
    return entry.blankInLine >= 1 && entry.occurrence >= 1 ? std::optional(entry) : std::nullopt;
}

QString ListedEntry(const Entry &entry, const QString &userName, const QString &title)
{
    QStringList fields = {ListField(userName), ListField(title), ListField(entry.line),
                          QString::number(entry.blankInLine)};
    if (entry.occurrence > 1)
        fields += QString::number(entry.occurrence);
    return fields.join(u'\t');
}

} // namespace

MarkList::MarkList(const QString &path, const QString &userName) : m_path(path), m_userName(userName) {}

std::vector<int> MarkList::Find(const QString &title, const DisplayText &text) const
{
    std::vector<Entry> entries;
    QStringList wanted;
    for (const QString &listed : ReadList(m_path)) {
        if (const std::optional<Entry> entry = ReadEntry(listed, m_userName, title)) {
            entries.push_back(*entry);
            wanted += entry->line;
        }
    }
    const Occurrences occurrences(text, wanted);
    std::vector<int> blanks;
    for (const Entry &entry : entries) {
        const int line = occurrences.Line(entry.line, entry.occurrence);
        if (line == 0)
            continue;
        const BlankRange onLine = text.BlanksOnLine(line);
        if (entry.blankInLine <= int(onLine.size()))
            blanks.push_back(onLine.front() + entry.blankInLine - 1);
    }
    std::sort(blanks.begin(), blanks.end());
    blanks.erase(std::unique(blanks.begin(), blanks.end()), blanks.end());
    return blanks;
}

std::vector<int> MarkList::FindInFile(const QString &studyFilePath) const
{
    StudyLines lines;
    if (ReadStudyText(studyFilePath, MaxLineBytes, &lines).fault != TextFault::None)
        return {};
    return Find(GetFileTitle(studyFilePath), DisplayText(std::move(lines)));
}

bool MarkList::Write(const QString &title, const DisplayText &text, const std::vector<int> &blanks,
                     QString *message) const
{
    QStringList lines = ReadList(m_path);
    lines.removeIf([&](const QString &listed) { return ReadEntry(listed, m_userName, title).has_value(); });
    QStringList marked;
    for (const int blank : blanks)
        marked += LineInFile(text, text.Blanks().LineOf(blank));
    const Occurrences occurrences(text, marked);
    for (size_t i = 0; i < blanks.size(); ++i) {
        const int line = text.Blanks().LineOf(blanks[i]);
        const QString inFile = marked[qsizetype(i)];
        lines +=
            ListedEntry({inFile, blanks[i] - text.BlanksOnLine(line).front() + 1, occurrences.Number(inFile, line)},
                        m_userName, title);
    }
    QString reason;
    if (WriteList(m_path, lines, &reason))
        return true;
    *message = u"苦手の印を保存できません。\r\n  "_s + m_path + u"\r\n  "_s + reason;
    return false;
}
