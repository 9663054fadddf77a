// Start-up: the steps from the single-instance check to the open database, each of which may end the program, and the
// keeping of the daily backups. Windows come after it, in main.
#pragma once

#include "base/modLog.h"
#include "platform/modInstance.h"
#include "platform/modSystemServices.h"
#include "store/Sqlite3Func.h"

/// The folders that must be there at the start, in the order in which they are looked for.
inline constexpr QStringView RequiredFolders = u"db,db_backup,txt,rec,wav";

/// Carries out the steps before the first window, in this order, up to the first that fails: single instance,
/// application title, run log, folders, pruning of the log folder, backup of the database, opening of the database. A
/// folder without a database and without anything among its backups is given a database before the backup; one without
/// its table is given that when it is opened, with a message.
/// @param instance  the mark of this process in its application folder
/// @return whether the program may go on; if not, the learner has been told as the step does it
bool PrepareRun(const QString &applicationFolder, const InstanceMark &instance, const RunLog &log,
                SystemServices &services, StudyDatabase &database);

/// Looks for the required folders. @return whether all are there; missing is then empty, else the full path of the
/// first that is not
bool CheckFolders(const QString &applicationFolder, QString *missing);

/// The run log's entry for a missing folder.
QString FolderMissingMessage(const QString &path);

/// Copies the database once a day into the backup folder, under a name that carries the moment of the copy.
/// @param databaseFolder, backupFolder  full paths
/// @param keepCount  files kept by the pruning that follows
/// @return false when the copy could not be made or there is no database, even if the day has its copy; error then says
/// so, and no part of a copy is left
bool BackupDatabase(const QString &databaseFolder, const QString &databaseName, const QString &backupFolder,
                    int keepCount, const QDateTime &now, QString *error);

/// Deletes the files "prefix*.extension" of a folder beyond the first keepCount, sorted by name in descending binary
/// order: as their names carry dates, the newest stay.
void KillOldFiles(const QString &folder, const QString &prefix, const QString &extension, int keepCount);

/// Whether a folder holds a file whose name contains the mark of a day, "_yyyy_mmdd".
bool ExistsFileOfDay(const QString &folder, const QString &dayMark);
