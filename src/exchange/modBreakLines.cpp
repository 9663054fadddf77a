// SPDX-FileCopyrightText: 2026 The Kotoban developers
// SPDX-License-Identifier: MIT

#include "exchange/modBreakLines.h"

#include "text/modCheckText.h"

namespace {

constexpr QStringView LineEnd = u"\r\n";

bool IsBlank(QChar character)
{
    return character == u' ' || character == u'　' || character == u'\t';
}

bool IsStop(QChar character)
{
    return QStringView(u"、。，．").contains(character);
}

/// @return whether the line has enough places to break it; if not, the text appended to parts is unusable
bool BreakLine(QStringView line, int maxLineBytes, QString *parts)
{
    qsizetype partStart = 0;
    qsizetype partEnd = 0;
    qsizetype nextStart = 0; // where the next part starts if broken at partEnd; partStart if there is no place yet
    qsizetype bracket = 0;   // last place beside brackets
    qsizetype bytes = 0;     // from partStart up to the current character
    bool isInBrackets = false;
    for (qsizetype at = 0; at < line.size(); ++at) {
        const QChar character = line[at];
        if (IsBlank(character) && !isInBrackets && at > partStart) {
            partEnd = at;
            nextStart = at + 1;
        }
        if (character == u'[' && !isInBrackets)
            bracket = at;
        bytes += LineBytes(line.sliced(at, 1));
        while (bytes > maxLineBytes) {
            if (nextStart == partStart)
                partEnd = nextStart = bracket;
            if (nextStart <= partStart)
                return false;
            *parts += line.sliced(partStart, partEnd - partStart);
            if (nextStart < line.size())
                *parts += LineEnd;
            partStart = nextStart;
            bytes = LineBytes(line.sliced(partStart, at + 1 - partStart));
        }
        if (character == u'[' || character == u']')
            isInBrackets = character == u'[';
        if (character == u']')
            bracket = at + 1;
        if (IsStop(character) && !isInBrackets && at >= partStart)
            partEnd = nextStart = at + 1;
    }
    *parts += line.sliced(partStart);
    return true;
}

} // namespace

BrokenLines BreakLongLines(const QString &text, int maxLineBytes)
{
    BrokenLines result;
    result.text.reserve(text.size() + text.size() / 16);
    int number = 0;
    int added = 0; // lines
    for (qsizetype start = 0; start < text.size();) {
        ++number;
        const qsizetype end = text.indexOf(LineEnd, start);
        const QStringView line = QStringView(text).sliced(start, (end < 0 ? text.size() : end) - start);
        if (LineBytes(line) <= maxLineBytes) {
            result.text += line;
        } else {
            if (result.longLines++ == 0)
                result.firstLong = number;
            const qsizetype lineStart = result.text.size();
            if (BreakLine(line, maxLineBytes, &result.text)) {
                ++result.broken;
                added += int(QStringView(result.text).sliced(lineStart).count(LineEnd));
            } else {
                result.text.truncate(lineStart);
                result.text += line;
                if (result.firstUnbroken == 0)
                    result.firstUnbroken = number + added;
            }
        }
        if (end >= 0)
            result.text += LineEnd;
        start = end < 0 ? text.size() : end + LineEnd.size();
    }
    return result;
}
