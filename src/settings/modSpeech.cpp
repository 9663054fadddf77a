#include "settings/modSpeech.h"

#include "platform/modCodePage.h"
#include "platform/modFile.h"

using namespace Qt::Literals::StringLiterals;

// A word with a double quote or a backslash makes the script invalid or changes what is spoken. That is accepted.
void SpeakWord(Desktop &desktop, const QString &applicationFolder, const QString &word)
{
    const QString script =
        u"var tts = WScript.CreateObject(\"SAPI.SpVoice\");\r\ntts.Speak(\""_s + word + u"\");\r\n"_s;
    const QString path = JoinPath(applicationFolder, u"speak.js"_s);
    QString error;
    if (ReplaceFile(path, ToCodePage932(script), &error))
        desktop.OpenWithShell(path, u"c:\\"_s);
}
