// SPDX-FileCopyrightText: 2026 The Kotoban developers
// SPDX-License-Identifier: MIT

#include "records/modPlaceList.h"

#include "records/modListFile.h"

#include <algorithm>
#include <optional>

using namespace Qt::Literals::StringLiterals;

namespace {

struct Entry
{
    QString userName;
    QString title;
    int line = 0;
};

std::optional<Entry> ReadEntry(const QString &listed)
{
    const QStringList fields = listed.split(u'\t');
    const int line = fields.size() == 3 ? fields[2].toInt() : 0;
    return line >= 1 ? std::optional(Entry{fields[0], fields[1], line}) : std::nullopt;
}

/// The last entry that meets a condition; an empty one if none does.
template <typename Condition>
Entry LastEntry(const QString &path, Condition condition)
{
    QStringList lines;
    if (ReadList(path, &lines, MaxPlaceListBytes))
        return Entry();
    for (auto listed = lines.rbegin(); listed != lines.rend(); ++listed)
        if (const std::optional<Entry> entry = ReadEntry(*listed); entry && condition(*entry))
            return *entry;
    return Entry();
}

/// Removes the first entries, those of files not studied for the longest time. @param bytes  to be freed at least
void DropOldest(qint64 bytes, QStringList *lines)
{
    lines->removeIf([&bytes](const QString &listed) {
        if (bytes <= 0 || !ReadEntry(listed))
            return false;
        bytes -= ListBytes({listed});
        return true;
    });
}

} // namespace

PlaceList::PlaceList(const QString &path) : m_path(path) {}

QString PlaceList::LastUser() const
{
    return LastEntry(m_path, [](const Entry &) { return true; }).userName;
}

QString PlaceList::LastTitle(const QString &userName) const
{
    return LastEntry(m_path, [name = ListField(userName)](const Entry &entry) { return entry.userName == name; }).title;
}

int PlaceList::Line(const QString &userName, const QString &title) const
{
    return LastEntry(m_path, [name = ListField(userName), file = ListField(title)](
                                 const Entry &entry) { return entry.userName == name && entry.title == file; })
        .line;
}

FileFault PlaceList::Write(const QString &userName, const QString &title, int line) const
{
    const QString name = ListField(userName);
    const QString file = ListField(title);
    QStringList lines;
    if (const FileFault fault = ReadList(m_path, &lines, MaxPlaceListBytes))
        return fault;
    lines.removeIf([&](const QString &listed) {
        const std::optional<Entry> entry = ReadEntry(listed);
        return entry && entry->userName == name && entry->title == file;
    });
    const QString added = QStringList({name, file, QString::number(line)}).join(u'\t');
    DropOldest(ListBytes(lines) + ListBytes({added}) - MaxPlaceListBytes, &lines);
    return WriteList(m_path, lines + QStringList(added), MaxPlaceListBytes);
}
