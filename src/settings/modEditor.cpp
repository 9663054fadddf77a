// SPDX-FileCopyrightText: 2026 The Kotoban developers
// SPDX-License-Identifier: MIT

#include "settings/modEditor.h"

#include <QRegularExpression>

using namespace Qt::Literals::StringLiterals;

namespace {

/// A file name in quotes. A quote inside it, possible on systems other than Windows, is escaped with a backslash, and
/// backslashes before that are doubled.
QString Quoted(const QString &file)
{
    static const QRegularExpression quote(u"(\\\\*)\""_s);
    return u'"' + QString(file).replace(quote, u"\\1\\1\\\""_s) + u'"';
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

void OpenInEditor(SystemServices &services, const QString &editor, const QString &file, int line)
{
    StartOrReport(services, EditorCommandLine(editor, file, line));
}

void StartOrReport(SystemServices &services, const QString &commandLine)
{
    if (!services.StartCommandLine(commandLine))
        services.ShowMessage(u"次のコマンドを起動できません。\r\n  "_s + commandLine);
}
