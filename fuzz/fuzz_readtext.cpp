// SPDX-FileCopyrightText: 2026 The Kotoban developers
// SPDX-License-Identifier: MIT

// Reading any file as a study file, including its table of blanks.
#include "base/modCodePage.h"
#include "input.h"
#include "require.h"
#include "text/modCheckText.h"
#include "text/modDisplayText.h"
#include "text/modPictureName.h"
#include "text/modReadText.h"

namespace {

/// The facts gathered while reading agree with a check of each line.
void CheckGatheredFacts(const StudyLines &lines)
{
    qsizetype longest = 0;
    bool alternate = true;
    for (int line = 1; line <= lines.Count(); ++line) {
        longest = qMax(longest, GetByteLength(lines.at1(line)));
        alternate = alternate && IsBracketCountEqual(lines.at1(line)) && IsBracketOrderValid(lines.at1(line));
    }
    Require(lines.LongestLineBytes() == longest);
    Require(lines.BracketsTakeTurns() == alternate);
}

void CheckBlanks(const DisplayText &text)
{
    const BlankTable &blanks = text.Blanks();
    int counted = 0;
    for (int line = 1; line <= text.LineCount(); ++line) {
        Require(!text.Line(line).contains(u'[') && !text.Line(line).contains(u']'));
        Require(GetByteLength(text.MaskedLine(line)) == GetByteLength(text.Line(line)));
        for (const int blank : text.BlanksOnLine(line))
            Require(blank == ++counted && blanks.LineOf(blank) == line);
    }
    Require(counted == blanks.Count());
    for (int blank = 1; blank <= blanks.Count(); ++blank) {
        const BoxEdges box = GetBqInfoFromLine(text, blank, 7, 5);
        Require(box.leftPx >= 5 && box.rightPx - box.leftPx == 7 * (2 + CellsOf(text.Answer(blank))));
    }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    static const FuzzFile file(QStringLiteral("study.txt"));
    const QByteArray bytes = FuzzInput(data, size).TakeRest();
    file.Write(bytes);
    StudyLines lines;
    for (const ExpandTabs expandTabs : {ExpandTabs::No, ExpandTabs::Yes}) {
        ReadAllLines(bytes, expandTabs, &lines);
        CheckGatheredFacts(lines);
    }
    QString message;
    int errorLine = 0;
    if (ReadTextFile(file.Path(), MaxLineBytes, &lines, &message, &errorLine)) {
        Require(message.isEmpty());
        const DisplayText text(std::move(lines));
        BadPictureNamesMessage(BadPictureNames(text));
        CheckBlanks(text);
    } else {
        Require(lines.Count() == 0 && !message.isEmpty() && errorLine >= 1);
    }
    return 0;
}
