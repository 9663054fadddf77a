// SPDX-FileCopyrightText: 2026 The Kotoban developers
// SPDX-License-Identifier: MIT

#include "exchange/modTableFormat.h"

#include <algorithm>
#include <utility>

namespace {

bool CanSeparate(QChar character)
{
    return character != u'"' && character != u'\r' && character != u'\n' && !character.isNull();
}

void TakeSeparator(QStringView value, TableFormat *format)
{
    constexpr std::pair<QStringView, QChar> names[] = {{u"comma", u','}, {u"semicolon", u';'}, {u"tab", u'\t'},
                                                       {u"space", u' '}, {u"pipe", u'|'},      {u"colon", u':'}};
    for (const auto &[name, separator] : names)
        if (value.trimmed().compare(name, Qt::CaseInsensitive) == 0)
            format->separator = separator;
    if (value.size() == 1 && CanSeparate(value.front()))
        format->separator = value.front();
}

/// @return whether the line is a header line; if not, it is the first row
bool TakeHeaderLine(QStringView line, bool isFirst, TableFormat *format)
{
    if (isFirst && line.size() == 5 && line.startsWith(u"sep=", Qt::CaseInsensitive) && CanSeparate(line.back())) {
        format->separator = line.back();
        return true;
    }
    const qsizetype colon = line.indexOf(u':');
    if (!line.startsWith(u'#') || colon < 0)
        return false;
    const QString key = line.sliced(1, colon - 1).toString().toLower();
    const QStringView value = line.sliced(colon + 1);
    constexpr QStringView columnKeys[] = {u"guid column", u"notetype column", u"deck column", u"tags column"};
    constexpr QStringView otherKeys[] = {u"columns", u"deck", u"notetype", u"tags", u"if matches"};
    if (key == u"separator")
        TakeSeparator(value, format);
    else if (key == u"html")
        format->isHtml = value.trimmed().compare(u"true", Qt::CaseInsensitive) == 0;
    else if (std::ranges::find(columnKeys, key) != std::end(columnKeys))
        format->leftOut += value.trimmed().toInt();
    else if (std::ranges::find(otherKeys, key) == std::end(otherKeys))
        return false;
    format->isGuarded = false; // a flash-card program wrote this, or our own export for one
    return true;
}

} // namespace

TableFormat DetectTableFormat(const QString &text, const QString &separator)
{
    TableFormat format;
    const auto isLineEnd = [](QChar character) { return character == u'\r' || character == u'\n'; };
    while (format.start < text.size()) {
        const auto lineEnd = std::find_if(text.begin() + format.start, text.end(), isLineEnd);
        qsizetype next = lineEnd - text.begin();
        const QStringView line = QStringView(text).sliced(format.start, next - format.start);
        if (!TakeHeaderLine(line, format.firstNumber == 1, &format))
            break;
        if (next < text.size())
            next += QStringView(text).sliced(next).startsWith(u"\r\n") ? 2 : 1;
        format.start = next;
        ++format.firstNumber;
    }
    if (!separator.isEmpty())
        format.separator = separator;
    else if (format.separator.isEmpty())
        format.separator = GuessSeparator(QStringView(text).sliced(format.start));
    return format;
}
