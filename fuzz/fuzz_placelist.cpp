// SPDX-FileCopyrightText: 2026 The Kotoban developers
// SPDX-License-Identifier: MIT

// Any list of places: one that is written is found again as the last one, and all other lines stay.
#include "base/modCodePage.h"
#include "input.h"
#include "records/modListFile.h"
#include "records/modPlaceList.h"
#include "require.h"

namespace {

QStringList LinesOf(const QString &path)
{
    QStringList lines;
    Require(!ReadList(path, &lines, MaxPlaceListBytes));
    return lines;
}

} // namespace

// Input: the user and the title up to a zero byte each, a byte for the line, the list.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    static const FuzzFile file(QStringLiteral("ListPlace.txt"));
    static const PlaceList places(file.Path());
    FuzzInput input(data, size);
    const QString user = FromCodePage932(input.TakeText());
    const QString title = FromCodePage932(input.TakeText());
    const int line = input.TakeByte() + 1;
    const QByteArray before = input.TakeRest();
    file.Write(before);
    Require(places.Line(user, title) >= 0);
    if (places.Write(user, title, line)) {
        Require(file.Read() == before);
        return 0;
    }
    Require(places.Line(user, title) == line);
    Require(places.LastUser() == ListField(user) && places.LastTitle(user) == ListField(title));
    QStringList once = LinesOf(file.Path());
    Require(!places.Write(user, title, line + 1));
    QStringList twice = LinesOf(file.Path());
    Require(once.takeLast() != twice.takeLast() && once == twice);
    return 0;
}
