// SPDX-FileCopyrightText: 2026 The Kotoban developers
// SPDX-License-Identifier: MIT

// Where users stopped, in the list "ListPlace.txt": one entry per user and file, the most recently studied last.
//
//     user TAB name of the study file TAB line of the answer shown last
//         [TAB size of the file in bytes TAB its SHA-1 in hexadecimal TAB numbers of the blanks shown, as "1-12,15"]
//
// In entries of older versions the name is the title of the file, see GetFileTitle.
#pragma once

#include "records/modListFile.h"
#include "text/modDisplayText.h"

#include <vector>

/// Largest list that is read and written.
constexpr qint64 MaxPlaceListBytes = 1 * BytesPerMegabyte;

/// Where a user stopped in a file.
struct Place
{
    int line = 0;                    ///< 1-based; 0 if unknown
    qint64 fileBytes = 0;            ///< size of the file to which the following belong
    QString fileHash{};              ///< its SHA-1, in lower-case hexadecimal
    std::vector<BlankRange> shown{}; ///< blanks whose answers were shown; ascending, at most MaxShownRanges
};

/// Files with more ranges of shown answers keep none. Enter and reading from page to page make one.
constexpr size_t MaxShownRanges = 2000;

class PlaceList
{
  public:
    explicit PlaceList(const QString &path);

    /// The user who studied last; empty if nobody has.
    QString LastUser() const;

    /// The name of the file that a user studied last, as ListField makes it, or its title in an old entry; empty if
    /// there is none.
    QString LastFile(const QString &userName) const;

    /// Where a user stopped in a file. @param fileName  without folder
    Place Find(const QString &userName, const QString &fileName) const;

    /// Records where a user stops. All other lines stay as they are, even ones that are not entries; only if the list
    /// would become too large, its oldest entries are dropped. After a fault the list is unchanged.
    FileFault Write(const QString &userName, const QString &fileName, const Place &place) const;

  private:
    /// The last entry that begins with some fields; empty if there is none.
    QStringList LastEntry(const QStringList &begin) const;

    ListFile m_list;
};
