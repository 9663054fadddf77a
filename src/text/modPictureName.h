// SPDX-FileCopyrightText: 2026 The Kotoban developers
// SPDX-License-Identifier: MIT

// Picture references in a study file: the name of a picture file, without folder and extension, in half-width corner
// brackets "｢" and "｣".
#pragma once

#include "text/modDisplayText.h"

#include <QHash>
#include <QStringList>

#include <vector>

/// Whether the corner brackets of a line match: equal numbers of both, and the n-th opening one before the n-th closing
/// one. "｢｢a｣｣" passes, because an opening bracket may be part of a name. A line without an opening bracket always
/// passes.
bool IsPictureLineValid(QStringView line);

/// Whether a picture name is valid: it contains none of ! " # $ % & ' + ? * / \ . , space, tab and ｣.
bool IsPictureNameValid(QStringView name);

/// The first invalid picture names in a file, each once, in file order: at most one more than a message lists. Lines
/// whose brackets do not match are skipped, and so are references that overlap a blank, because the message would
/// reveal a hidden answer.
QStringList BadPictureNames(const DisplayText &text);

/// Number of invalid names that a message lists.
constexpr qsizetype MaxBadNamesListed = 10;

/// The message about invalid names, one line each; empty if there are none. Only the first MaxBadNamesListed are
/// listed.
QString BadPictureNamesMessage(const QStringList &names);

/// A name in corner brackets.
struct PictureReference
{
    qsizetype start;  ///< 0-based index of its opening bracket
    qsizetype length; ///< in characters, both brackets included
    QString name;
};

/// All references of a valid line, from left to right, whatever their names; none on any other line. Those of "｢｢a｣｣"
/// overlap.
std::vector<PictureReference> AllReferences(QStringView line);

/// The references of a line that can be opened with a click, from left to right: those with a valid, non-empty name on
/// a valid line.
std::vector<PictureReference> PictureReferences(QStringView line);

/// The name in the valid reference at a position, corner brackets included.
/// @param index  0-based character index
/// @return empty if there is no such reference
QString PictureNameAt(QStringView line, qsizetype index);

/// The pictures in a folder, which is listed once.
class PictureFolder
{
  public:
    explicit PictureFolder(const QString &path);

    /// Full path of a picture: the first regular file among name.png, .jpg, .jpeg, .gif and .bmp, ignoring case; empty
    /// if the folder had none of them.
    QString Find(const QString &name) const;

  private:
    QString m_path;
    QHash<QString, QString> m_files; // file names by their case-folded form
};
