// SPDX-FileCopyrightText: 2026 The Kotoban developers
// SPDX-License-Identifier: MIT

#include "platform/modVoice.h"

#include "platform/modProcess.h"

#include <QProcess>

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

/// An installed program that speaks, the speech service first; empty if there is none.
QString FindSpeaker()
{
    return FirstInstalled({u"spd-say"_s, u"espeak-ng"_s});
}

} // namespace

bool Voice::IsThere()
{
    return !FindSpeaker().isEmpty();
}

// Each text is spoken by a process of its own, so there is no state to keep.
void Voice::Speak(const QString &text)
{
    const QString speaker = FindSpeaker();
    const QString languageOption = speaker.endsWith(u"spd-say") ? u"-l"_s : u"-v"_s;
    if (!speaker.isEmpty())
        QProcess::startDetached(speaker, {languageOption, LanguageOf(text), u"--"_s, text});
}
