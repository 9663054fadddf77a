// SPDX-FileCopyrightText: 2026 The Kotoban developers
// SPDX-License-Identifier: MIT

#include "files/modTakeFiles.h"

#include "base/modFile.h"
#include "base/modParagraph.h"
#include "platform/modReplaceFile.h"

#include <QDeadlineTimer>
#include <QDir>
#include <QFileInfo>
#include <QSet>

using namespace Qt::Literals::StringLiterals;

namespace {

bool IsTextOrPicture(const QString &name)
{
    static const QStringList suffixes = {u"txt"_s, u"png"_s, u"jpg"_s, u"jpeg"_s, u"gif"_s, u"bmp"_s};
    return suffixes.contains(QFileInfo(name).suffix().toLower());
}

QString NameOf(const QString &path)
{
    return QFileInfo(path).fileName();
}

/// The name as it appears in a message.
QString ShownName(const QString &path)
{
    return NameInLine(NameOf(path));
}

/// Copies a file. @param kept  as in ReplaceAndKeep
FileFault Copy(const QString &path, const QString &target, OldFiles oldFiles, QString *kept)
{
    QByteArray bytes;
    if (oldFiles == OldFiles::Keep && QFileInfo(target).size() > MaxFileBytes)
        return {target, u"元のファイルが大きすぎるので，置き換えません。"_s};
    if (FileFault fault = ReadWholeFile(path, &bytes))
        return fault;
    return oldFiles == OldFiles::Keep ? ReplaceAndKeep(target, bytes, kept) : ReplaceFile(target, bytes);
}

/// Sorts single files into a FilesToTake.
class Sorting
{
  public:
    Sorting(const QString &folder, FilesToTake *files)
        : m_folder(folder), m_canonical(QFileInfo(folder).canonicalFilePath()), m_files(files)
    {
    }

    void Add(const QFileInfo &file)
    {
        Enter(file.path());
        ListFor(file) += file.filePath();
    }

    /// @param file  in a dropped folder: nobody has looked at where a link in it leads
    void AddUnseen(const QFileInfo &file)
    {
        Enter(file.path());
        (LeadsElsewhere(file, m_enteredCanonical) ? m_files->linked : ListFor(file)) += file.filePath();
    }

  private:
    /// Finds out where a folder really is, once for all its files.
    void Enter(const QString &path)
    {
        if (path == m_entered)
            return;
        m_entered = path;
        m_enteredCanonical = QFileInfo(path).canonicalFilePath();
    }

    QStringList &ListFor(const QFileInfo &file)
    {
        const bool isTable = IsTable(file.filePath());
        if (!isTable && !IsTextOrPicture(file.filePath()))
            return m_files->foreign;
        if (file.size() > MaxFileBytes)
            return m_files->tooLarge;
        if (isTable)
            return m_files->tables;
        if (m_enteredCanonical == m_canonical)
            return m_files->present;
        const QString name = file.fileName().toLower(); // because some file systems ignore case
        if (m_seen.contains(name))
            return m_files->twins;
        m_seen.insert(name);
        return QFileInfo::exists(JoinPath(m_folder, file.fileName())) ? m_files->replaced : m_files->fresh;
    }

    QString m_folder;
    QString m_canonical;
    FilesToTake *m_files;
    QString m_entered; // folder of the file added last
    QString m_enteredCanonical;
    QSet<QString> m_seen; // names
};

} // namespace

QStringList ShownNames(const QStringList &paths)
{
    QStringList names;
    for (const QString &path : paths)
        names += ShownName(path);
    return names;
}

bool IsTable(const QString &path)
{
    static const QStringList suffixes = {u"csv"_s, u"tsv"_s, u"tab"_s};
    return suffixes.contains(QFileInfo(path).suffix().toLower());
}

bool LeadsElsewhere(const QFileInfo &file, const QString &canonicalFolder)
{
    return file.isSymLink() && QFileInfo(file.canonicalFilePath()).path() != canonicalFolder;
}

