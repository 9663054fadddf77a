// SPDX-FileCopyrightText: 2026 The Kotoban developers
// SPDX-License-Identifier: MIT

#include "study/modPageText.h"

using namespace Qt::Literals::StringLiterals;

namespace {

/// A part of a line and its spoken text.
struct SpokenPart
{
    TextSpan span;    ///< on the page
    QStringView text; ///< spoken for it
    bool isWhole;     ///< whether text stands for the span as a whole rather than character by character
};

QStringView HiddenAnswerText(const StudyRound &round, int blank)
{
    return round.IsHard(blank) ? u"苦手の空欄" : u"空欄";
}

/// The parts of a line: text, answers, and text between them.
std::vector<SpokenPart> PartsOf(const StudyPage &page, int line)
{
    const DisplayText &text = page.Text();
    const QStringView view = text.Line(line);
    std::vector<SpokenPart> parts;
    qsizetype done = 0;
    const auto addText = [&](qsizetype end) {
        parts.push_back({TextSpan::At(line, done, end - done), view.sliced(done, end - done), false});
        done = end;
    };
    const auto addHidden = [&](int blank, qsizetype length) {
        parts.push_back({TextSpan::At(line, done, length), HiddenAnswerText(page.Round(), blank), true});
        done += length;
    };
    for (const int blank : text.BlanksOnLine(line)) {
        const TextSpan span = text.Span(blank);
        addText(span.Index() + 1); // with the space in place of the bracket
        const qsizetype length = text.Answer(blank).size();
        if (page.Round().bolOpen(blank)) {
            addText(done + length);
            continue;
        }
        const qsizetype hint = blank == page.HintedBlank() ? page.HintLength() : 0;
        addText(done + hint);
        addHidden(blank, length - hint);
    }
    addText(view.size());
    return parts;
}

QString SpokenLine(const StudyPage &page, int line)
{
    QString spoken;
    for (const SpokenPart &part : PartsOf(page, line))
        spoken += part.text;
    return spoken;
}

} // namespace

QString SpokenPage(const StudyPage &page)
{
    if (!page.IsFileOpen())
        return u"「ファイル選択」（Alt+O）で学習ファイルを選んでください。"_s;
    QStringList lines;
    for (int line = page.TopLine(); line <= page.InView().LastShownLine(); ++line)
        lines += SpokenLine(page, line);
    return lines.join(u'\n');
}

int SpokenOffset(const StudyPage &page, int line, qsizetype index)
{
    qsizetype offset = 0;
    for (int above = page.TopLine(); above < line; ++above)
        offset += SpokenLine(page, above).size() + 1;
    for (const SpokenPart &part : PartsOf(page, line)) {
        const qsizetype start = part.span.Index();
        // A hidden empty answer counts as one character, at its closing bracket.
        const qsizetype end = start + qMax(part.span.length, part.isWhole ? 1 : 0);
        if (index < end)
            return int(offset + (part.isWhole ? 0 : index - start));
        offset += part.text.size();
    }
    return int(offset);
}

int SpokenCursor(const StudyPage &page)
{
    return page.Caret().line > 0 ? SpokenOffset(page, page.Caret().line, page.Caret().Index()) : 0;
}

TextSpan SpanSpokenAt(const StudyPage &page, int offset)
{
    qsizetype left = offset;
    for (int line = page.TopLine(); line <= page.InView().LastShownLine() && left >= 0; ++line) {
        for (const SpokenPart &part : PartsOf(page, line)) {
            if (left < part.text.size())
                return part.isWhole ? part.span : TextSpan::At(line, part.span.Index() + left, 1);
            left -= part.text.size();
        }
        if (left == 0)
            return TextSpan::At(line, page.Text().Line(line).size(), 0);
        --left; // skips the line feed
    }
    return {};
}

QRect AreaSpokenAt(const StudyPage &page, int offset)
{
    const TextSpan span = SpanSpokenAt(page, offset);
    if (span.line == 0)
        return QRect();
    const PageLayout &layout = page.Layout();
    const QRect textArea(layout.TextLeftPx(), 0, layout.widthPx - layout.TextLeftPx(), layout.heightPx);
    const std::vector<PageRow> &rows = page.InView().rows;
    for (size_t i = 0; i < rows.size(); ++i) {
        const CellRange cells = InRow(page.Text().Cells(span), rows[i]);
        if (rows[i].line == span.line && cells.start < cells.end)
            return QRect(layout.CellLeftPx(cells.start - rows[i].cells.start), layout.RowTopPx(int(i) + 1),
                         (cells.end - cells.start) * layout.cellWidthPx, layout.linePitchPx) &
                   textArea;
    }
    return QRect();
}

int OffsetSpokenAt(const StudyPage &page, int xPx, int yPx)
{
    const PageLayout &layout = page.Layout();
    const std::vector<PageRow> &rows = page.InView().rows;
    const size_t row = size_t(layout.RowOffsetAt(yPx));
    if (yPx < PageLayout::TopMarginPx || xPx < layout.TextLeftPx() || row >= rows.size())
        return -1;
    const qsizetype index = IndexInRow(page.Text(), xPx, rows[row], layout);
    return index < 0 ? -1 : SpokenOffset(page, rows[row].line, index);
}
