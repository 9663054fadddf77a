#include "view/modWordAt.h"

#include "text/modPictureName.h"

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
    if (character.script() == QChar::Script_Han || c == u'々')
        return Script::Kanji;
    if (character.script() == QChar::Script_Hiragana)
        return Script::Hiragana;
    if (character.script() == QChar::Script_Katakana || c == u'ー' || c == u'ｰ')
        return Script::Katakana;
    if (character.isLetterOrNumber() || c == u'\'' || c == u'-')
        return Script::Word;
    return Script::None;
}

/// 0-based index of the character that covers a cell, -1 behind the line's end.
qsizetype IndexOfCell(QStringView line, int cell)
{
    int next = 0;
    for (qsizetype i = 0; i < line.size(); ++i) {
        next += CellsOf(line[i]);
        if (cell < next)
            return i;
    }
    return -1;
}

/// A masked line and the 0-based character of it that is pointed at, -1 for none.
struct PointedAt
{
    QString line;
    qsizetype index = -1;
};

/// @param isHidden  which blanks are masked; without it all are, so that no answer can join what stands beside it
PointedAt CharacterAt(const DisplayText &text, int xPx, int yPx, int topLine, const PageLayout &layout,
                      const std::function<bool(int)> &isHidden = {})
{
    PointedAt at;
    const int line = layout.RowOffsetAt(yPx) + topLine;
    if (yPx <= PageLayout::TopMarginPx || line > text.LineCount() || xPx < layout.TextLeftPx())
        return at;
    at.line = text.MaskedLine(line, isHidden);
    at.index = IndexOfCell(at.line, (xPx - layout.TextLeftPx()) / layout.cellWidthPx);
    return at;
}

QString WordAround(QStringView line, qsizetype index)
{
    for (const Word &word : WordsOf(line))
        if (index >= word.start && index < word.start + word.length)
            return line.sliced(word.start, word.length).toString();
    return QString();
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

QString TextUnderPointer(const DisplayText &text, const StudyRound &round, int xPx, int yPx, int topLine,
                         const PageLayout &layout)
{
    const int blank = HitTest(text, xPx, yPx, topLine, layout);
    if (blank > 0)
        return round.bolOpen(blank) ? text.Answer(blank).toString() : QString();
    const PointedAt at = CharacterAt(text, xPx, yPx, topLine, layout);
    return at.index < 0 ? QString() : WordAround(at.line, at.index);
}

QString PictureUnderPointer(const DisplayText &text, const StudyRound &round, int xPx, int yPx, int topLine,
                            const PageLayout &layout)
{
    const auto isHidden = [&round](int blank) { return !round.bolOpen(blank); };
    const PointedAt at = CharacterAt(text, xPx, yPx, topLine, layout, isHidden);
    return at.index < 0 ? QString() : PictureNameAt(at.line, at.index);
}

QString PictureOfAnswer(const DisplayText &text, const StudyRound &round, int blank)
{
    if (!round.bolOpen(blank))
        return QString();
    const std::vector<PictureReference> references = PictureReferences(text.Answer(blank));
    return references.empty() ? QString() : references.front().name;
}
