// SPDX-FileCopyrightText: 2026 The Kotoban developers
// SPDX-License-Identifier: MIT

#include "platform/modVoice.h"

#include <QProcess>
#include <QStandardPaths>

#include <algorithm>

using namespace Qt::Literals::StringLiterals;

namespace {

/// Language of the voice: Japanese for a text with kana or kanji, else English.
QString LanguageOf(const QString &text)
{
    const bool isJapanese = std::any_of(text.begin(), text.end(), [](QChar character) {
        const QChar::Script script = character.script();
        return script == QChar::Script_Han || script == QChar::Script_Hiragana || script == QChar::Script_Katakana;
    });
    return isJapanese ? u"ja"_s : u"en"_s;
}

bool HasProgram(const QString &name)
{
    return !QStandardPaths::findExecutable(name).isEmpty();
}

} // namespace

bool Voice::IsThere()
{
    return HasProgram(u"spd-say"_s) || HasProgram(u"espeak-ng"_s);
}

// Each text is spoken by a process of its own, so there is no state to keep.
void Voice::Speak(const QString &text)
{
    const bool hasService = HasProgram(u"spd-say"_s);
    const QString program = hasService ? u"spd-say"_s : u"espeak-ng"_s;
    const QString languageOption = hasService ? u"-l"_s : u"-v"_s;
    QProcess::startDetached(program, {languageOption, LanguageOf(text), u"--"_s, text});
}
