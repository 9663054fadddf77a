// SPDX-FileCopyrightText: 2026 The Kotoban developers
// SPDX-License-Identifier: MIT

// The sheet of any study file: whatever the file holds, the page has no other markup than ours, asks for every blank
// and tells no answer before its last page, unless it is the teacher's.
#include "base/modCodePage.h"
#include "exchange/modPrintableCopy.h"
#include "input.h"
#include "records/modMarkList.h"
#include "require.h"
#include "support/Pieces.h"
#include "text/modCheckText.h"
#include "text/modDisplayText.h"

#include <QDeadlineTimer>

namespace {

QByteArray All(PieceMaker &pieces)
{
    QByteArray all = AllPieces(pieces);
    Require(pieces.Done() == 1);
    return all;
}

/// Requires every "<" and every quote to belong to one of our tags, and every "&" to an entity.
void CheckMarkup(QByteArrayView html)
{
    static const QByteArrayList tags =
        QByteArray("<div class=\"line\">|<div class=\"pictures\">|<div class=\"columns\">|<div>|</div>|"
                   "<div class=\"lines\">|<span class=\"blank\">|<span class=\"rule\" style=\"width:|"
                   "<span class=\"rule told\" style=\"min-width:|<span class=\"date\">|<span>|</span>|<small>|</small>|"
                   "<b>|</b>|<img src=\"|<p class=\"name\">|</p>|<h1>|</h1>|<h2>|</h2>|<section class=\"answers\">|"
                   "</section>|</body>|</html>")
            .split('|');
    static const QByteArrayList entities = {"&lt;", "&gt;", "&amp;", "&quot;"};
    for (QByteArrayView rest = html; !rest.isEmpty(); rest = rest.sliced(1)) {
        const auto beginsRest = [rest](const QByteArray &known) { return rest.startsWith(known); };
        Require(rest.front() != '<' || std::ranges::any_of(tags, beginsRest));
        Require(rest.front() != '&' || std::ranges::any_of(entities, beginsRest));
    }
}

/// The page without what does not depend on the file.
QByteArrayView Body(const QByteArray &html)
{
    return QByteArrayView(html).sliced(html.indexOf("<h1>"));
}

/// The study file with every answer replaced by as many underscores.
QByteArray WithoutAnswers(const QByteArray &study)
{
    StudyLines lines;
    ReadAllLines(study, ExpandTabs::Yes, &lines);
    QByteArray bytes;
    for (int line = 1; line <= lines.Count(); ++line)
        bytes += ToCodePage932(PrintableLine(lines.at1(line))) + "\r\n";
    return bytes;
}

} // namespace

// Input: a byte for the options, the list of marks up to a zero byte, the study file.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    static const FuzzFile file(QStringLiteral("study.txt"));
    static const FuzzFile list(QStringLiteral("ListMark.txt"));
    static const MarkList marks(list.Path(), QStringLiteral("u"));
    FuzzInput input(data, size);
    const int options = input.TakeByte();
    list.Write(input.TakeText());
    const QByteArray study = input.TakeRest();
    file.Write(study);
    SheetChoices choices{.print = {.blankWidth = BlankWidth(options / 4 % 3), .columns = 1 + options / 16 % 2},
                         .isEditionB = options / 2 % 2 == 1,
                         .onlyHard = options % 2 == 1 ? &marks : nullptr};
    PrintSheet sheet;
    if (const TextRefusal refusal = sheet.Read(file.Path(), file.Path(), choices)) {
        Require(!refusal.message.isEmpty());
        return 0;
    }
    while (sheet.LookForPictures(QDeadlineTimer(0)))
        Require(sheet.Looked() > 0);
    Require(sheet.Missing().first.size() == qMin(sheet.Missing().count, MaxMissingShown));
    const QByteArray html = All(sheet);
    CheckMarkup(Body(html));
    Require(html.count("<span class=\"blank\">") == sheet.BlankCount());
    Require(html.count("<div><b>") == sheet.BlankCount());
    Require(sheet.PageCount() >= (html.contains("<div class=\"line\">") ? 1 : 0));

    choices.isForTeacher = true;
    Require(!sheet.Read(file.Path(), file.Path(), choices));
    const QByteArray told = All(sheet);
    CheckMarkup(Body(told));
    Require(told.count("<span class=\"blank\">") == sheet.BlankCount());

    choices.isForTeacher = false;
    choices.print.withAnswers = false;
    Require(!sheet.Read(file.Path(), file.Path(), choices));
    const QByteArray questions = All(sheet);
    const qsizetype answers = html.indexOf("<section class=\"answers\">");
    Require(questions.chopped(QByteArrayView("</body>\n</html>\n").size()) ==
            (answers < 0 ? html.chopped(QByteArrayView("</body>\n</html>\n").size()) : html.first(answers)));
    const QByteArray without = WithoutAnswers(study);
    if (choices.onlyHard || questions.contains(QString(QChar::ReplacementCharacter).toUtf8()))
        return 0; // marks find their lines by the answers too, and bytes that cannot be decoded cannot be written
    file.Write(without);
    // An answer may make the whole file look like another encoding, or its mask be the lack of that.
    if (!sheet.Read(file.Path(), file.Path(), choices))
        Require(All(sheet) == questions);
    return 0;
}
