// SPDX-FileCopyrightText: 2026 The Kotoban developers
// SPDX-License-Identifier: MIT

// Start-up: the steps from the single-instance check to opening the database, each of which may end the program, and
// the daily backup. The windows follow in main.
#pragma once

#include "base/modLog.h"
#include "platform/modInstance.h"
#include "platform/modSystemServices.h"
#include "store/Sqlite3Func.h"

#include <array>

/// The folders that must exist at start-up, in the order in which they are checked.
inline constexpr std::array<QStringView, 5> RequiredFolders{u"db", u"db_backup", u"txt", u"rec", u"wav"};

/// Runs the steps before the first window, in this order, up to the first one that fails: single-instance check,
/// application title, run log, required folders, pruning of the log folder, backup of the database, opening of the
/// database. An application folder with neither a database nor a backup gets a new database before the backup; a file
/// of 0 bytes counts as none.
/// @param instance  this process's lock on the application folder
/// @return whether the program may continue; if not, the failed step has reported why
[[nodiscard]] bool PrepareRun(const QString &applicationFolder, const InstanceMark &instance, const RunLog &log,
                              SystemServices &services, StudyDatabase &database);

/// Gives an open database without its table one, with a message, and one without its index that, without a message. As
/// SQLite reads the file for that, it comes after the first window, which needs neither.
void CompleteDatabase(const QString &applicationFolder, SystemServices &services, StudyDatabase &database);

/// Full path of the first of the required folders that does not exist; empty if all do.
QString MissingFolder(const QString &applicationFolder);

/// The run log's entry for a missing folder.
QString FolderMissingMessage(const QString &path);

/// Copies the database to the backup folder once a day, under a name with the date and time of the copy.
/// @param databaseFolder, backupFolder  full paths
/// @param keepCount  number of files kept by the pruning that follows
/// @return false if the copy failed or if there is no database, or one of 0 bytes, even on a day that already has its
/// copy; error then holds the message, and no partial copy is left
[[nodiscard]] bool BackupDatabase(const QString &databaseFolder, const QString &databaseName,
                                  const QString &backupFolder, int keepCount, const QDateTime &now, QString *error);

/// Deletes the files "prefix*.extension" of a folder except the last keepCount in binary order of their names. As the
/// names contain dates, the newest files are kept.
void KillOldFiles(const QString &folder, const QString &prefix, const QString &extension, int keepCount);

/// Whether a folder has a file whose name contains a date of the form "_yyyy_mmdd".
bool ExistsFileOfDay(const QString &folder, const QString &dayMark);
