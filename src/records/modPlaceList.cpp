// SPDX-FileCopyrightText: 2026 The Kotoban developers
// SPDX-License-Identifier: MIT

#include "records/modPlaceList.h"

#include <limits>

using namespace Qt::Literals::StringLiterals;

namespace {

constexpr EntryField Text, Number{.isNumber = true}, Optional{.ifAbsent = u""};
constexpr EntryField Fields[] = {Text, Text, Number, Optional, Optional, Optional};

QString RangesText(const std::vector<BlankRange> &ranges)
{
    QStringList texts;
    for (const BlankRange &range : ranges) {
        const QString first = QString::number(range.front());
        texts += range.size() == 1 ? first : QString(first + u'-' + QString::number(range.back()));
    }
    return texts.join(u',');
}

/// The ranges of a text as RangesText makes it; none if it is anything else.
std::vector<BlankRange> RangesOf(const QString &text)
{
    std::vector<BlankRange> ranges;
    int last = 0;
    for (const QStringView range : QStringView(text).tokenize(u',')) {
        const qsizetype dash = range.indexOf(u'-');
        const int first = range.first(dash < 0 ? range.size() : dash).toInt();
        const int end = range.sliced(dash + 1).toInt();
        if (first <= last || end < first || end == std::numeric_limits<int>::max() || ranges.size() == MaxShownRanges)
            return {};
        ranges.emplace_back(first, end + 1);
        last = end;
    }
    return ranges;
}

} // namespace

PlaceList::PlaceList(const QString &path) : m_list(path, {Fields, MaxPlaceListBytes, true}) {}

QString PlaceList::LastUser() const
{
    return LastEntry({}).value(0);
}

QString PlaceList::LastFile(const QString &userName) const
{
    return LastEntry({userName}).value(1);
}

Place PlaceList::Find(const QString &userName, const QString &fileName) const
{
    QStringList entry = LastEntry({userName, fileName});
    if (entry.isEmpty())
        entry = LastEntry({userName, fileName.section(u'.', 0, 0)}); // the title
    return {entry.value(2).toInt(), entry.value(3).toLongLong(), entry.value(4), RangesOf(entry.value(5))};
}

FileFault PlaceList::Write(const QString &userName, const QString &fileName, const Place &place) const
{
    QStringList entry = {userName, fileName, QString::number(place.line), QString(), QString(), QString()};
    if (!place.shown.empty()) {
        entry[3] = QString::number(place.fileBytes);
        entry[4] = place.fileHash;
        entry[5] = RangesText(place.shown);
    }
    return m_list.Replace({userName, fileName}, {m_list.Line(entry)});
}

QStringList PlaceList::LastEntry(const QStringList &begin) const
{
    const QStringList lines = m_list.Lines(begin);
    return lines.isEmpty() ? QStringList() : m_list.Entry(lines.last());
}
