// Any file as a keyword list, and any text searched with it.
#include "input.h"
#include "require.h"
#include "search/modSearch.h"
#include "text/modReadText.h"

// Input: the list up to a zero byte, the text.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    static const FuzzFile file(QStringLiteral("KeywordList.txt"));
    FuzzInput input(data, size);
    file.Write(input.TakeText());
    StudyLines lines;
    ReadAllLines(input.TakeRest(), ExpandTabs::No, &lines);
    if (!lines.BracketsTakeTurns())
        return 0; // no study file
    const DisplayText text(std::move(lines));

    KeywordSearch search(ReadKeywordList(file.Path()));
    search.SetText(&text);
    Require(std::is_sorted(search.List().words.begin(), search.List().words.end()));
    Require(search.List().words.isEmpty() || search.List().fault.isEmpty());
    for (const QString &keyword : search.KeywordsWith(QString())) {
        TextSpan last;
        for (const TextSpan &span : search.SpansOf(keyword)) {
            Require(span.line >= 1 && span.line <= text.LineCount());
            Require(span.column >= 1 && span.column - 1 + span.length <= text.Line(span.line).size());
            Require(span.line > last.line || (span.line == last.line && span.column > last.column));
            last = span;
        }
        Require(NextSpan(search.SpansOf(keyword), last, false) ==
                (last.line == 0 ? TextSpan() : search.SpansOf(keyword).front()));
    }
    return 0;
}
