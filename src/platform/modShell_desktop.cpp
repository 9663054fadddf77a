#include "platform/modFile.h"
#include "platform/modShell.h"
#include "platform/modSpeechScript.h"

#include <QDir>
#include <QProcess>
#include <QStandardPaths>

using namespace Qt::Literals::StringLiterals;

namespace {

// There is no script host here, and a script must start nothing but the voice: it is read, not run.
bool SpeakScript(const QString &path)
{
    QByteArray script;
    QString error;
    if (!ReadWholeFile(path, &script, &error))
        return false;
    const QString text = SpokenText(script);
    if (text.isEmpty())
        return false;
    if (!QStandardPaths::findExecutable(u"spd-say"_s).isEmpty())
        return QProcess::startDetached(u"spd-say"_s, SpeechArguments(text, u"-l"_s));
    return QProcess::startDetached(u"espeak-ng"_s, SpeechArguments(text, u"-v"_s));
}

} // namespace

bool ShellOpen(const QString &path, const QString &workingFolder)
{
    if (path.endsWith(u".js"))
        return SpeakScript(path);
    const QString folder = QDir(workingFolder).exists() ? workingFolder : QDir::rootPath();
    return QProcess::startDetached(u"xdg-open"_s, {path}, folder);
}
