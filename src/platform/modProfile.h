// Private profile ("ini") files as Windows reads and writes them: "[section]" lines, "key=value" lines below them,
// comments from ";" on. Names ignore case; blanks around names and values and one pair of quotes around a value do not
// count; the first section and the first key of a name hold. Code page 932. On a Windows of that code page the bytes
// are those of the system's own functions, which are not used: they write the code page of the machine, and on one of
// UTF-8 they would lose what they cannot convert.
#pragma once

#include <QString>

/// Reads one value.
/// @param maxLength  longest text returned, in characters; a longer value is cut without a word
/// @return the value up to its first NUL character; defaultText when the file, the section or the key is missing
QString ReadProfile(const QString &path, const QString &section, const QString &key, const QString &defaultText,
                    qsizetype maxLength);

/// Whether a text can be a value: it stands on one line and holds no NUL.
bool IsProfileValue(const QString &value);

/// A value as it is written: in quotes when reading would take blanks or quotes of its own away.
QString ProfileText(const QString &value);

/// Writes one value, and makes the file, the section or the key where they are missing. Every other line keeps its
/// place and its bytes. The file is replaced at one stroke.
/// @return false when the value is none or could not be written; the old file is then still there, whole
bool WriteProfile(const QString &path, const QString &section, const QString &key, const QString &value);
