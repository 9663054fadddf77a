// SPDX-FileCopyrightText: 2026 The Kotoban developers
// SPDX-License-Identifier: MIT

#include "search/modSearch.h"

#include "base/modCodePage.h"
#include "text/modCheckText.h"
#include "text/modReadText.h"

#include <QFileInfo>

#include <algorithm>

using namespace Qt::Literals::StringLiterals;

namespace {

constexpr int LinesAtOnce = 32; // a millisecond with the worst keywords

QString HowToMakeAList(const QString &path)
{
    return u"キーワード一覧がありません。\n覚えたい言葉を一行に一つずつ書いたテキストファイル（Shift_JIS）を\n"_s +
           path + u"\nという名前で保存すると，ここに表示されます。"_s;
}

QString TooLargeList(const QString &path)
{
    return u"キーワード一覧が大きすぎるため，読み込みできません。\n"_s + path + u"\nを"_s +
           QString::number(MaxKeywordListBytes / BytesPerMegabyte) + u"MB以下にしてください。"_s;
}

QString LineIsNoKeyword(int line)
{
    return u"キーワード一覧の"_s + QString::number(line) + u"行目は"_s + QString::number(MaxLineBytes) +
           u"バイトを超えるので，キーワードになりません。"_s;
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
    const TextRefusal refusal = ReadText(path, ExpandTabs::No, &lines, MaxKeywordListBytes);
    list.fault = refusal.fault == TextFault::TooLarge ? TooLargeList(path) : refusal.message;
    for (int line = 1; line <= lines.Count(); ++line) {
        const QStringView word = lines.at1(line).trimmed();
        if (GetByteLength(word) <= MaxLineBytes)
            list.words += word.toString().toLower();
        else if (list.fault.isEmpty())
            list.fault = LineIsNoKeyword(line);
    }
    list.words.removeAll(QString());
    std::sort(list.words.begin(), list.words.end());
    list.words.erase(std::unique(list.words.begin(), list.words.end()), list.words.end());
    return list;
}

KeywordSearch::KeywordSearch(const KeywordList &list) : m_list(list), m_index(list.words), m_counts(m_index.NoCounts())
{
}

void KeywordSearch::SetText(const DisplayText *text)
{
    m_text = text;
    m_counts = m_index.NoCounts();
    m_countedLines = 0;
}

bool KeywordSearch::IsCounted() const
{
    return !m_text || m_list.words.isEmpty() || m_countedLines == m_text->LineCount();
}

bool KeywordSearch::CountOn(const QDeadlineTimer &until)
{
    while (!IsCounted()) {
        const int last = std::min(m_countedLines + LinesAtOnce, m_text->LineCount());
        m_index.Count(*m_text, m_countedLines + 1, last, &m_counts);
        m_countedLines = last;
        if (until.hasExpired())
            break;
    }
    return IsCounted();
}

int KeywordSearch::CountOf(const QString &keyword) const
{
    const auto found = std::lower_bound(m_list.words.begin(), m_list.words.end(), keyword);
    const auto number = size_t(found - m_list.words.begin()) + 1;
    return found == m_list.words.end() || *found != keyword ? 0 : m_counts.count[number];
}

QStringList KeywordSearch::KeywordsWith(const QString &part) const
{
    QStringList keywords = part.isEmpty() ? m_list.words : m_list.words.filter(part, Qt::CaseInsensitive);
    if (IsCounted())
        std::stable_partition(keywords.begin(), keywords.end(),
                              [this](const QString &keyword) { return CountOf(keyword) > 0; });
    return keywords;
}

std::unique_ptr<Hits> KeywordSearch::HitsOf(const QString &keyword, int startLine) const
{
    return std::make_unique<Hits>(m_text, m_index.Finder(keyword), startLine);
}

std::unique_ptr<Hits> KeywordSearch::HitsOfText(const QString &wanted, int startLine) const
{
    return std::make_unique<Hits>(m_text, std::make_unique<PlainFinder>(wanted), startLine);
}

QPoint PositionBeside(const QRect &beside, const QSize &size, const QRect &screen)
{
    const int rightOf = beside.right() + 1;
    const int leftOf = beside.left() - size.width();
    int x = rightOf;
    if (rightOf + size.width() > screen.right() + 1)
        x = leftOf >= screen.left() ? leftOf : screen.right() + 1 - size.width();
    const int y = std::min(beside.top(), screen.bottom() + 1 - size.height());
    return {std::max(x, screen.left()), std::max(y, screen.top())};
}
