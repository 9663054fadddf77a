#include "settings/modEditor.h"

using namespace Qt::Literals::StringLiterals;

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
    const QString quotedFile = u" \""_s + file + u'"';
    for (const KnownEditor &known : knownEditors)
        if (editor.contains(known.name, Qt::CaseInsensitive))
            return editor + known.lineOption + QString::number(line) + quotedFile;
    return editor + quotedFile;
}

void OpenInEditor(Desktop &desktop, const QString &editor, const QString &file, int line)
{
    StartOrReport(desktop, EditorCommandLine(editor, file, line));
}

void StartOrReport(Desktop &desktop, const QString &commandLine)
{
    if (!desktop.StartCommandLine(commandLine))
        desktop.ShowMessage(u"次のコマンドを起動できません。\r\n  "_s + commandLine);
}
