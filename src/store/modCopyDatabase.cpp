// SPDX-FileCopyrightText: 2026 The Kotoban developers
// SPDX-License-Identifier: MIT

#include "store/modCopyDatabase.h"

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
    // No name filters: Qt matches them with regular expressions, whose library start-up does not need otherwise.
    for (const QString &name : QDir(folder).entryList(QDir::Files | QDir::Hidden, QDir::NoSort)) {
        const QStringView whole = name;
        const QStringView stem = whole.size() > 7 && whole[whole.size() - 7] == u'.' ? whole.chopped(7) : whole;
        for (const QStringView ending : {QStringView(), JournalEnding, LogEnding, LogIndexEnding})
            if (const QString unfinished = UnfinishedName + ending; unfinished == whole || unfinished == stem)
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
FileFault CopyAndFinish(const QString &source, const QString &copy)
{
    // Without the rights of the user who runs the program, which Qt reports as well and would give to the owner.
    const QFile::Permissions permissions =
        QFile::permissions(source) & ~(QFile::ReadUser | QFile::WriteUser | QFile::ExeUser);
    // From the beginning, so that nobody reads the copy of a private record; but SQLite must be able to write to it.
    const QFile::Permissions whileCopying = permissions | QFile::ReadOwner | QFile::WriteOwner;
    if (FileFault fault = CopyWholeFile(source, copy, whileCopying))
        return fault;
    bool isAlone = true;
    for (const QStringView ending : {JournalEnding, LogEnding}) {
        const QString beside = source + ending;
        if (!QFileInfo::exists(beside))
            continue;
        isAlone = false;
        if (FileFault fault = CopyWholeFile(beside, copy + ending, whileCopying))
            return fault;
    }
    const int result = isAlone ? SQLITE_OK : FinishWrites(copy);
    QFile::setPermissions(copy, permissions);
    if (result == SQLITE_OK || result == SQLITE_NOTADB || result == SQLITE_CORRUPT)
        return {};
    return {source, u"書きかけの記録を取り込めません。（SQLite "_s + QString::number(result) + u'）'};
}

} // namespace

bool LacksDatabase(const QString &path)
{
    const QFileInfo file(path);
    return !file.exists() || (file.isFile() && file.size() == 0);
}

NewDatabase::NewDatabase(const QString &target)
    : m_target(target), m_folder(QFileInfo(target).path()), m_path(JoinPath(m_folder, UnfinishedName.toString()))
{
    RemoveUnfinished(m_folder);
}

NewDatabase::~NewDatabase()
{
    RemoveUnfinished(m_folder); // once it is complete, at most its journal
}

FileFault NewDatabase::Finish()
{
    // SQLite would apply to the new database what it finds beside it.
    for (const QStringView ending : {JournalEnding, LogEnding, LogIndexEnding})
        QFile::remove(m_target + ending);
    if (LacksDatabase(m_target))
        QFile::remove(m_target);
    QFile file(m_path);
    if (!file.rename(m_target))
        return {m_target, file.errorString()};
    SyncFolder(m_folder);
    return {};
}

FileFault CopyDatabase(const QString &source, const QString &target)
{
    NewDatabase copy(target);
    if (FileFault fault = CopyAndFinish(source, copy.Path()))
        return fault;
    return copy.Finish();
}
