// SPDX-FileCopyrightText: 2026 The Kotoban developers
// SPDX-License-Identifier: MIT

#include "app/modMain.h"

#include "base/modFile.h"
#include "base/modProduct.h"
#include "store/Sqlite3.h"
#include "store/modCopyDatabase.h"
#include "store/modDB_SQLite.h"

#include <QDirIterator>
#include <QFile>
#include <QSysInfo>

#include <algorithm>

using namespace Qt::Literals::StringLiterals;

namespace {

constexpr int KeptLogFiles = 10;
constexpr int KeptBackups = 20;

constexpr QStringView DatabaseName = u"kotoban.splite3";

/// The entries of a folder, by default its files. No name filters, not even the "*" of QDir: Qt matches them with
/// regular expressions, whose library start-up does not need otherwise.
QStringList EntryNames(const QString &folder, QDir::Filters filters = QDir::Files | QDir::Hidden)
{
    QStringList names;
    for (QDirIterator entries(folder, filters); entries.hasNext();)
        names += entries.nextFileInfo().fileName();
    return names;
}

bool StartRunLog(const RunLog &log, SystemServices &services)
{
    const FileFault fault = log.WriteYmdLogStart();
    if (!fault)
        return true;
    services.ShowMessage(FaultMessage(u"実行ログに書き込めません。"_s, fault) +
                         u"\r\n\r\n書き込みが許されていない場所では使えません。\r\n"_s +
                         u"このフォルダを，ホームフォルダやデスクトップなど，書き込める場所へフォルダごと移してから，"
                         u"もう一度起動してください。"_s);
    return false;
}

// No window is shown; the entry in the run log is the only report.
bool CheckFoldersAndLog(const QString &applicationFolder, const RunLog &log, SystemServices &services)
{
    const QString missing = MissingFolder(applicationFolder);
    if (missing.isEmpty())
        return true;
    if (const FileFault fault = log.WriteLog(FolderMissingMessage(missing)))
        services.ShowMessage(fault.reason);
    return false;
}

QString DatabasePath(const QString &applicationFolder)
{
    return JoinPath(JoinPath(applicationFolder, u"db"_s), DatabaseName.toString());
}

QString BackupFolder(const QString &applicationFolder)
{
    return JoinPath(applicationFolder, u"db_backup"_s);
}

bool OpenOrReport(const QString &path, SystemServices &services, StudyDatabase &database)
{
    if (database.Open(path) == 0)
        return true;
    services.ShowMessage(u"DBFile Open Error"_s);
    WriteTrace(u"DBFile Open Error");
    return false;
}

/// Whether a folder has a backup under its final name. A link counts even if it leads nowhere: there was one.
bool HasBackup(const QString &folder)
{
    const QStringList names = EntryNames(folder, QDir::AllEntries | QDir::NoDotAndDotDot | QDir::Hidden | QDir::System);
    return std::any_of(names.begin(), names.end(),
                       [](const QString &name) { return name.endsWith(u".splite3", Qt::CaseInsensitive); });
}

/// Creates the database of an application folder that has never had one. If the backup folder has a backup, there was
/// one: an empty database in its place would hide the loss, which the backup step reports.
bool MakeFirstDatabase(const QString &applicationFolder, SystemServices &services)
{
    const QFileInfo file(DatabasePath(applicationFolder));
    const bool leadsNowhere = file.isSymLink() && !file.exists();
    if (!LacksDatabase(file.filePath()) || leadsNowhere || HasBackup(BackupFolder(applicationFolder)))
        return true;
    // A link stays one: its file may be in a folder that several machines share.
    NewDatabase made(file.exists() ? file.canonicalFilePath() : file.filePath());
    {
        StudyDatabase database(services);
        if (!OpenOrReport(made.Path(), services, database) || !DBFillNewKotoban(database))
            return false;
    }
    const FileFault fault = made.Finish();
    if (fault)
        services.ShowMessage(FaultMessage(u"データベースを作れません。"_s, fault));
    return !fault;
}

bool BackUpOrReport(const QString &applicationFolder, SystemServices &services)
{
    QString error;
    if (BackupDatabase(JoinPath(applicationFolder, u"db"_s), DatabaseName.toString(), BackupFolder(applicationFolder),
                       KeptBackups, services.Now(), &error))
        return true;
    services.ShowMessage(error);
    return false;
}

bool OpenDatabase(const QString &applicationFolder, SystemServices &services, StudyDatabase &database)
{
    if (const int result = SQLite3Initialize(); result != 0) {
        WriteTrace(QString(u"Error Initializing SQLite:"_s + QString::number(result)));
        return false;
    }
    return OpenOrReport(DatabasePath(applicationFolder), services, database);
}

} // namespace

