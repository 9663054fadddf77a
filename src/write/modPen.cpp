// SPDX-FileCopyrightText: 2026 The Kotoban developers
// SPDX-License-Identifier: MIT

#include "write/modPen.h"

#include "text/modWords.h"

#include <algorithm>
#include <optional>

namespace {

bool IsBracket(QChar character)
{
    return character == u'[' || character == u']';
}

/// The positions of a blank's brackets.
struct Brackets
{
    qsizetype opening;
    qsizetype closing;
};

/// The blanks of a line: each "[" whose next bracket is a "]".
std::vector<Brackets> BlanksOf(QStringView line)
{
    std::vector<Brackets> blanks;
    std::optional<qsizetype> opening;
    for (qsizetype at = 0; at < line.size(); ++at) {
        if (line[at] == u']' && opening)
            blanks.push_back({*opening, at});
        if (IsBracket(line[at]))
            opening = line[at] == u'[' ? std::optional(at) : std::nullopt;
    }
    return blanks;
}

LineRange WithoutSpaceAround(QStringView line, LineRange range)
{
    while (range.length > 0 && line[range.start].isSpace()) {
        ++range.start;
        --range.length;
    }
    while (range.length > 0 && line[range.start + range.length - 1].isSpace())
        --range.length;
    return range;
}

} // namespace

QString WithEdits(QStringView line, const std::vector<LineEdit> &edits)
{
    QString text;
    qsizetype done = 0;
    for (const LineEdit &edit : edits) {
        text += line.sliced(done, edit.at - done) + edit.inserted;
        done = edit.at + edit.removed;
    }
    return text + line.sliced(done);
}

LineRange WordAtCursor(QStringView line, qsizetype cursor)
{
    LineRange found{cursor, 0};
    for (const Word &word : WordsOf(line))
        if (word.start <= cursor && cursor <= word.start + word.length)
            found = {word.start, word.length}; // of two that meet at the cursor, the second
    return found;
}

std::vector<LineEdit> Stroke(QStringView line, const LineRange &range)
{
    const auto [start, length] = WithoutSpaceAround(line, range);
    qsizetype first = start; // of what becomes a blank
    qsizetype end = start + length;
    for (const Brackets &blank : BlanksOf(line)) {
        const qsizetype blankEnd = blank.closing + 1;
        const bool isInside = blank.opening <= start && start + length <= blankEnd;
        const bool isBetween = blank.opening < start && start < blankEnd;
        if (isInside && (length > 0 || isBetween))
            return {{blank.opening, 1, {}}, {blank.closing, 1, {}}};
        if (length > 0 && blank.opening < start + length && start < blankEnd) {
            first = std::min(first, blank.opening);
            end = std::max(end, blankEnd);
        }
    }
    const QStringView taken = line.sliced(first, end - first);
    if (std::ranges::all_of(taken, IsBracket))
        return {};
    std::vector<LineEdit> edits{{first, 0, QStringLiteral("[")}};
    for (qsizetype at = first; at < end; ++at)
        if (IsBracket(line[at]))
            edits.push_back({at, 1, {}});
    edits.push_back({end, 0, QStringLiteral("]")});
    return edits;
}

TypedBracket TypeIntoLine(QStringView line, qsizetype cursor, const QString &typed)
{
    QString inserted = QString(typed).replace(u'［', u'[').replace(u'］', u']');
    const QStringView before = line.first(cursor);
    const QStringView after = line.sliced(cursor);
    const auto nextBracket = std::ranges::find_if(after, IsBracket);
    const bool isBeforeClosing = nextBracket != after.end() && *nextBracket == u']';
    if (inserted == u"]" && after.startsWith(u']') && before.lastIndexOf(u'[') > before.lastIndexOf(u']'))
        return {QString(), cursor + 1};
    if (inserted == u"[" && !isBeforeClosing)
        return {QStringLiteral("[]"), cursor + 1};
    return {inserted, cursor + inserted.size()};
}
