// SPDX-FileCopyrightText: 2026 The Kotoban developers
// SPDX-License-Identifier: MIT

#include "records/modHardNote.h"

#include "base/modCodePage.h"
#include "platform/modReplaceFile.h"
#include "text/modCheckText.h"
#include "text/modReadText.h"

#include <QDeadlineTimer>
#include <QFileInfo>

#include <algorithm>
#include <iterator>
#include <set>

using namespace Qt::Literals::StringLiterals;

namespace {

/// The name of a file as a line of the note: short enough, and with nothing that is a blank or a picture there.
QString Heading(const QString &path)
{
    QString heading = u"■ "_s + NameInLine(QFileInfo(path).completeBaseName());
    heading.replace(u'[', u'［').replace(u']', u'］').replace(u'｢', u'「').replace(u'｣', u'」');
    if (CellsOf(heading) <= MaxLineBytes)
        return heading;
    const QString dots = u"…"_s;
    while (CellsOf(heading) + CellsOf(dots) > MaxLineBytes)
        heading.chop(1);
    return heading + dots;
}

/// A line with brackets around some of its blanks only. @param hard  those
QString LineOfNote(const DisplayText &text, int line, const std::set<int> &hard)
{
    QString inNote = text.Line(line).toString();
    const BlankRange blanks = text.BlanksOnLine(line);
    for (int blank = blanks.back(); blank >= blanks.front(); --blank) { // backwards, so that what follows stays there
        const TextSpan span = text.Span(blank);
        if (hard.contains(blank)) {
            inNote[span.Index()] = u'[';
            inNote[span.LastIndex()] = u']';
        } else {
            inNote.remove(span.LastIndex(), 1);
            inNote.remove(span.Index(), 1);
        }
    }
    return inNote;
}

} // namespace

QString HardNotePath(const QString &reportFolder)
{
    return JoinPath(reportFolder, HardNoteTitle + u".txt"_s);
}

bool IsHardNotePath(const QString &path)
{
    const QFileInfo file(path);
    return file.completeBaseName() == HardNoteTitle && QFileInfo(file.path()).fileName() == u"rec";
}

QString PictureFolderOf(const QString &studyFilePath)
{
    const QString folder = QFileInfo(studyFilePath).absolutePath();
    return IsHardNotePath(studyFilePath) ? JoinPath(QFileInfo(folder).path(), u"txt"_s) : folder;
}

HardNote::HardNote(const MarkList &marks, const QStringList &studyFiles)
    : m_marks(marks), m_wanted(marks.EntriesByTitle())
{
    std::ranges::copy_if(studyFiles, std::back_inserter(m_paths),
                         [this](const QString &path) { return m_wanted.contains(ListField(GetFileTitle(path))); });
}

bool HardNote::GoOn(const QDeadlineTimer &deadline)
{
    while (m_read < m_paths.size()) {
        Add(m_paths[m_read++]);
        if (deadline.hasExpired())
            break;
    }
    return m_read < m_paths.size();
}

double HardNote::Done() const
{
    return m_paths.isEmpty() ? 1 : double(m_read) / double(m_paths.size());
}

/// Adds what is marked in a file. Entries that are found are no longer wanted from other files with the same title.
void HardNote::Add(const QString &path)
{
    QStringList &wanted = m_wanted[ListField(GetFileTitle(path))];
    StudyLines lines;
    if (wanted.isEmpty() || ReadStudyText(path, MaxLineBytes, &lines))
        return;
    const DisplayText text(std::move(lines));
    const std::vector<MarkedBlank> located = m_marks.Locate(wanted, text);
    if (located.empty())
        return;
    const int firstLine = text.Blanks().LineOf(located.front().blank);
    m_starts[int(m_lines.size()) + 1] = path;
    if (!m_lines.empty())
        AddLine(QString(), firstLine);
    AddLine(Heading(path), firstLine);
    for (auto next = located.begin(); next != located.end();) {
        const int line = text.Blanks().LineOf(next->blank);
        std::set<int> hard;
        for (; next != located.end() && text.Blanks().LineOf(next->blank) == line; ++next)
            if (hard.insert(next->blank).second)
                m_entries += wanted[next->entry];
        AddLine(LineOfNote(text, line, hard), line);
    }
    for (const MarkedBlank &each : located)
        wanted[each.entry].clear();
    wanted.removeAll(QString());
}

void HardNote::AddLine(const QString &line, int lineInFile)
{
    m_bytes += ToCodePage932(line) + "\r\n";
    m_lines.push_back(lineInFile);
}

FileFault HardNote::Write(const QString &path) const
{
    if (FileFault tooLarge = SizeRefusal(path, m_bytes, MaxFileBytes))
        return tooLarge;
    return ReplaceFile(path, m_bytes);
}

int HardNote::MissingCount() const
{
    qsizetype count = 0;
    for (const QStringList &entries : m_wanted)
        count += entries.size();
    return int(count);
}

HardNote::Source HardNote::SourceOf(int line) const
{
    if (line < 1 || size_t(line) > m_lines.size())
        return {QString(), 0};
    return {std::prev(m_starts.upper_bound(line))->second, m_lines[size_t(line) - 1]};
}

QString NothingHardMessage(int missing)
{
    if (missing == 0)
        return u"苦手の印のある空欄がありません。"_s;
    return u"苦手の印のある空欄が，学習ファイルに見つかりません。\r\n見つからない苦手の印（"_s +
           QString::number(missing) + u"個）は，消さずに残しています。"_s;
}

QString MissingHardNotice(int missing)
{
    return u"見つからない苦手が "_s + QString::number(missing) + u" 個あります（印は残ります）"_s;
}
