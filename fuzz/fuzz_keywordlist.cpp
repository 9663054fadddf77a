// SPDX-FileCopyrightText: 2026 The Kotoban developers
// SPDX-License-Identifier: MIT

// Any file as a keyword list, used to search any text, and searches for any words: counting in slices and stepping
// through the hits agree with a plain scan of every line.
#include "base/modCodePage.h"
#include "input.h"
#include "require.h"
#include "search/modInflection.h"
#include "search/modSearch.h"
#include "text/modCheckText.h"
#include "text/modReadText.h"

#include <QRegularExpression>

namespace {

std::vector<TextSpan> PlainScan(const DisplayText &text, const QString &wanted)
{
    std::vector<TextSpan> spans;
    for (int line = 1; line <= text.LineCount() && !wanted.isEmpty(); ++line)
        for (qsizetype at = 0; (at = text.Line(line).indexOf(wanted, at, Qt::CaseInsensitive)) >= 0;
             at += wanted.size())
            spans.push_back(TextSpan::At(line, at, wanted.size()));
    return spans;
}

std::vector<TextSpan> ScanByWord(const DisplayText &text, const QStringList &keywords, const QString &keyword)
{
    static const QRegularExpression word(QStringLiteral("[A-Za-z']+"));
    std::vector<TextSpan> spans;
    for (int line = 1; line <= text.LineCount(); ++line)
        for (const auto &match : word.globalMatch(text.Line(line).toString())) {
            const int index = FindWithInflections(keywords, match.captured().toLower());
            if (index > 0 && keywords[index - 1] == keyword)
                spans.push_back(TextSpan::At(line, match.capturedStart(), match.capturedLength()));
        }
    return spans;
}

/// Checks stepping from a line through all hits and around the text, and the counts and numbers reported.
void RequireSteps(Hits *hits, const std::vector<TextSpan> &expected, int startLine, bool backwards)
{
    const QDeadlineTimer noTime(0);
    TextSpan at{.line = startLine};
    const auto after = std::upper_bound(expected.begin(), expected.end(), at, IsBefore);
    size_t i = size_t(after - expected.begin()) + expected.size();
    for (size_t step = 0; step <= expected.size(); ++step) {
        std::optional<HitStep> next;
        while (!(next = hits->Next(at, backwards, noTime))) {
        }
        if (expected.empty()) {
            Require(next->span == TextSpan());
            return;
        }
        i = backwards ? i - 1 : step == 0 ? i : i + 1;
        const size_t place = (i + expected.size()) % expected.size();
        Require(next->span == expected[place]);
        Require(next->isWrapped == (backwards ? !IsBefore(next->span, at) : !IsBefore(at, next->span)));
        at = next->span;
        i = place + expected.size();
    }
    while (!hits->CountOn(noTime)) {
    }
    Require(hits->Count() == int(expected.size()));
    for (size_t n = 0; n < expected.size(); ++n)
        Require(hits->NumberOf(expected[n]) == int(n) + 1);
}

} // namespace

// Input: the list up to a zero byte, the words to search for up to another, the text.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    static const FuzzFile file(QStringLiteral("KeywordList.txt"));
    FuzzInput input(data, size);
    file.Write(input.TakeText());
    StudyLines wanted;
    ReadAllLines(input.TakeText(), ExpandTabs::No, &wanted);
    StudyLines lines;
    ReadAllLines(input.TakeRest(), ExpandTabs::No, &lines);
    if (!lines.BracketsTakeTurns())
        return 0; // not a valid study file
    const DisplayText text(std::move(lines));
    const int startLine = int(size) % (text.LineCount() + 1) + 1; // one past the end included
    constexpr int sliceLines = 2;

    for (int line = 1; line <= wanted.Count(); ++line) {
        const QString words = wanted.at1(line).toString();
        Hits hits(&text, std::make_unique<PlainFinder>(words), startLine, sliceLines);
        RequireSteps(&hits, PlainScan(text, words), startLine, size % 2 == 0);
    }
    const KeywordList list = ReadKeywordList(file.Path());
    Require(std::is_sorted(list.words.begin(), list.words.end()));
    for (const QString &word : list.words)
        Require(GetByteLength(word) <= MaxLineBytes);
    KeywordSearch search(list);
    search.SetText(&text);
    while (!search.CountOn(QDeadlineTimer(0))) {
    }
    const KeywordIndex index(list.words);
    for (const QString &keyword : list.words) {
        const std::vector<TextSpan> expected =
            IsEnglishWord(keyword) ? ScanByWord(text, list.words, keyword) : PlainScan(text, keyword);
        Require(search.CountOf(keyword) == int(expected.size()));
        Hits hits(&text, index.Finder(keyword), startLine, sliceLines);
        RequireSteps(&hits, expected, startLine, size % 2 == 1);
    }
    return 0;
}
