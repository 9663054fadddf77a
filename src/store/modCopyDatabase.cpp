// SPDX-FileCopyrightText: 2026 The Kotoban developers
// SPDX-License-Identifier: MIT

#include "store/modCopyDatabase.h"

#include "base/modFile.h"
#include "platform/modFolderSync.h"
#include "platform/modReplaceFile.h"
#include "store/Sqlite3.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

#include <sqlite3.h>

using namespace Qt::Literals::StringLiterals;

namespace {

// SQLite's suffixes for the files beside a database: rollback journal, write-ahead log and the log's index.
constexpr QStringView JournalEnding = u"-journal";
constexpr QStringView LogEnding = u"-wal";
constexpr QStringView LogIndexEnding = u"-shm";

constexpr QStringView UnfinishedName = u"unfinished.copy"; // temporary name; has no date, so is not taken for a backup

/// Removes the leftovers of interrupted writes, including temporary files, which have a dot and six letters appended.
void RemoveUnfinished(const QString &folder)
{
    const auto isUnfinished = [](QStringView name, QStringView ending) {
        return name.startsWith(ending) &&
               (name.size() == ending.size() || (name.size() == ending.size() + 7 && name[ending.size()] == u'.'));
    };
    // No name filters: Qt matches them with regular expressions, whose library start-up does not need otherwise.
    for (const QString &name : QDir(folder).entryList(QDir::Files | QDir::Hidden, QDir::NoSort)) {
        const QStringView rest = QStringView(name).mid(UnfinishedName.size());
        if (name.startsWith(UnfinishedName) &&
            (isUnfinished(rest, QStringView()) || isUnfinished(rest, JournalEnding) || isUnfinished(rest, LogEnding) ||
             isUnfinished(rest, LogIndexEnding)))
            QFile::remove(JoinPath(folder, name));
    }
}

/// Makes SQLite roll back the transaction in a database's journal, or apply the write-ahead log.
/// @return SQLite's result code; 0 if the database file is now complete by itself
int FinishWrites(const QString &database)
{
    sqlite3 *handle = nullptr;
    SQLite3Statement statement;
    int result = SQLite3Open(database, &handle);
    if (result == SQLITE_OK)
        result = SQLite3Prepare16V2(handle, u"pragma journal_mode=delete"_s, statement.Address());
    if (result == SQLITE_OK && SQLite3Step(statement) == SQLITE_ROW)
        result = SQLite3ColumnText(statement, 0) == "delete" ? SQLITE_OK : SQLITE_BUSY;
    const int finalized = statement.Finalize();
    SQLite3Close(handle);
    return result == SQLITE_OK ? finalized : result;
}

/// Copies a database with its journal or log, and merges the copy into a single file.
bool CopyAndFinish(const QString &source, const QString &copy, QString *error)
{
    // Without the rights of the user who runs the program, which Qt reports as well and would give to the owner.
    const QFile::Permissions permissions =
        QFile::permissions(source) & ~(QFile::ReadUser | QFile::WriteUser | QFile::ExeUser);
    // From the beginning, so that nobody reads the copy of a private record; but SQLite must be able to write to it.
    const QFile::Permissions whileCopying = permissions | QFile::ReadOwner | QFile::WriteOwner;
    if (!CopyWholeFile(source, copy, error, whileCopying))
        return false;
    bool isAlone = true;
    for (const QStringView ending : {JournalEnding, LogEnding}) {
        const QString beside = source + ending;
        if (!QFileInfo::exists(beside))
            continue;
        isAlone = false;
        if (!CopyWholeFile(beside, copy + ending, error, whileCopying))
            return false;
    }
    const int result = isAlone ? SQLITE_OK : FinishWrites(copy);
    QFile::setPermissions(copy, permissions);
    if (result == SQLITE_OK || result == SQLITE_NOTADB || result == SQLITE_CORRUPT)
        return true;
    *error = u"書きかけの記録を取り込めません。（SQLite "_s + QString::number(result) + u'）';
    return false;
}

} // namespace

bool LacksDatabase(const QString &path)
{
    const QFileInfo file(path);
    return !file.exists() || (file.isFile() && file.size() == 0);
}

bool WriteDatabase(const QString &target, const std::function<bool(const QString &)> &write, QString *error)
{
    const QString folder = QFileInfo(target).path();
    const QString unfinished = JoinPath(folder, UnfinishedName.toString());
    RemoveUnfinished(folder);
    error->clear();
    bool isGood = write(unfinished);
    if (isGood) {
        // SQLite would apply to the new database what it finds beside it.
        for (const QStringView ending : {JournalEnding, LogEnding, LogIndexEnding})
            QFile::remove(target + ending);
        if (LacksDatabase(target))
            QFile::remove(target);
        QFile file(unfinished);
        isGood = file.rename(target);
        if (!isGood)
            *error = file.errorString();
    }
    RemoveUnfinished(folder); // after a failure, the file itself; otherwise at most its journal
    if (isGood)
        SyncFolder(folder);
    return isGood;
}

bool CopyDatabase(const QString &source, const QString &target, QString *error)
{
    return WriteDatabase(
        target, [&](const QString &copy) { return CopyAndFinish(source, copy, error); }, error);
}
