// SPDX-FileCopyrightText: 2026 The Kotoban developers
// SPDX-License-Identifier: MIT

#include "settings/modSpeech.h"

#include "base/modCodePage.h"
#include "base/modFile.h"
#include "platform/modReplaceFile.h"

#include <tuple>

using namespace Qt::Literals::StringLiterals;

// The script is written for users who want to keep or run it themselves, but the program never runs it: the word is not
// escaped, study files are shared, and a word such as "+new ActiveXObject("WScript.Shell")... would start a program.
// The voice gets the word itself.
void SpeakWord(SystemServices &services, const QString &applicationFolder, const QString &word)
{
    const QString script =
        u"var tts = WScript.CreateObject(\"SAPI.SpVoice\");\r\ntts.Speak(\""_s + word + u"\");\r\n"_s;
    const QString path = JoinPath(applicationFolder, u"speak.js"_s);
    // The voice does not need it, and nobody misses it after a power cut.
    std::ignore = ReplaceFile(path, ToCodePage932(script), OnDisk::Later);
    services.Speak(word);
}
