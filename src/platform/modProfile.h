// SPDX-FileCopyrightText: 2026 The Kotoban developers
// SPDX-License-Identifier: MIT

// Private profile ("ini") files as Windows reads and writes them, in code page 932: "[section]" lines with "key=value"
// lines below them, and comment lines that begin with ";". Names are case-insensitive; blanks around names and values
// and one pair of quotes around a value are ignored; of several sections or keys with the same name the first counts.
// On Windows with code page 932 the bytes are those of the system's own functions. These are not used because they
// write the machine's code page and, where that is UTF-8, lose what they cannot convert.
#pragma once

#include <QString>

/// Reads one value.
/// @param maxLength  in characters; a longer result is silently truncated
/// @return the value up to its first NUL character; defaultText if the file, the section or the key is missing
QString ReadProfile(const QString &path, const QString &section, const QString &key, const QString &defaultText,
                    qsizetype maxLength);

/// Whether a text can be stored as a value: it is a single line without NUL.
bool IsProfileValue(const QString &value);

/// A value in the form in which it is written: quoted if reading would otherwise strip its own blanks or quotes.
QString ProfileText(const QString &value);

/// Writes one value, creating the file, the section or the key if missing. Every other line keeps its place and its
/// bytes. The file is replaced atomically.
/// @return false if the value is invalid or could not be written; the old file is then intact
bool WriteProfile(const QString &path, const QString &section, const QString &key, const QString &value);
