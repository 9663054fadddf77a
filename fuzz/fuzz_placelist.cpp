// SPDX-FileCopyrightText: 2026 The Kotoban developers
// SPDX-License-Identifier: MIT

// Any list of places: what it says about a file is in bounds, a place that is written is found again as the last one,
// and all other lines stay.
#include "base/modCodePage.h"
#include "input.h"
#include "records/modListFile.h"
#include "records/modPlaceList.h"
#include "require.h"

#include <algorithm>

namespace {

QStringList LinesOf(const QString &path)
{
    QStringList lines;
    Require(!ReadList(path, &lines, MaxPlaceListBytes));
    return lines;
}

void CheckShown(const Place &place)
{
    Require(place.line >= 0 && place.shown.size() <= MaxShownRanges);
    int last = 0;
    for (const BlankRange &range : place.shown) {
        Require(!range.empty() && range.front() > last);
        last = range.back();
    }
}

bool AreEqual(const std::vector<BlankRange> &first, const std::vector<BlankRange> &second)
{
    return std::ranges::equal(first, second, [](const BlankRange &one, const BlankRange &other) {
        return one.front() == other.front() && one.back() == other.back();
    });
}

} // namespace

// Input: the user and the name of the file up to a zero byte each, a byte for the line, one for the answers, the list.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    static const FuzzFile file(QStringLiteral("ListPlace.txt"));
    static const PlaceList places(file.Path());
    FuzzInput input(data, size);
    const QString user = FromCodePage932(input.TakeText());
    const QString name = FromCodePage932(input.TakeText());
    const int line = input.TakeByte() + 1;
    Place place{line, line, QStringLiteral("0a")};
    for (int bits = input.TakeByte(), blank = 1; bits > 0; bits /= 2, blank += 3)
        if (bits % 2 == 1)
            place.shown.emplace_back(blank, blank + 1 + blank % 2);
    const QByteArray before = input.TakeRest();
    file.Write(before);
    CheckShown(places.Find(user, name));
    if (places.Write(user, name, place)) {
        Require(file.Read() == before);
        return 0;
    }
    const Place found = places.Find(user, name);
    Require(found.line == line && AreEqual(found.shown, place.shown));
    Require(place.shown.empty() || (found.fileBytes == place.fileBytes && found.fileHash == place.fileHash));
    Require(places.LastUser() == ListField(user) && places.LastFile(user) == ListField(name));
    QStringList once = LinesOf(file.Path());
    place.line = line + 1;
    Require(!places.Write(user, name, place));
    QStringList twice = LinesOf(file.Path());
    Require(once.takeLast() != twice.takeLast() && once == twice);
    return 0;
}
