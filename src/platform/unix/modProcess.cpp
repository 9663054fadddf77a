// SPDX-FileCopyrightText: 2026 The Kotoban developers
// SPDX-License-Identifier: MIT

#include "platform/modProcess.h"

#include "platform/modCommandLine.h"
#include "platform/unix/modWatchedStart.h"

#include <QDir>
#include <QFileInfo>
#include <QProcess>
#include <QStandardPaths>

using namespace Qt::Literals::StringLiterals;

namespace {

bool IsNotepad(const QString &program)
{
    return program.compare(u"notepad.exe", Qt::CaseInsensitive) == 0;
}

bool IsProgram(const QString &name)
{
    return IsNotepad(name) || ProgramExists(name);
}

/// The first installed editor that opens a file in code page 932 correctly and keeps its encoding when saving; empty if
/// there is none.
QString FindFittingEditor()
{
    return FirstInstalled({u"gedit"_s, u"kate"_s, u"kwrite"_s, u"l3afpad"_s});
}

/// The first installed plain-text editor of the usual desktops; empty if there is none.
QString FindTextEditor()
{
    const QString fitting = FindFittingEditor();
    return !fitting.isEmpty() ? fitting
                              : FirstInstalled({u"gnome-text-editor"_s, u"featherpad"_s, u"xed"_s, u"leafpad"_s,
                                                u"mousepad"_s, u"pluma"_s, u"xedit"_s});
}

/// The desktop's default program for plain text; empty if there is none. Without one xdg-open fails silently.
QString TextHandler()
{
    constexpr int timeoutMs = 3000;
    QProcess query;
    query.start(u"xdg-mime"_s, {u"query"_s, u"default"_s, u"text/plain"_s}, QProcess::ReadOnly);
    return query.waitForFinished(timeoutMs) ? QString::fromLocal8Bit(query.readAllStandardOutput()).trimmed()
                                            : QString();
}

/// Whether a default program for plain text is known to spoil study files: it detects the wrong encoding, or saves them
/// in UTF-8.
bool SpoilsStudyFiles(const QString &handler)
{
    for (const QStringView name : {u"mousepad", u"geany", u"pluma", u"featherpad", u"org.gnome.TextEditor"})
        if (handler.contains(name, Qt::CaseInsensitive))
            return true;
    return false;
}

// A file is opened with the desktop's default editor, unless it spoils study files and a fitting one is installed: such
// a default is rarely the user's choice. Desktops offer no way to start the default editor without a file.
bool StartTextEditor(const QStringList &files, const StartFailed &failed)
{
    const auto tell = [failed] { failed(u"テキストエディタ（gedit，Kate など）をインストールしてください。"_s); };
    const QString handler = files.isEmpty() ? QString() : TextHandler();
    const bool isHandlerWanted = !handler.isEmpty() && (!SpoilsStudyFiles(handler) || FindFittingEditor().isEmpty());
    if (isHandlerWanted && StartWatched(u"xdg-open"_s, files, QString(), tell))
        return true;
    const QString editor = FindTextEditor();
    return !editor.isEmpty() && StartWatched(editor, files, QString(), tell);
}

} // namespace

bool StartProcess(const QString &commandLine, const StartFailed &failed)
{
    const CommandLine command = ParseCommandLine(commandLine, IsProgram);
    if (command.program.isEmpty())
        return false;
    if (IsNotepad(command.program))
        return StartTextEditor(command.arguments, failed);
    return QProcess::startDetached(command.program, command.arguments);
}

bool ShellOpen(const QString &path, const QString &workingFolder, const StartFailed &failed)
{
    const QString folder = QDir(workingFolder).exists() ? workingFolder : QDir::rootPath();
    return StartWatched(u"xdg-open"_s, {path}, folder, [path, failed] {
        failed(QFileInfo(path).isDir() ? u"ファイルマネージャー（PCManFM など）をインストールしてください。"_s
                                       : u"ブラウザ（Firefox など）をインストールしてください。"_s);
    });
}

// A name without a slash is found on the search path only, even if a file in the working folder bears it.
QString ProgramOf(const QString &commandLine)
{
    const QString program = ParseCommandLine(commandLine, IsProgram).program;
    if (program.isEmpty() || IsNotepad(program))
        return QString();
    return program.contains(u'/') ? QFileInfo(program).absoluteFilePath() : QStandardPaths::findExecutable(program);
}
