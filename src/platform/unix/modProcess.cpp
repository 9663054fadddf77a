#include "platform/modProcess.h"

#include "platform/modCommandLine.h"

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

/// The first installed plain-text editor of the usual desktops; empty if there is none.
QString FindTextEditor()
{
    for (const QString &name : {u"gnome-text-editor"_s, u"gedit"_s, u"kate"_s, u"kwrite"_s, u"mousepad"_s, u"xed"_s,
                                u"pluma"_s, u"featherpad"_s, u"leafpad"_s, u"l3afpad"_s, u"xedit"_s}) {
        const QString program = QStandardPaths::findExecutable(name);
        if (!program.isEmpty())
            return program;
    }
    return QString();
}

/// Whether the desktop has a default program for plain text. Without one xdg-open fails silently.
bool HasTextHandler()
{
    constexpr int timeoutMs = 3000;
    QProcess query;
    query.start(u"xdg-mime"_s, {u"query"_s, u"default"_s, u"text/plain"_s}, QProcess::ReadOnly);
    return query.waitForFinished(timeoutMs) && !query.readAllStandardOutput().trimmed().isEmpty();
}

// A file is opened with the editor that the user has chosen on the desktop. Desktops offer no way to start that editor
// without a file.
bool StartTextEditor(const QStringList &files)
{
    if (!files.isEmpty() && HasTextHandler() && QProcess::startDetached(u"xdg-open"_s, files))
        return true;
    const QString editor = FindTextEditor();
    return !editor.isEmpty() && QProcess::startDetached(editor, files);
}

} // namespace

bool StartProcess(const QString &commandLine)
{
    const CommandLine command = ParseCommandLine(commandLine, IsProgram);
    if (command.program.isEmpty())
        return false;
    if (IsNotepad(command.program))
        return StartTextEditor(command.arguments);
    return QProcess::startDetached(command.program, command.arguments);
}
