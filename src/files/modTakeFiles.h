// SPDX-FileCopyrightText: 2026 The Kotoban developers
// SPDX-License-Identifier: MIT

// Copies files from elsewhere into the folder of study files: which ones belong there, and the messages about them.
#pragma once

#include <QString>
#include <QStringList>

/// Files dropped on the list, as full paths, by what to do with them.
struct FilesToTake
{
    QStringList fresh;    ///< the folder has no file of that name
    QStringList replaced; ///< the folder has a file of that name
    QStringList foreign;  ///< neither text nor picture
};

/// Whether a file, by its name, is a table from which a study file can be made.
bool IsTable(const QString &path);

/// Sorts files by what to do with them. Of several with the same name only the first is taken; files already in the
/// folder are skipped.
FilesToTake SortFilesToTake(const QStringList &paths, const QString &folder);

/// Copies files into the folder, replacing existing ones of the same names.
/// @param failures  receives one line for each file that could not be copied; what it would have replaced is unchanged
/// @return number of files copied
int TakeFiles(const QStringList &paths, const QString &folder, QStringList *failures);

/// Complete texts for the user, lines separated by CR LF. Of many names only the first are shown.
QString ReplaceTakenQuestion(const QStringList &replaced);
QString TakenMessage(int copied, const QStringList &foreign, const QStringList &failures);
