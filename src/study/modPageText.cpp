// SPDX-FileCopyrightText: 2026 The Kotoban developers
// SPDX-License-Identifier: MIT

#include "study/modPageText.h"

#include "study/modClickTarget.h"

namespace {

/// A part of a line and its spoken text.
struct SpokenPart
{
    TextSpan span;    ///< on the page
    QStringView text; ///< spoken for it
    bool isWhole;     ///< whether text stands for the span as a whole rather than character by character
};

/// The parts of a line: text, answers, and text between them.
std::vector<SpokenPart> PartsOf(const DisplayText &text, const StudyRound &round, int line)
{
    const QStringView view = text.Line(line);
    std::vector<SpokenPart> parts;
    qsizetype done = 0;
    const auto addText = [&](qsizetype end) {
        parts.push_back({TextSpan::At(line, done, end - done), view.sliced(done, end - done), false});
        done = end;
    };
    const auto addHidden = [&](int blank, qsizetype length) {
        parts.push_back({TextSpan::At(line, done, length), HiddenAnswerText(round, blank), true});
        done += length;
    };
    for (const int blank : text.BlanksOnLine(line)) {
        const TextSpan span = text.Span(blank);
        addText(span.Index() + 1); // with the space in place of the bracket
        if (round.bolOpen(blank))
            addText(done + text.Answer(blank).size());
        else
            addHidden(blank, text.Answer(blank).size());
    }
    addText(view.size());
    return parts;
}

int SpokenLength(const DisplayText &text, const StudyRound &round, int line)
{
    qsizetype length = 0;
    for (const SpokenPart &part : PartsOf(text, round, line))
        length += part.text.size();
    return int(length);
}

} // namespace

QStringView HiddenAnswerText(const StudyRound &round, int blank)
{
    return round.IsHard(blank) ? u"苦手の空欄" : u"空欄";
}

QString SpokenPage(const DisplayText &text, const StudyRound &round, const PageInView &page)
{
    QString spoken;
    for (int line = page.topLine; line <= page.lastLine; ++line) {
        if (line > page.topLine)
            spoken += u'\n';
        for (const SpokenPart &part : PartsOf(text, round, line))
            spoken += part.text;
    }
    return spoken;
}

int SpokenOffset(const DisplayText &text, const StudyRound &round, int topLine, int line, qsizetype index)
{
    qsizetype offset = 0;
    for (int above = topLine; above < line; ++above)
        offset += SpokenLength(text, round, above) + 1;
    for (const SpokenPart &part : PartsOf(text, round, line)) {
        const qsizetype start = part.span.Index();
        // A hidden empty answer counts as one character, at its closing bracket.
        const qsizetype end = start + qMax(part.span.length, part.isWhole ? 1 : 0);
        if (index < end)
            return int(offset + (part.isWhole ? 0 : index - start));
        offset += part.text.size();
    }
    return int(offset);
}

TextSpan SpanSpokenAt(const DisplayText &text, const StudyRound &round, const PageInView &page, int offset)
{
    qsizetype left = offset;
    for (int line = page.topLine; line <= page.lastLine && left >= 0; ++line) {
        for (const SpokenPart &part : PartsOf(text, round, line)) {
            if (left < part.text.size())
                return part.isWhole ? part.span : TextSpan::At(line, part.span.Index() + left, 1);
            left -= part.text.size();
        }
        if (left == 0)
            return TextSpan::At(line, text.Line(line).size(), 0);
        --left; // skips the line feed
    }
    return {};
}

QRect AreaSpokenAt(const DisplayText &text, const StudyRound &round, const PageInView &page, const PageLayout &layout,
                   int offset)
{
    const TextSpan span = SpanSpokenAt(text, round, page, offset);
    if (span.line == 0)
        return QRect();
    const CellRange cells = text.Cells(span);
    const QRect area(layout.CellLeftPx(cells.start), layout.RowTopPx(layout.RowOf(span.line, page.topLine)),
                     (cells.end - cells.start) * layout.cellWidthPx, layout.linePitchPx);
    return area & QRect(layout.TextLeftPx(), 0, layout.widthPx - layout.TextLeftPx(), layout.heightPx);
}

int OffsetSpokenAt(const DisplayText &text, const StudyRound &round, const PageInView &page, const PageLayout &layout,
                   int xPx, int yPx)
{
    const int line = layout.LineAt(yPx, page.topLine);
    if (yPx < PageLayout::TopMarginPx || xPx < layout.TextLeftPx() || !page.Holds(line))
        return -1;
    const qsizetype index = IndexOfCell(text.Line(line), layout.CellAt(xPx));
    return index < 0 ? -1 : SpokenOffset(text, round, page.topLine, line, index);
}
