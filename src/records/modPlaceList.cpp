// SPDX-FileCopyrightText: 2026 The Kotoban developers
// SPDX-License-Identifier: MIT

#include "records/modPlaceList.h"

namespace {

constexpr EntryField Text, Number{.isNumber = true};
constexpr EntryField Fields[] = {Text, Text, Number};

} // namespace

PlaceList::PlaceList(const QString &path) : m_list(path, {Fields, MaxPlaceListBytes, true}) {}

QString PlaceList::LastUser() const
{
    return LastEntry({}).value(0);
}

QString PlaceList::LastTitle(const QString &userName) const
{
    return LastEntry({userName}).value(1);
}

int PlaceList::Line(const QString &userName, const QString &title) const
{
    return LastEntry({userName, title}).value(2).toInt();
}

FileFault PlaceList::Write(const QString &userName, const QString &title, int line) const
{
    return m_list.Replace({userName, title}, {m_list.Line({userName, title, QString::number(line)})});
}

QStringList PlaceList::LastEntry(const QStringList &begin) const
{
    const QStringList lines = m_list.Lines(begin);
    return lines.isEmpty() ? QStringList() : m_list.Entry(lines.last());
}
