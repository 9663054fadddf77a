// SPDX-FileCopyrightText: 2026 The Kotoban developers
// SPDX-License-Identifier: MIT

// Any list of marks, any study file: marks that are written are found again, those that are not are gone, and
// everything else in the list stays, also what marks other lines than those of the file. The note of hard words that is
// made of them has each mark once, on its line.
#include "base/modCodePage.h"
#include "input.h"
#include "records/modHardNote.h"
#include "records/modListFile.h"
#include "require.h"
#include "text/modCheckText.h"
#include "text/modReadText.h"

#include <QDeadlineTimer>

namespace {

const QString Title = QStringLiteral("t");

/// Lines of the list that are not about this user and file.
QStringList Others(const QString &path, const QString &user)
{
    QStringList lines;
    Require(!ReadList(path, &lines, MaxMarkListBytes));
    lines.removeIf([&](const QString &line) { return line.startsWith(ListField(user) + u'\t' + Title + u'\t'); });
    return lines;
}

/// The entries for this user and file that mark no blank of a text.
QStringList Unfound(const MarkList &marks, const DisplayText &text)
{
    QStringList entries = marks.EntriesByTitle().value(Title);
    for (const MarkedBlank &marked : marks.Locate(entries, text))
        entries[marked.entry].clear();
    entries.removeAll(QString());
    return entries;
}

/// A line without brackets.
QString Plain(QStringView line)
{
    return line.toString().remove(u'[').remove(u']');
}

/// The note of some files, once it was read back.
void CheckNote(const MarkList &marks, const QStringList &files)
{
    static const FuzzFile file(QStringLiteral("note.txt"));
    HardNote note(marks, files);
    qsizetype entries = 0;
    for (const QStringList &ofFile : marks.EntriesByTitle())
        entries += ofFile.size();
    while (note.GoOn(QDeadlineTimer(0)))
        ;
    Require(note.Done() == 1 && note.MissingCount() + note.BlankCount() <= entries);
    Require(!note.Write(file.Path()));
    StudyLines written;
    const TextRefusal refusal = ReadStudyText(file.Path(), MaxLineBytes, &written);
    Require(!refusal || note.BlankCount() == 0);
    const QStringList inNote = [&written] {
        QStringList lines;
        for (int line = 1; line <= written.Count(); ++line)
            lines += written.at1(line).toString();
        return lines;
    }();
    Require(DisplayText(std::move(written)).Blanks().Count() == note.BlankCount());
    Require(note.SourceOf(0).path.isEmpty() && note.SourceOf(int(inNote.size()) + 1).path.isEmpty());
    for (int line = 1; line <= inNote.size(); ++line) {
        const HardNote::Source source = note.SourceOf(line);
        StudyLines lines;
        Require(!ReadStudyText(source.path, MaxLineBytes, &lines));
        Require(source.line >= 1 && source.line <= lines.Count());
        if (inNote[line - 1].contains(u'['))
            Require(FromCodePage932(ToCodePage932(Plain(lines.at1(source.line)))) == Plain(inNote[line - 1]));
    }
    QStringList all;
    for (int blank = 1; blank <= note.BlankCount(); ++blank)
        all += note.EntryOf(blank);
    Require(all.removeDuplicates() == 0);
    if (!marks.Change(all, {})) {
        HardNote none(marks, files);
        while (none.GoOn(QDeadlineTimer(0)))
            ;
        Require(none.BlankCount() == 0 && none.MissingCount() == note.MissingCount());
        Require(!marks.Change({}, all));
    }
}

} // namespace

// Input: the user up to a zero byte, the list up to another, a byte for the marks, the study file.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    static const FuzzFile file(QStringLiteral("ListMark.txt"));
    FuzzInput input(data, size);
    const QString user = FromCodePage932(input.TakeText());
    const QByteArray before = input.TakeText();
    file.Write(before);
    const int pattern = input.TakeByte();
    const QByteArray study = input.TakeRest();
    static const FuzzFile files[] = {FuzzFile(Title + QStringLiteral(".txt")),
                                     FuzzFile(Title + QStringLiteral(".2.txt"))};
    files[0].Write(study);
    files[1].Write(study.first(study.lastIndexOf('\n') + 1) + "[x]\n");
    StudyLines lines;
    ReadAllLines(study, ExpandTabs::Yes, &lines);
    if (!lines.BracketsTakeTurns())
        return 0; // not a valid study file
    const DisplayText text(std::move(lines));
    const MarkList marks(file.Path(), user);
    CheckNote(marks, {files[0].Path(), files[1].Path()});
    file.Write(before);
    for (const int blank : marks.Find(Title, text))
        Require(blank >= 1 && blank <= text.Blanks().Count());

    std::vector<int> blanks;
    for (int blank = 1; blank <= text.Blanks().Count(); ++blank)
        if ((pattern >> (blank % 8)) % 2 == 1)
            blanks.push_back(blank);
    QStringList unfound = Unfound(marks, text);
    if (marks.Write(Title, text, blanks)) {
        Require(file.Read() == before);
        return 0;
    }
    Require(Unfound(marks, text) == unfound);
    Require(marks.Find(Title, text) == blanks);
    Require(marks.FindIn(marks.Entries(Title, text, blanks), text) == blanks);
    CheckNote(marks, {files[0].Path(), files[1].Path()});
    Require(marks.Find(Title, text) == blanks);
    const QStringList others = Others(file.Path(), user);
    unfound = Unfound(marks, text);
    Require(!marks.Write(Title, text, {}));
    Require(marks.Find(Title, text).empty() && marks.EntriesByTitle().value(Title) == unfound);
    Require(Others(file.Path(), user) == others);
    return 0;
}
