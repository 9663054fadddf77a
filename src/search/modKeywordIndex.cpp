// SPDX-FileCopyrightText: 2026 The Kotoban developers
// SPDX-License-Identifier: MIT

#include "search/modKeywordIndex.h"

#include "search/modInflection.h"

#include <algorithm>
#include <numeric>
#include <ranges>
#include <tuple>
#include <utility>

namespace {

constexpr char16_t NoCharacter = 0; // past the end of a line

/// ASCII letters and the apostrophe.
bool IsWordCharacter(QChar character)
{
    const char16_t c = character.unicode();
    return char16_t((c | 0x20) - u'a') < 26 || c == u'\'';
}

/// Visits the words of a line, which are runs of word characters, with their 0-based positions.
template <typename Visit>
void ForEachWord(QStringView line, const Visit &visit)
{
    for (qsizetype at = 0; at < line.size(); ++at) {
        if (!IsWordCharacter(line[at]))
            continue;
        const qsizetype start = at;
        while (++at < line.size() && IsWordCharacter(line[at])) {
        }
        visit(start, line.sliced(start, at - start));
    }
}

constexpr size_t SlotCount = 0x10000;

size_t SlotOf(char16_t first, char16_t second)
{
    return (first * 0x9E3Bu + second * 0x85EBu) % SlotCount;
}

/// Finds the words that are forms of one keyword.
class WordFinder : public TextFinder
{
  public:
    WordFinder(const KeywordIndex &index, int keyword) : m_index(index), m_keyword(keyword) {}

    void AddSpans(const DisplayText &text, int first, int last, std::vector<TextSpan> *spans) const override
    {
        for (int line = first; line <= last; ++line)
            ForEachWord(text.Line(line), [&](qsizetype start, QStringView word) {
                if (m_index.KeywordOfWord(word) == m_keyword)
                    spans->push_back(TextSpan::At(line, start, word.size()));
            });
    }

  private:
    const KeywordIndex &m_index;
    int m_keyword;
};

} // namespace

bool IsEnglishWord(QStringView keyword)
{
    return std::all_of(keyword.begin(), keyword.end(), IsWordCharacter);
}

KeywordIndex::KeywordIndex(const QStringList &keywords) : m_keywords(keywords), m_slots(SlotCount + 1)
{
    int keyword = 0;
    for (const QString &text : std::as_const(m_keywords)) {
        ++keyword;
        if (IsEnglishWord(text)) {
            m_english.insert(text, keyword);
            continue;
        }
        const QString folded = m_fold.Folded(text);
        m_hasSingles |= folded.size() == 1;
        const char16_t second = folded.size() == 1 ? NoCharacter : folded[1].unicode();
        m_plain.push_back({folded, keyword, SlotOf(folded[0].unicode(), second)});
        ++m_slots[m_plain.back().slot + 1];
    }
    std::partial_sum(m_slots.begin(), m_slots.end(), m_slots.begin());
    std::ranges::sort(m_plain, [](const PlainKeyword &first, const PlainKeyword &second) {
        return std::tie(first.slot, first.folded) < std::tie(second.slot, second.folded);
    });
}

int KeywordIndex::KeywordOfWord(QStringView word) const
{
    QVarLengthArray<QChar, 128> lower(word.size());
    for (qsizetype i = 0; i < word.size(); ++i)
        lower[i] = QChar(word[i].unicode() | 0x20); // leaves an apostrophe unchanged
    const QStringView text(lower.constData(), lower.size());
    for (const BaseForm &form : BaseForms(text)) {
        QStringView candidate = text.first(form.kept);
        QVarLengthArray<QChar, 128> extended;
        if (form.added != 0) {
            extended.append(candidate.begin(), candidate.size());
            extended.append(QChar(form.added));
            candidate = QStringView(extended.constData(), extended.size());
        }
        if (const int keyword = m_english.value(candidate); keyword > 0)
            return keyword;
    }
    return 0;
}

/// Counts the keywords of a slot with which a text begins. Compares character by character, as the keywords of a list
/// may all begin alike.
void KeywordIndex::CountPlainAt(size_t slot, QStringView rest, KeywordCounts *counts) const
{
    const auto slotBegin = m_plain.begin() + m_slots[slot];
    std::ranges::subrange alike(slotBegin, m_plain.begin() + m_slots[slot + 1]); // with the first `length` characters
    for (qsizetype length = 0; !alike.empty(); ++length) {
        for (; !alike.empty() && alike.front().folded.size() == length; alike.advance(1)) {
            const size_t i = size_t(alike.front().keyword);
            // Skips overlapping hits and hits already counted through a colliding slot.
            if (rest.begin() < counts->end[i])
                continue;
            counts->end[i] = rest.begin() + length;
            ++counts->count[i];
        }
        if (length == rest.size())
            break;
        const char16_t next = m_fold(rest[length]);
        const auto character = [length](const PlainKeyword &plain) { return plain.folded[length].unicode(); };
        if (!alike.empty() && (character(alike.front()) != next || character(alike.back()) != next))
            alike = std::ranges::equal_range(alike, next, {}, character);
    }
}

void KeywordIndex::CountPlain(QStringView line, KeywordCounts *counts) const
{
    char16_t first = line.isEmpty() ? NoCharacter : m_fold(line[0]);
    for (qsizetype at = 0; at < line.size(); ++at) {
        const char16_t second = at + 1 < line.size() ? m_fold(line[at + 1]) : NoCharacter;
        if (const size_t slot = SlotOf(first, second); HasKeyword(slot))
            CountPlainAt(slot, line.sliced(at), counts);
        if (m_hasSingles)
            CountPlainAt(SlotOf(first, NoCharacter), line.sliced(at), counts);
        first = second;
    }
}

void KeywordIndex::Count(const DisplayText &text, int first, int last, KeywordCounts *counts) const
{
    for (int line = first; line <= last; ++line) {
        const QStringView view = text.Line(line);
        if (!m_plain.empty())
            CountPlain(view, counts);
        if (!m_english.isEmpty())
            ForEachWord(view, [&](qsizetype, QStringView word) {
                if (const int keyword = KeywordOfWord(word); keyword > 0)
                    ++counts->count[size_t(keyword)];
            });
    }
}

std::unique_ptr<TextFinder> KeywordIndex::Finder(const QString &keyword) const
{
    if (IsEnglishWord(keyword))
        return std::make_unique<WordFinder>(*this, m_english.value(keyword));
    return std::make_unique<PlainFinder>(keyword);
}