FilesToTake SortFilesToTake(const QStringList &paths, const QString &folder)
{
    FilesToTake files;
    Sorting sorting(folder, &files);
    for (const QString &path : paths) {
        const QFileInfo info(path);
        if (!info.isDir()) {
            sorting.Add(info);
            continue;
        }
        // Folders below are left out: who drops a large tree would wait for what the list cannot show apart.
        const auto all = QDir::Files | QDir::Dirs | QDir::System | QDir::NoDotAndDotDot;
        for (const QFileInfo &entry : QDir(path).entryInfoList(all, QDir::Name)) {
            if (entry.isDir())
                files.nested += entry.filePath();
            else
                sorting.AddUnseen(entry);
        }
    }
    return files;
}

bool FilesToTake::LeavesOut() const
{
    return !foreign.isEmpty() || !tooLarge.isEmpty() || !present.isEmpty() || !twins.isEmpty() || !nested.isEmpty() ||
           !linked.isEmpty() || !declined.isEmpty();
}

bool IsInFolder(const QString &path, const QString &folder)
{
    const QString there = JoinPath(folder, NameOf(path));
    QByteArray bytes;
    QByteArray bytesThere;
    return QFileInfo(path).size() == QFileInfo(there).size() && !ReadWholeFile(path, &bytes) &&
           !ReadWholeFile(there, &bytesThere) && bytes == bytesThere;
}

FileTaking::FileTaking(const QStringList &paths, const QString &folder, OldFiles oldFiles)
    : m_paths(paths), m_folder(folder), m_oldFiles(oldFiles)
{
}

bool FileTaking::GoOn(const QDeadlineTimer &deadline)
{
    while (m_next < m_paths.size()) {
        Take(m_paths[m_next++]);
        if (deadline.hasExpired())
            break;
    }
    return m_next < m_paths.size();
}

double FileTaking::Done() const
{
    return m_paths.isEmpty() ? 1 : double(m_next) / double(m_paths.size());
}

void FileTaking::Take(const QString &path)
{
    const QString name = NameOf(path);
    QString kept;
    if (const FileFault fault = Copy(path, JoinPath(m_folder, name), m_oldFiles, &kept)) {
        m_failures += ShownName(path) + u"："_s + fault.reason;
        return;
    }
    m_copied += name;
    if (!kept.isEmpty())
        m_kept += ShownName(path) + u" → "_s + ShownName(kept);
}

QString ReplaceTakenQuestion(const QStringList &replaced)
{
    return u"学習ファイルのフォルダに，同じ名前のファイルがあります。"_s + Indented(ShownNames(replaced)) +
           u"\r\n\r\n置き換えますか？（元のファイルは「….bak」として残します。\r\n"
           u"「いいえ」を押すと，ないものだけをコピーします。）"_s;
}

QString TakenMessage(const FilesToTake &files, const FileTaking &taking)
{
    const qsizetype copied = taking.Copied().size();
    QString message = copied > 0 ? QString::number(copied) + u"個のファイルを学習ファイルのフォルダにコピーしました。"_s
                                 : u"コピーしたファイルはありません。"_s;
    message += Indented(ShownNames(taking.Copied()));
    message += Paragraph(u"置き換える前のファイルは，次の名前で残しました。", taking.Kept());
    message += Paragraph(u"同じ名前のファイルがあるため，コピーしませんでした。", ShownNames(files.declined));
    message += Paragraph(u"中止したため，コピーしませんでした。", ShownNames(taking.Left()));
    message += Paragraph(u"コピーできません。", taking.Failures());
    message += Paragraph(QString(QString::number(MaxFileMegabytes) + u"MBを超えるため，コピーしません。"_s),
                         ShownNames(files.tooLarge));
    message += Paragraph(u"学習ファイル（.txt）と画像（.png .jpg .jpeg .gif .bmp）ではないため，コピーしません。",
                         ShownNames(files.foreign));
    message += Paragraph(u"同じ名前のファイルが二つ以上あるため，初めの一つだけにします。", ShownNames(files.twins));
    message += Paragraph(u"もう学習ファイルのフォルダにあるファイルです。", ShownNames(files.present));
    message += Paragraph(u"フォルダの中のフォルダは，コピーしません。", ShownNames(files.nested));
    message += Paragraph(u"ほかのフォルダを指すリンクのため，コピーしません。", ShownNames(files.linked));
    return message + Paragraph(u"次の表から，学習ファイルを作りますか？", ShownNames(files.tables));
}
