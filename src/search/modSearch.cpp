#include "search/modSearch.h"

#include "text/modInflection.h"
#include "text/modReadText.h"

#include <QFileInfo>
#include <QStringMatcher>

#include <algorithm>
#include <tuple>

using namespace Qt::Literals::StringLiterals;

namespace {

bool IsWordCharacter(QChar character)
{
    const char16_t c = character.unicode();
    return (c >= u'a' && c <= u'z') || (c >= u'A' && c <= u'Z') || c == u'\'';
}

bool IsEnglishWord(const QString &keyword)
{
    return std::all_of(keyword.begin(), keyword.end(), IsWordCharacter);
}

bool IsBefore(const TextSpan &first, const TextSpan &second)
{
    return std::tie(first.line, first.column) < std::tie(second.line, second.column);
}

/// The words of a text, runs of letters and apostrophes, with their places.
void CollectWords(const DisplayText &text, QStringList *words, std::vector<TextSpan> *spans)
{
    for (int line = 1; line <= text.LineCount(); ++line) {
        const QStringView view = text.Line(line);
        for (qsizetype at = 0; at < view.size();) {
            qsizetype end = at;
            while (end < view.size() && IsWordCharacter(view[end]))
                ++end;
            if (end > at) {
                *words += view.sliced(at, end - at).toString();
                spans->push_back(TextSpan::At(line, at, end - at));
            }
            at = end + 1;
        }
    }
}

QString HowToMakeAList(const QString &path)
{
    return u"キーワード一覧がありません。\n覚えたい言葉を一行に一つずつ書いたテキストファイル（Shift_JIS）を\n"_s +
           path + u"\nという名前で保存すると，ここに表示されます。"_s;
}

} // namespace

KeywordList ReadKeywordList(const QString &path)
{
    KeywordList list;
    if (!QFileInfo::exists(path)) {
        list.fault = HowToMakeAList(path);
        return list;
    }
    StudyLines lines;
    list.fault = ReadText(path, ExpandTabs::No, &lines).message;
    for (int line = 1; line <= lines.Count(); ++line) {
        const QString word = lines.at1(line).trimmed().toString().toLower();
        if (!word.isEmpty())
            list.words += word;
    }
    std::sort(list.words.begin(), list.words.end());
    list.words.erase(std::unique(list.words.begin(), list.words.end()), list.words.end());
    return list;
}

std::vector<TextSpan> FindText(const DisplayText &text, const QString &wanted)
{
    std::vector<TextSpan> spans;
    if (wanted.isEmpty())
        return spans;
    const QStringMatcher matcher(wanted, Qt::CaseInsensitive);
    for (int line = 1; line <= text.LineCount(); ++line) {
        const QStringView view = text.Line(line);
        for (qsizetype at = matcher.indexIn(view); at >= 0; at = matcher.indexIn(view, at + wanted.size()))
            spans.push_back(TextSpan::At(line, at, wanted.size()));
    }
    return spans;
}

TextSpan NextSpan(const std::vector<TextSpan> &spans, const TextSpan &from, bool backwards)
{
    if (spans.empty())
        return TextSpan();
    if (backwards) {
        const auto place = std::lower_bound(spans.begin(), spans.end(), from, IsBefore);
        return place == spans.begin() ? spans.back() : *(place - 1);
    }
    const auto place = std::upper_bound(spans.begin(), spans.end(), from, IsBefore);
    return place == spans.end() ? spans.front() : *place;
}

KeywordSearch::KeywordSearch(const KeywordList &list) : m_list(list) {}

void KeywordSearch::SetText(const DisplayText *text)
{
    m_text = text;
    m_spans.clear();
    if (!text || m_list.words.isEmpty())
        return;
    QStringList words;
    std::vector<TextSpan> spans;
    CollectWords(*text, &words, &spans);
    const std::vector<int> indices = MatchWords(m_list.words, words);
    for (size_t i = 0; i < indices.size(); ++i)
        if (indices[i] > 0)
            m_spans[m_list.words[indices[i] - 1]].push_back(spans[i]);
}

QStringList KeywordSearch::KeywordsWith(const QString &part) const
{
    return part.isEmpty() ? m_list.words : m_list.words.filter(part, Qt::CaseInsensitive);
}

const std::vector<TextSpan> &KeywordSearch::SpansOf(const QString &keyword)
{
    if (!IsEnglishWord(keyword) && !m_spans.contains(keyword))
        m_spans.insert(keyword, SpansOfText(keyword));
    return m_spans[keyword];
}

std::vector<TextSpan> KeywordSearch::SpansOfText(const QString &wanted) const
{
    return m_text ? FindText(*m_text, wanted) : std::vector<TextSpan>();
}
