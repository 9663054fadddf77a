// SPDX-FileCopyrightText: 2026 The Kotoban developers
// SPDX-License-Identifier: MIT

// Where users stopped, in the list "ListPlace.txt": one entry per user and file, the most recently studied last.
//
//     user TAB title of the study file TAB line at the top of the page
#pragma once

#include "records/modListFile.h"

/// Largest list that is read and written.
constexpr qint64 MaxPlaceListBytes = 1 * BytesPerMegabyte;

class PlaceList
{
  public:
    explicit PlaceList(const QString &path);

    /// The user who studied last; empty if nobody has.
    QString LastUser() const;

    /// The title of the file that a user studied last; empty if there is none.
    QString LastTitle(const QString &userName) const;

    /// The line, 1-based, at which a user stopped in a file; 0 if unknown.
    int Line(const QString &userName, const QString &title) const;

    /// Records where a user stops. All other lines stay as they are, even ones that are not entries; only if the list
    /// would become too large, its oldest entries are dropped. After a fault the list is unchanged.
    FileFault Write(const QString &userName, const QString &title, int line) const;

  private:
    /// The last entry that begins with some fields; empty if there is none.
    QStringList LastEntry(const QStringList &begin) const;

    ListFile m_list;
};
