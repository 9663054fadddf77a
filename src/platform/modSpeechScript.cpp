#include "platform/modSpeechScript.h"

#include "platform/modCodePage.h"

#include <algorithm>

using namespace Qt::Literals::StringLiterals;

QString SpokenText(const QByteArray &script)
{
    const QString head = u"var tts = WScript.CreateObject(\"SAPI.SpVoice\");\r\ntts.Speak(\""_s;
    const QString tail = u"\");\r\n"_s;
    const QString text = FromCodePage932(script);
    if (!text.startsWith(head) || !text.endsWith(tail) || text.size() < head.size() + tail.size())
        return QString();
    return text.sliced(head.size(), text.size() - head.size() - tail.size());
}

QStringList SpeechArguments(const QString &text, const QString &languageOption)
{
    const bool isJapanese = std::any_of(text.begin(), text.end(), [](QChar character) {
        const QChar::Script script = character.script();
        return script == QChar::Script_Han || script == QChar::Script_Hiragana || script == QChar::Script_Katakana;
    });
    return {languageOption, isJapanese ? u"ja"_s : u"en"_s, u"--"_s, text};
}
