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

// SQLite's names for what a write under way has beside a database, and for what it makes while it reads a log.
constexpr QStringView JournalEnding = u"-journal";
constexpr QStringView LogEnding = u"-wal";
constexpr QStringView LogIndexEnding = u"-shm";

constexpr QStringView UnfinishedCopy = u"unfinished.copy"; // a copy's name before it is whole; it bears no day

/// Removes what a copying that was cut off has left: its copies, also half ones, which have a dot and six letters more.
void RemoveUnfinishedCopies(const QString &folder)
{
    const auto isUnfinished = [](QStringView name, QStringView ending) {
        return name.startsWith(ending) &&
               (name.size() == ending.size() || (name.size() == ending.size() + 7 && name[ending.size()] == u'.'));
    };
    // Not by patterns: they are regular expressions, whose library nothing else at the start needs.
    for (const QString &name : QDir(folder).entryList(QDir::Files | QDir::Hidden, QDir::NoSort)) {
        const QStringView rest = QStringView(name).mid(UnfinishedCopy.size());
        if (name.startsWith(UnfinishedCopy) &&
            (isUnfinished(rest, QStringView()) || isUnfinished(rest, JournalEnding) || isUnfinished(rest, LogEnding) ||
             isUnfinished(rest, LogIndexEnding)))
            QFile::remove(JoinPath(folder, name));
    }
}

/// Has SQLite take back the write that a journal beside a database tells of, or carry out those of a log.
/// @return SQLite's result code, 0 when the database needs neither any more
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

/// Copies a database and what lies beside it, and makes the copy one file.
bool CopyAndFinish(const QString &source, const QString &copy, QString *error)
{
    if (!CopyWholeFile(source, copy, error))
        return false;
    bool isAlone = true;
    for (const QStringView ending : {JournalEnding, LogEnding}) {
        const QString beside = source + ending;
        if (!QFileInfo::exists(beside))
            continue;
        isAlone = false;
        if (!CopyWholeFile(beside, copy + ending, error))
            return false;
    }
    const int result = isAlone ? SQLITE_OK : FinishWrites(copy);
    if (result == SQLITE_OK || result == SQLITE_NOTADB || result == SQLITE_CORRUPT)
        return true;
    *error = u"書きかけの記録を取り込めません。（SQLite "_s + QString::number(result) + u'）';
    return false;
}

} // namespace

bool CopyDatabase(const QString &source, const QString &target, QString *error)
{
    // Under its own name the copy is there whole or not at all.
    const QString folder = QFileInfo(target).path();
    const QString copy = JoinPath(folder, UnfinishedCopy.toString());
    RemoveUnfinishedCopies(folder);
    bool isGood = CopyAndFinish(source, copy, error);
    QFile file(copy);
    if (isGood && !file.rename(target)) {
        *error = file.errorString();
        isGood = false;
    }
    RemoveUnfinishedCopies(folder); // after a failure the copy itself, else at most a journal that belonged to it
    if (isGood)
        SyncFolder(folder);
    return isGood;
}
