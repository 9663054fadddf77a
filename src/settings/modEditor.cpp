// SPDX-FileCopyrightText: 2026 The Kotoban developers
// SPDX-License-Identifier: MIT

#include "settings/modEditor.h"

#include "base/modFile.h"
#include "platform/modCommandLine.h"
#include "platform/modProcess.h"

#include <QDir>
#include <QFileInfo>
#include <QRegularExpression>

#include <filesystem>
#include <system_error>

using namespace Qt::Literals::StringLiterals;

namespace {

/// A file name in quotes. A quote inside it, possible on systems other than Windows, is escaped with a backslash, and
/// backslashes before that are doubled.
QString Quoted(const QString &file)
{
    static const QRegularExpression quote(u"(\\\\*)\""_s);
    return u'"' + QString(file).replace(quote, u"\\1\\1\\\""_s) + u'"';
}

/// Whether a program runs files as scripts or starts other programs, by its name. Windows ignores blanks and dots at
/// the end of a name, and starts the same program if the name of a stream follows after a colon.
bool IsScriptHost(const QString &path)
{
    static const QRegularExpression host(
        uR"(^(sh|ash|bash|dash|ksh|mksh|zsh|csh|tcsh|fish|busybox|cmd|powershell|pwsh)"
        uR"(|pythonw?|w?perl|tclsh|wish|node|ruby|php|lua|osascript|wscript|cscript|mshta|rundll32)"
        uR"(|env|nohup|setsid|nice|timeout|xargs|stdbuf)"
        uR"()([-_]?\d[\d._]*[a-z]?(-\w[\w-]*)?)?(-(preview|lts|static|dbg))?(\.exe)?$)"_s,
        QRegularExpression::CaseInsensitiveOption);
    constexpr qsizetype longestName = 255; // that a file system allows, in characters
    const qsizetype slash = qMax(path.lastIndexOf(u'/'), path.lastIndexOf(u'\\'));
    for (QStringView name : QStringView(path).sliced(slash + 1).tokenize(u':')) {
        while (name.endsWith(u' ') || name.endsWith(u'.'))
            name.chop(1);
        if (name.size() <= longestName && host.match(name.toString()).hasMatch())
            return true;
    }
    return false;
}

/// The folder for data that a file lies in, at any depth; empty if it lies in none. Folders are compared by identity,
/// because a path may differ in case, come through a link or a mounted drive.
QString DataFolderOf(const QString &path, const QString &applicationFolder)
{
    static const QString names[] = {u"txt"_s, u"db"_s, u"db_backup"_s, u"rec"_s, u"wav"_s, u"htm"_s, u"log"_s};
    QString below = path;
    for (QString folder = QFileInfo(path).path(); folder != below; folder = QFileInfo(folder).path()) {
        for (const QString &name : names) {
            std::error_code isMissing;
            if (std::filesystem::equivalent(QFileInfo(folder).filesystemFilePath(),
                                            QFileInfo(JoinPath(applicationFolder, name)).filesystemFilePath(),
                                            isMissing))
                return name;
        }
        below = folder;
    }
    return QString();
}

QString RefusalMessage(const QString &program, const QString &reason)
{
    return u"次のプログラムはテキストエディタとして使えません。\r\n  "_s + QDir::toNativeSeparators(program) +
           u"\r\n\r\n"_s + reason + u"\r\n設定画面で別のテキストエディタを指定してください。"_s;
}

void StartOrReport(SystemServices &services, const QString &commandLine, const QString &applicationFolder)
{
    const QString refusal = EditorRefusal(commandLine, applicationFolder);
    if (!refusal.isEmpty())
        services.ShowMessage(refusal);
    else if (!services.StartCommandLine(commandLine))
        services.ShowMessage(u"次のコマンドを起動できません。\r\n  "_s + commandLine);
}

} // namespace

QString EditorCommandLine(const QString &editor, const QString &file, int line)
{
    struct KnownEditor
    {
        QStringView name;
        QStringView lineOption;
    };
    static constexpr KnownEditor knownEditors[] = {
        {u"hidemaru.exe", u" /j"},
        {u"sakura.exe", u" -Y="},
        {u"terapad.exe", u" /j="},
    };
    const QString quotedFile = u' ' + Quoted(file);
    for (const KnownEditor &known : knownEditors)
        if (editor.contains(known.name, Qt::CaseInsensitive))
            return editor + known.lineOption + QString::number(line) + quotedFile;
    return editor + quotedFile;
}

QString EditorRefusal(const QString &commandLine, const QString &applicationFolder)
{
    const QString program = ProgramOf(commandLine);
    if (program.size() > LongestProgramPath)
        return RefusalMessage(program.left(LongestProgramPath), u"パスが長すぎます。"_s);
    const QString written = QDir::cleanPath(program);
    const QString file = QFileInfo(program).canonicalFilePath();
    QString folder = DataFolderOf(written, applicationFolder);
    if (folder.isEmpty())
        folder = DataFolderOf(file, applicationFolder);
    if (!folder.isEmpty())
        return RefusalMessage(
            program,
            folder + u"フォルダは学習ファイルや記録などを置く場所なので，そこにあるプログラムは起動しません。"_s);
    if (IsScriptHost(program) || IsScriptHost(file))
        return RefusalMessage(program, u"開いたファイルの中身を命令として実行するおそれがあるため，"
                                       u"シェルやスクリプトを実行するプログラムは起動しません。"_s);
    return QString();
}

void OpenInEditor(SystemServices &services, const Editor &editor, const QString &file, int line)
{
    StartOrReport(services, EditorCommandLine(editor.program, file, line), editor.applicationFolder);
}

void TryEditor(SystemServices &services, const Editor &editor)
{
    StartOrReport(services, editor.program, editor.applicationFolder);
}
