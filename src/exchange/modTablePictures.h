// SPDX-FileCopyrightText: 2026 The Kotoban developers
// SPDX-License-Identifier: MIT

// The pictures beside a table that its cells show, and how they come to the study file that is made of it.
#pragma once

#include "exchange/modInsertPicture.h"

#include <QHash>
#include <QList>

#include <optional>

class TablePictures
{
  public:
    /// @param tablePath  of the table; pictures are looked for in its folder
    /// @param studyFolder  where they are copied
    TablePictures(const QString &tablePath, const QString &studyFolder);

    /// The name by which a text refers to the picture in a file; empty if the table's folder has no such picture.
    /// Different files have different names. @param fileName  without folder
    QString NameOf(const QString &fileName);

    /// The pictures that a text refers to by names that NameOf has given, each once.
    QList<PictureToInsert> UsedIn(QStringView text) const;

    /// Full path of the file of a picture from UsedIn.
    QString SourceOf(const PictureToInsert &picture) const
    {
        return m_sources.value(picture.name);
    }

    /// The first files that NameOf did not find, and their number.
    const QStringList &FirstMissing() const
    {
        return m_firstMissing;
    }

    int MissingCount() const
    {
        return m_missingCount;
    }

  private:
    QString FindName(const QString &fileName);

    QString m_tableFolder;
    QString m_studyFolder;
    std::optional<PictureFolder> m_present; // of the study folder; listed when first needed
    QHash<QString, QString> m_files;        // of the table's folder, by their case-folded names
    QHash<QString, QString> m_names;        // what NameOf has given, by file name
    QHash<QString, QString> m_sources;      // paths by those names
    QHash<QString, int> m_sameNames;        // number of files by the case-folded name that they would have
    QStringList m_firstMissing;
    int m_missingCount = 0;
};

/// Whether another picture with the name of a picture must be replaced or hidden: not if it has the same contents.
/// @param path  of the picture
bool MustAskFor(const PictureToInsert &picture, const QString &path);

/// Asks about some pictures that replace others. @param names  at least one
QString ReplacePicturesQuestion(const QStringList &names);

/// What the report of a study file says about the pictures of its table; may be empty. @param taken  number of them
QString PictureRemarks(const TablePictures &pictures, qsizetype taken);
