// SPDX-FileCopyrightText: 2026 The Kotoban developers
// SPDX-License-Identifier: MIT

// Private profile ("ini") files as Windows reads and writes them, in code page 932: "[section]" lines with "key=value"
// lines below them, and comment lines that begin with ";". Names are case-insensitive; blanks around names and values
// and one pair of quotes around a value are ignored; of several sections or keys with the same name the first counts.
// On Windows with code page 932 the bytes are those of the system's own functions. These are not used because they
// write the machine's code page and, where that is UTF-8, lose what they cannot convert.
#pragma once

#include "base/modFile.h"
#include "platform/modReplaceFile.h"

#include <QHash>
#include <QString>

#include <utility>
#include <vector>

/// Largest file that is read and written.
constexpr qint64 MaxProfileBytes = 1 * BytesPerMegabyte;

/// The values of one section as they were when the file was read.
class ProfileSection
{
  public:
    /// Reads the file. If it or the section is missing, there are no values.
    /// @param maxLength  in characters; longer values are silently truncated
    ProfileSection(const QString &path, const QString &section, qsizetype maxLength);

    /// @return the value up to its first NUL character; defaultText if the key is missing
    QString Value(const QString &key, const QString &defaultText = QString()) const
    {
        return m_values.value(key.toCaseFolded(), defaultText);
    }

  private:
    QHash<QString, QString> m_values; // by key in folded case
};

/// A key, spelled as it is to be written, and its value.
using ProfileEntry = std::pair<QString, QString>;

/// Writes some values, in their order, creating the file, the section or keys if missing. Every other line keeps its
/// place and its bytes. The file is replaced atomically, once for all values.
/// @param onDisk  with Later, a file that has these values already is not written
/// @return false if a value has more than one line or a NUL, if the file has or would have more than MaxProfileBytes,
/// or if it could not be written; it is then unchanged
[[nodiscard]] bool WriteProfile(const QString &path, const QString &section, const std::vector<ProfileEntry> &entries,
                                OnDisk onDisk = OnDisk::AtOnce);
