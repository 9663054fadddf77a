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

/// A plain-text editor of one of the desktops; empty when none is installed.
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

/// Whether the desktop has a program for plain text. Without one xdg-open does nothing, and nobody is told.
bool HasTextHandler()
{
    constexpr int patienceMs = 3000;
    QProcess query;
    query.start(u"xdg-mime"_s, {u"query"_s, u"default"_s, u"text/plain"_s}, QProcess::ReadOnly);
    return query.waitForFinished(patienceMs) && !query.readAllStandardOutput().trimmed().isEmpty();
}

// With a file, the desktop itself knows which editor the user has chosen for plain text; without one, it has no word
// for "that editor alone".
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
