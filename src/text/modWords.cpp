// SPDX-FileCopyrightText: 2026 The Kotoban developers
// SPDX-License-Identifier: MIT

#include "text/modWords.h"

namespace {

enum class Script
{
    None,
    Word,
    Kanji,
    Hiragana,
    Katakana
};

Script ScriptOf(QChar character)
{
    const char16_t c = character.unicode();
    if (character.script() == QChar::Script_Han) // including 々
        return Script::Kanji;
    if (character.script() == QChar::Script_Hiragana)
        return Script::Hiragana;
    if (character.script() == QChar::Script_Katakana || c == u'ー' || c == u'ｰ')
        return Script::Katakana;
    if (character.isLetterOrNumber() || c == u'\'' || c == u'-')
        return Script::Word;
    return Script::None;
}

} // namespace

std::vector<Word> WordsOf(QStringView line)
{
    std::vector<Word> words;
    for (qsizetype start = 0, end = 0; start < line.size(); start = end) {
        const Script script = ScriptOf(line[start]);
        for (end = start + 1; end < line.size() && ScriptOf(line[end]) == script;)
            ++end;
        if (script != Script::None)
            words.push_back({start, end - start});
    }
    return words;
}

QString WordAround(QStringView line, qsizetype index)
{
    for (const Word &word : WordsOf(line))
        if (index >= word.start && index < word.start + word.length)
            return line.sliced(word.start, word.length).toString();
    return QString();
}
