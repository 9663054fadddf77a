#include "app/modMain.h"

#include "platform/modFile.h"
#include "platform/modFolderSync.h"
#include "platform/modProduct.h"
#include "store/Sqlite3.h"

#include <QDir>
#include <QFile>
#include <QSysInfo>

#include <algorithm>

using namespace Qt::Literals::StringLiterals;

namespace {

constexpr int KeptLogFiles = 10;
constexpr int KeptBackups = 20;

const QString DatabaseName = u"kotoban.splite3"_s;

constexpr int SqliteRow = 100; // SQLite's result code for a row

constexpr QStringView JournalEnding = u"-journal";         // SQLite's name for the journal beside a database
constexpr QStringView UnfinishedCopy = u"unfinished.copy"; // a backup's name before it is whole; it bears no day

/// All files of a folder. Patterns would be matched by regular expressions, whose library nothing else at the start
/// needs.
QStringList FileNames(const QString &folder)
{
    return QDir(folder).entryList(QDir::Files | QDir::Hidden, QDir::NoSort);
}

/// Removes what a backup that was cut off has left: its copies, also half ones, which have six more letters.
void RemoveUnfinishedCopies(const QString &folder)
{
    for (const QString &name : FileNames(folder)) {
        const QStringView rest = QStringView(name).mid(UnfinishedCopy.size());
        const bool isHalf = (rest.size() == 7 || rest.size() == 7 + JournalEnding.size()) && rest.contains(u'.');
        if (name.startsWith(UnfinishedCopy) && (rest.isEmpty() || rest == JournalEnding || isHalf))
            QFile::remove(JoinPath(folder, name));
    }
}

/// Has SQLite take back the write that a journal beside a database tells of. @return whether it could
bool RollBack(const QString &database)
{
    sqlite3 *handle = nullptr;
    sqlite3_stmt *statement = nullptr;
    bool isDone = SQLite3Open(database, &handle) == 0 &&
                  SQLite3Prepare16V2(handle, u"select count(*) from sqlite_master"_s, &statement) == 0;
    isDone = isDone && SQLite3Step(statement) == SqliteRow;
    SQLite3Finalize(statement);
    SQLite3Close(handle);
    return isDone;
}

/// Copies a database to where there is none. Under its own name the copy is there whole or not at all.
bool CopyDatabase(const QString &source, const QString &target, QString *error)
{
    const QString folder = QFileInfo(target).path();
    const QString copy = JoinPath(folder, UnfinishedCopy.toString());
    const QString journal = JournalEnding.toString();
    RemoveUnfinishedCopies(folder);
    // A crash in the middle of a write leaves a journal, and without it the copy would be of half a write. SQLite takes
    // that back as soon as it looks into the copy.
    const bool hasJournal = QFile::exists(source + journal);
    if (!CopyWholeFile(source, copy, error) || (hasJournal && !CopyWholeFile(source + journal, copy + journal, error)))
        return false;
    if (hasJournal && !RollBack(copy))
        WriteTrace(u"RollBack"); // it is copied as it is
    QFile::remove(copy + journal);
    QFile file(copy);
    if (!file.rename(target)) {
        *error = file.errorString();
        return false;
    }
    SyncFolder(folder);
    return true;
}

bool StartRunLog(const RunLog &log, Desktop &desktop)
{
    QString error;
    if (log.WriteYmdLogStart(&error))
        return true;
    desktop.ShowMessage(u"実行ログに書き込めません。\r\n  "_s + log.Path() + u"\r\n  "_s + error);
    return false;
}

// The learner sees no window: the entry in the run log is the only trace.
bool CheckFoldersAndLog(const QString &applicationFolder, const RunLog &log, Desktop &desktop)
{
    QString missing;
    if (CheckFolders(applicationFolder, &missing))
        return true;
    QString error;
    if (!log.WriteLog(FolderMissingMessage(missing), &error))
        desktop.ShowMessage(error);
    return false;
}

bool BackUpOrReport(const QString &applicationFolder, Desktop &desktop)
{
    QString error;
    if (BackupDatabase(JoinPath(applicationFolder, u"db"_s), DatabaseName, JoinPath(applicationFolder, u"db_backup"_s),
                       KeptBackups, desktop.Now(), &error))
        return true;
    desktop.ShowMessage(error);
    return false;
}

bool OpenDatabase(const QString &applicationFolder, Desktop &desktop, StudyDatabase &database)
{
    if (const int result = SQLite3Initialize(); result != 0) {
        WriteTrace(QString(u"Error Initializing SQLite:"_s + QString::number(result)));
        return false;
    }
    if (database.Open(JoinPath(JoinPath(applicationFolder, u"db"_s), DatabaseName)) == 0)
        return true;
    desktop.ShowMessage(u"DBFile Open Error"_s);
    WriteTrace(u"DBFile Open Error");
    return false;
}

} // namespace

