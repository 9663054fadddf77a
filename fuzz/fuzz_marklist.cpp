// SPDX-FileCopyrightText: 2026 The Kotoban developers
// SPDX-License-Identifier: MIT

// Any list of marks, any study file: marks that are written are found again, those that are not are gone, and
// everything else in the list stays.
#include "base/modCodePage.h"
#include "input.h"
#include "records/modListFile.h"
#include "records/modMarkList.h"
#include "require.h"
#include "text/modReadText.h"

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
    StudyLines lines;
    ReadAllLines(input.TakeRest(), ExpandTabs::Yes, &lines);
    if (!lines.BracketsTakeTurns())
        return 0; // not a valid study file
    const DisplayText text(std::move(lines));
    const MarkList marks(file.Path(), user);
    for (const int blank : marks.Find(Title, text))
        Require(blank >= 1 && blank <= text.Blanks().Count());

    std::vector<int> blanks;
    for (int blank = 1; blank <= text.Blanks().Count(); ++blank)
        if ((pattern >> (blank % 8)) % 2 == 1)
            blanks.push_back(blank);
    if (marks.Write(Title, text, blanks)) {
        Require(file.Read() == before);
        return 0;
    }
    Require(marks.Find(Title, text) == blanks);
    Require(marks.FindIn(marks.Entries(Title, text, blanks), text) == blanks);
    const QStringList others = Others(file.Path(), user);
    Require(!marks.Write(Title, text, {}));
    Require(marks.Find(Title, text).empty());
    Require(Others(file.Path(), user) == others);
    return 0;
}