bool PrepareRun(const QString &applicationFolder, const InstanceMark &instance, const RunLog &log,
                SystemServices &services, StudyDatabase &database)
{
    // Nothing may be written before this check: the files belong to the running instance.
    if (instance.HasPreviousInstance()) {
        services.ShowMessage(u"二重起動はできません。"_s);
        return false;
    }
    services.SetApplicationTitle(ProductName());
    TraceSetup();
    // The log is started before the folders are checked, so that it contains only the entry about a missing one.
    if (!StartRunLog(log, services) || !CheckFoldersAndLog(applicationFolder, log, services))
        return false;
    WriteTrace(u"■Main().WriteYmdLogStart");
    KillOldFiles(JoinPath(applicationFolder, u"log"_s), u"Log"_s, u"txt"_s, KeptLogFiles);
    const QString processor = u"CPU="_s + QSysInfo::currentCpuArchitecture() + u'-' + QSysInfo::buildCpuArchitecture();
    const QString system = u"OS="_s + QSysInfo::kernelType() + u'-' + QSysInfo::kernelVersion();
    WriteTrace(processor);
    WriteTrace(system);
    SQLite3Configure(); // the next two steps use SQLite already
    // The backup comes before opening the database: a file that this process has open must not be copied.
    return MakeFirstDatabase(applicationFolder, services) && BackUpOrReport(applicationFolder, services) &&
           OpenDatabase(applicationFolder, services, database);
}

void CompleteDatabase(const QString &applicationFolder, SystemServices &services, StudyDatabase &database)
{
    if (database.LacksTable(u"t_kotoban"_s) && DBCreateKotoban(database))
        services.ShowMessage(u"データベースに学習記録がありません。\r\n"
                             u"学習記録を新しく始めます。以前の記録のコピーは次のフォルダにあります。\r\n  "_s +
                             BackupFolder(applicationFolder));
    DBIndexKotoban(database);
}

QString MissingFolder(const QString &applicationFolder)
{
    for (const QStringView name : RequiredFolders)
        if (QString path = JoinPath(applicationFolder, name.toString()); !QFileInfo(path).isDir())
            return path;
    return QString();
}

QString FolderMissingMessage(const QString &path)
{
    return u"次のフォルダが存在しません。\r\n次のフォルダを作成してください。\r\n\r\n　"_s + path;
}

bool BackupDatabase(const QString &databaseFolder, const QString &databaseName, const QString &backupFolder,
                    int keepCount, const QDateTime &now, QString *error)
{
    error->clear();
    const QString failure = u"データベースのバックアップに失敗しました。\r\n  "_s;
    const QString source = JoinPath(databaseFolder, databaseName);
    // Even if today's copy exists: SQLite would create an empty database, which would be backed up from tomorrow on.
    if (LacksDatabase(source)) {
        *error = failure + source +
                 u"\r\n  データベースのファイルがありません。次のフォルダのコピーから戻してください。\r\n  "_s +
                 backupFolder;
        return false;
    }
    if (!ExistsFileOfDay(backupFolder, now.toString(u"_yyyy_MMdd"))) {
        QString backupName = databaseName;
        backupName.replace(u"."_s, now.toString(u"_yyyy_MMdd-HHmm_ss."));
        const QString target = JoinPath(backupFolder, backupName);
        WriteTrace(u"FileCopy");
        if (const FileFault fault = CopyDatabase(source, target)) {
            *error = failure + source + u"\r\n  → "_s + target + u"\r\n  "_s + fault.reason;
            return false;
        }
        WriteTrace(u"FileCopyFinished");
    }
    WriteTrace(u"KillOldBackup");
    // Backups end in ".splite3", so "sqlite3" deliberately matches none: a user's backups are never deleted.
    KillOldFiles(backupFolder, databaseName.left(databaseName.indexOf(u'.')), u"sqlite3"_s, keepCount);
    return true;
}

void KillOldFiles(const QString &folder, const QString &prefix, const QString &extension, int keepCount)
{
    const QString ending = u'.' + extension;
    QStringList names;
    for (const QString &name : EntryNames(folder))
        if (name.startsWith(prefix, Qt::CaseInsensitive) &&
            name.mid(prefix.size()).endsWith(ending, Qt::CaseInsensitive))
            names += name;
    std::sort(names.begin(), names.end(), std::greater<>());
    for (qsizetype i = keepCount; i < names.size(); ++i)
        QFile::remove(JoinPath(folder, names[i]));
}

bool ExistsFileOfDay(const QString &folder, const QString &dayMark)
{
    const QStringList names = EntryNames(folder);
    return std::any_of(names.begin(), names.end(), [&](const QString &name) { return name.contains(dayMark); });
}
