// SPDX-FileCopyrightText: 2026 The Kotoban developers
// SPDX-License-Identifier: MIT

#include "study/modClickTarget.h"

#include "text/modPictureName.h"
#include "text/modWords.h"

#include <algorithm>

namespace {

/// A line with its hidden answers masked. Shown answers may be part of a picture reference.
QString LineAsShown(const DisplayText &text, const StudyRound &round, int line)
{
    return text.MaskedLine(line, [&round](int blank) { return !round.bolOpen(blank); });
}

std::vector<TextSpan> TargetsOnLine(const DisplayText &text, int line, bool withWords)
{
    std::vector<TextSpan> targets;
    for (const int blank : text.BlanksOnLine(line))
        targets.push_back(text.Span(blank));
    const QString masked = text.MaskedLine(line);
    for (const PictureReference &reference : PictureReferences(masked))
        targets.push_back(TextSpan::At(line, reference.start, reference.length));
    if (withWords)
        for (const Word &word : WordsOf(masked))
            targets.push_back(TextSpan::At(line, word.start, word.length));
    std::sort(targets.begin(), targets.end(),
              [](const TextSpan &first, const TextSpan &second) { return first.column < second.column; });
    return targets;
}

} // namespace

ClickTarget TargetAt(const DisplayText &text, const StudyRound &round, int xPx, int yPx, const PageInView &page,
                     const PageLayout &layout)
{
    const int rowOffset = layout.RowOffsetAt(yPx);
    if (layout.IsInNumberStrip(xPx))
        return {.numberedLine = page.LineAt(rowOffset)};
    if (const int blank = HitTest(text, xPx, yPx, page, layout); blank > 0)
        return {.blank = blank};
    if (yPx <= PageLayout::TopMarginPx || rowOffset >= int(page.rows.size()) || xPx < layout.TextLeftPx())
        return {}; // below the last row nothing is painted
    const int line = page.LineAt(rowOffset);
    const qsizetype index = IndexInRow(text, xPx, page.rows[size_t(rowOffset)], layout);
    if (index < 0)
        return {};
    // An answer, shown or hidden, never joins an adjacent word.
    return {.word = WordAround(text.MaskedLine(line), index),
            .picture = PictureNameAt(LineAsShown(text, round, line), index)};
}

qsizetype IndexInRow(const DisplayText &text, int xPx, const PageRow &row, const PageLayout &layout)
{
    const QStringView line = text.Line(row.line);
    const int cell = row.cells.start + layout.CellAt(xPx);
    if (cell >= row.cells.end)
        return -1;
    int next = 0;
    for (qsizetype i = 0; i < line.size(); ++i) {
        next += CellsOf(line[i]);
        if (cell < next)
            return i;
    }
    return -1;
}

bool HasPictures(QStringView line)
{
    return line.contains(u'｢');
}

std::vector<TextSpan> PicturesOnLine(const DisplayText &text, const StudyRound &round, int line)
{
    std::vector<TextSpan> spans;
    if (!HasPictures(text.Line(line)))
        return spans;
    const QString masked = text.MaskedLine(line);
    for (const PictureReference &reference : PictureReferences(LineAsShown(text, round, line)))
        if (masked[reference.start] == u'｢')
            spans.push_back(TextSpan::At(line, reference.start, reference.length));
    return spans;
}

std::vector<TextSpan> TargetsInView(const DisplayText &text, const PageInView &page, bool withWords)
{
    std::vector<TextSpan> targets;
    for (int line = page.topLine; line <= page.lastLine; ++line) {
        const std::vector<TextSpan> onLine = TargetsOnLine(text, line, withWords);
        targets.insert(targets.end(), onLine.begin(), onLine.end());
    }
    return targets;
}

ClickTarget TargetOf(const DisplayText &text, const StudyRound &round, const TextSpan &span)
{
    for (const int blank : text.BlanksOnLine(span.line))
        if (text.Span(blank) == span)
            return {.blank = blank};
    const QString line = LineAsShown(text, round, span.line);
    const qsizetype index = span.Index();
    // Of nested references, keys can select the given one, unlike the mouse.
    for (const PictureReference &reference : PictureReferences(line))
        if (reference.start == index)
            return {.picture = reference.name};
    return {.word = WordAround(text.MaskedLine(span.line), index), .picture = PictureNameAt(line, index)};
}

ClickTarget TargetInAnswer(const DisplayText &text, const StudyRound &round, int blank)
{
    if (!round.bolOpen(blank))
        return {};
    const std::vector<PictureReference> references = PictureReferences(text.Answer(blank));
    return {.word = text.Answer(blank).toString(), .picture = references.empty() ? QString() : references.front().name};
}