bool PrepareRun(const QString &applicationFolder, const InstanceMark &instance, const RunLog &log, Desktop &desktop,
                StudyDatabase &database)
{
    // Nothing may be written before this: the files belong to the instance that runs.
    if (instance.HasPreviousInstance()) {
        desktop.ShowMessage(u"二重起動はできません。"_s);
        return false;
    }
    desktop.SetApplicationTitle(ProductName());
    TraceSetup();
    // The log is begun anew before the folders are looked for, so that a missing one is the only entry.
    if (!StartRunLog(log, desktop) || !CheckFoldersAndLog(applicationFolder, log, desktop))
        return false;
    WriteTrace(u"■Main().WriteYmdLogStart");
    KillOldFiles(JoinPath(applicationFolder, u"log"_s), u"Log"_s, u"txt"_s, KeptLogFiles);
    const QString processor = u"CPU="_s + QSysInfo::currentCpuArchitecture() + u'-' + QSysInfo::buildCpuArchitecture();
    const QString system = u"OS="_s + QSysInfo::kernelType() + u'-' + QSysInfo::kernelVersion();
    WriteTrace(processor);
    WriteTrace(system);
    // The backup is taken before the database is opened: never of a file that this process holds open.
    return BackUpOrReport(applicationFolder, desktop) && OpenDatabase(applicationFolder, desktop, database);
}

bool CheckFolders(const QString &applicationFolder, QString *missing)
{
    missing->clear();
    for (const QStringView name : RequiredFolders.split(u',')) {
        const QString path = JoinPath(applicationFolder, name.toString());
        if (!QFileInfo(path).isDir()) {
            *missing = path;
            return false;
        }
    }
    return true;
}

QString FolderMissingMessage(const QString &path)
{
    return u"次のフォルダが存在しません。\r\n次のフォルダを作成してください。\r\n\r\n　"_s + path;
}

bool BackupDatabase(const QString &databaseFolder, const QString &databaseName, const QString &backupFolder,
                    int keepCount, const QDateTime &now, QString *error)
{
    error->clear();
    if (!ExistsFileOfDay(backupFolder, now.toString(u"_yyyy_MMdd"))) {
        QString backupName = databaseName;
        backupName.replace(u"."_s, now.toString(u"_yyyy_MMdd-HHmm_ss."));
        const QString source = JoinPath(databaseFolder, databaseName);
        const QString target = JoinPath(backupFolder, backupName);
        WriteTrace(u"FileCopy");
        if (!CopyDatabase(source, target, error)) {
            *error = u"データベースのバックアップに失敗しました。\r\n  "_s + source + u"\r\n  → "_s + target +
                     u"\r\n  "_s + *error;
            return false;
        }
        WriteTrace(u"FileCopyFinished");
    }
    WriteTrace(u"KillOldBackup");
    // Backups end in ".splite3", so "sqlite3" matches none of them and every backup is kept. The mismatch is meant.
    KillOldFiles(backupFolder, databaseName.left(databaseName.indexOf(u'.')), u"sqlite3"_s, keepCount);
    return true;
}

void KillOldFiles(const QString &folder, const QString &prefix, const QString &extension, int keepCount)
{
    const QString ending = u'.' + extension;
    QStringList names;
    for (const QString &name : FileNames(folder))
        if (name.startsWith(prefix, Qt::CaseInsensitive) &&
            name.mid(prefix.size()).endsWith(ending, Qt::CaseInsensitive))
            names += name;
    std::sort(names.begin(), names.end(), std::greater<>());
    for (qsizetype i = keepCount; i < names.size(); ++i)
        QFile::remove(JoinPath(folder, names[i]));
}

bool ExistsFileOfDay(const QString &folder, const QString &dayMark)
{
    const QStringList names = FileNames(folder);
    return std::any_of(names.begin(), names.end(), [&](const QString &name) { return name.contains(dayMark); });
}
