// SPDX-FileCopyrightText: 2026 The Kotoban developers
// SPDX-License-Identifier: MIT

// Writing any text: strokes of the pen and typed brackets, checks that agree with the reader, cleaning and mending, and
// the bytes of a saved file and of a draft.
#include "base/modCodePage.h"
#include "exchange/modLineCheck.h"
#include "exchange/modStudyFromText.h"
#include "input.h"
#include "require.h"
#include "text/modCheckText.h"
#include "text/modReadText.h"
#include "text/modTextDifference.h"
#include "write/modCleanText.h"
#include "write/modDraft.h"
#include "write/modPen.h"

namespace {

bool NoPicture(const QString &)
{
    return false;
}

QString Without(QString text, QStringView characters)
{
    text.removeIf([characters](QChar character) { return characters.contains(character) || character.isSpace(); });
    return text;
}

bool TakeTurns(QStringView line)
{
    return IsBracketCountEqual(line) && IsBracketOrderValid(line);
}

/// All text but brackets stays, and a line whose brackets take turns remains one.
void CheckPen(QStringView line, qsizetype start, qsizetype end)
{
    const LineRange word = WordAtCursor(line, start);
    for (const LineRange &range : {LineRange{start, end - start}, word}) {
        const QString stroked = WithEdits(line, Stroke(line, range));
        Require(QString(stroked).remove(u'[').remove(u']') == line.toString().remove(u'[').remove(u']'));
        Require(!TakeTurns(line) || TakeTurns(stroked));
    }
    for (const QChar typed : {u'[', u']', u'［', u'a'}) {
        const TypedBracket result = TypeIntoLine(line, start, typed);
        Require(result.cursor >= start && result.cursor <= line.size() + result.inserted.size());
        Require(TakeTurns(line) == TakeTurns(line.toString().insert(start, result.inserted)) || typed == u'[' ||
                typed == u']' || typed == u'［');
    }
}

/// The reader accepts exactly what the check finds no fault with.
void CheckCheck(const QString &text, const FuzzFile &file)
{
    bool isRefused = false;
    bool isUnwritable = false;
    for (const QStringView line : QStringView(text).split(u'\n')) {
        for (const LineProblem &problem : ProblemsOfLine(line, NoPicture)) {
            Require(problem.column >= 1 && problem.length >= 1 && problem.column - 1 + problem.length <= line.size());
            isRefused = isRefused || RefusesFile(problem.fault);
            isUnwritable = isUnwritable || problem.fault == LineFault::NotInCodePage;
        }
    }
    const EncodedDraft encoded = EncodeDraft(text, {});
    Require(!isUnwritable || encoded.unwritableCount > 0);
    Require(isRefused || encoded.unwritableCount == 0);
    QByteArray bytes;
    if (encoded.unwritableCount > 0 ||
        EncodeStudyText(text, &bytes)) // as a whole it would be taken for another encoding
        return;
    file.Write(encoded.bytes);
    StudyLines lines;
    Require(isRefused == bool(ReadStudyText(file.Path(), MaxLineBytes, &lines)));
}

void CheckCleaning(const QString &text)
{
    for (const WithoutEquivalent rest : {WithoutEquivalent::Remove, WithoutEquivalent::Geta}) {
        const CleanText clean = CleanedPaste(text, rest);
        Require(CharactersLost(clean.text).isEmpty() && !clean.text.contains(u'\r'));
        Require(CleanedPaste(clean.text, rest).notice.isEmpty());
    }
    const QString mended = Mended(text);
    Require(Mended(mended) == mended);
    const TextDifference difference = DifferenceOf(text, mended);
    Require(QString(text).replace(difference.offset, difference.before.size(), difference.after) == mended);
    Require(Without(JoinedLines(text), u"-") == Without(text, u"-"));
    QString refusal;
    Require(LinesOfCells(text, &refusal).isEmpty() || refusal.isEmpty());
}

/// A file that is opened and saved without a change keeps its bytes but for line ends, and any text comes back from the
/// bytes that it is saved as and from its draft.
void CheckFile(const QByteArray &bytes, const QString &other, const FuzzFile &file)
{
    file.Write(bytes);
    WrittenFile opened;
    QString text;
    bool isChanged = false;
    if (!OpenToWrite(file.Path(), &opened, &text, &isChanged).isEmpty())
        return;
    Require(!text.contains(u'\r') && !text.contains(QChar::Null));
    const auto withLineFeeds = [](QByteArray all) { return all.replace("\r\n", "\n").replace('\r', '\n'); };
    if (!isChanged)
        Require(withLineFeeds(EncodeDraft(text, opened).bytes) == withLineFeeds(bytes));
    for (const QString &changed : {QString(text + u'\n' + other), QString(other + text), other}) {
        const QString replaced = WithUnwritableReplaced(changed, opened);
        const EncodedDraft encoded = EncodeDraft(replaced, opened);
        Require(encoded.unwritableCount == 0);
        Require(FromCodePage932(withLineFeeds(encoded.bytes)) == replaced);
        Draft draft;
        Require(!WriteDraft(changed, opened) && ReadDraft(file.Path(), &draft));
        Require(draft.digest == opened.digest && (!HasUnsavedText(draft, changed) || !changed.isValidUtf16()));
    }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    static const FuzzFile file(QStringLiteral("a.txt"));
    FuzzInput input(data, size);
    const int first = input.TakeByte();
    const int second = input.TakeByte();
    const bool isCodePage = first % 2 == 1;
    const QByteArray bytes = input.TakeRest();
    QString text = isCodePage ? FromCodePage932(bytes) : QString::fromUtf8(bytes);
    text.remove(u'\r').remove(QChar::Null); // as a text field gives it
    for (const QStringView line : QStringView(text).split(u'\n')) {
        const qsizetype start = first % (line.size() + 1);
        CheckPen(line, start, start + second % (line.size() - start + 1));
    }
    CheckCheck(text, file);
    CheckCleaning(text);
    CheckFile(bytes, text.first(qMin(qsizetype(second), text.size())), file);
    file.Write(bytes);
    Draft draft;
    QFile::rename(file.Path(), DraftPath(file.Path()));
    ReadDraft(file.Path(), &draft);
    return 0;
}
