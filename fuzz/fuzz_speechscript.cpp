// The speech script: what is spoken of a word's own script is the word, whatever it is, and any other bytes are
// harmless.
#include "input.h"
#include "platform/modCodePage.h"
#include "platform/modSpeechScript.h"
#include "require.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    const QByteArray bytes = FuzzInput(data, size).TakeRest();
    SpokenText(bytes);
    const QByteArray script = "var tts = WScript.CreateObject(\"SAPI.SpVoice\");\r\ntts.Speak(\"" + bytes + "\");\r\n";
    // A word that ends in half a character takes the script's own next byte to it, and then it is no script any more.
    const QString word = FromCodePage932(bytes);
    const QString spoken = SpokenText(script);
    Require(spoken == word || (spoken.isEmpty() && !FromCodePage932(script).endsWith(u"\");\r\n")));
    const QStringList arguments = SpeechArguments(word, QStringLiteral("-l"));
    Require(arguments.size() == 4 && arguments[2] == u"--" && arguments[3] == word);
    return 0;
}
