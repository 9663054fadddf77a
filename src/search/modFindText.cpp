// SPDX-FileCopyrightText: 2026 The Kotoban developers
// SPDX-License-Identifier: MIT

#include "search/modFindText.h"

#include <algorithm>
#include <type_traits>

namespace {

const std::vector<char16_t> &FoldedCharacters()
{
    static const std::vector<char16_t> folded = [] {
        std::vector<char16_t> table(0x10000);
        for (size_t c = 0; c < table.size(); ++c)
            table[c] = QChar(char16_t(c)).toCaseFolded().unicode();
        return table;
    }();
    return folded;
}

/// Characters compared at once: enough for the compiler to vectorise. The row on all hits in bench/compare.py measures
/// what that gains; folding the whole text when it is loaded would cost more than a search.
constexpr qsizetype BlockSize = 64;

/// Marks the positions of a block where both the first and the last character of the wanted text match one of their
/// variants.
/// @tparam Count  the number of variants that are compared; Japanese characters have one
/// @return whether there is any
template <size_t Count>
bool MarkCandidates(const char16_t *first, const char16_t *last, const CaseFolding::VariantList &firsts,
                    const CaseFolding::VariantList &lasts, std::array<char16_t, BlockSize> *marks)
{
    // Copies, because a store to the marks might alias references.
    const auto [a, b, c, d] = firsts;
    const auto [p, q, r, s] = lasts;
    char16_t any = 0;
    for (size_t i = 0; i < BlockSize; ++i) {
        const char16_t x = first[i];
        const char16_t y = last[i];
        const bool isCandidate =
            Count == 1 ? (x == a) & (y == p)
                       : ((x == a) | (x == b) | (x == c) | (x == d)) & ((y == p) | (y == q) | (y == r) | (y == s));
        (*marks)[i] = isCandidate;
        any |= char16_t(isCandidate);
    }
    return any != 0;
}

} // namespace

CaseFolding::CaseFolding() : m_folded(FoldedCharacters()) {}

QString CaseFolding::Folded(const QString &text) const
{
    QString folded = text;
    for (QChar &character : folded)
        character = (*this)(character);
    return folded;
}

CaseFolding::VariantList CaseFolding::Variants(char16_t folded) const
{
    VariantList variants;
    variants.fill(folded);
    auto next = variants.begin();
    for (size_t c = 0; c < m_folded.size() && next != variants.end(); ++c)
        if (m_folded[c] == folded)
            *next++ = char16_t(c);
    return variants;
}

bool BeginsWithFolded(const CaseFolding &fold, QStringView view, QStringView folded)
{
    return view.size() >= folded.size() &&
           std::equal(folded.begin(), folded.end(), view.begin(), [&fold](QChar f, QChar c) { return fold(c) == f; });
}

PlainFinder::PlainFinder(const QString &wanted) : m_wanted(m_fold.Folded(wanted))
{
    if (m_wanted.isEmpty())
        return;
    m_first = m_fold.Variants(m_wanted.front().unicode());
    m_last = m_fold.Variants(m_wanted.back().unicode());
}

void PlainFinder::AddSpans(const DisplayText &text, int first, int last, std::vector<TextSpan> *spans) const
{
    const QStringView lines = text.Lines(first, last);
    const qsizetype startCount = lines.size() - m_wanted.size() + 1;
    // A text longer than every line would be compared with many lines at each position.
    if (m_wanted.isEmpty() || m_wanted.size() > text.LongestLineCells() || startCount <= 0)
        return;
    const char16_t *const firsts = lines.utf16();
    const char16_t *const lasts = firsts + m_wanted.size() - 1;
    int line = first;
    qsizetype lineStart = 0;
    qsizetype lineEnd = text.Line(line).size();
    qsizetype free = 0; // end of the last hit
    // Compares the whole text, and determines the line, only at marked positions.
    const auto take = [&](qsizetype start) {
        if (start < free || !BeginsWithFolded(m_fold, lines.sliced(start), m_wanted))
            return;
        while (start >= lineEnd) {
            lineStart = lineEnd;
            lineEnd += text.Line(++line).size();
        }
        if (start + m_wanted.size() > lineEnd)
            return;
        spans->push_back(TextSpan::At(line, start - lineStart, m_wanted.size()));
        free = start + m_wanted.size();
    };
    const auto isOne = [](const CaseFolding::VariantList &variants) {
        return std::ranges::count(variants, variants.front()) == std::ssize(variants);
    };
    qsizetype at = 0;
    const auto takeBlocks = [&](auto variants) {
        std::array<char16_t, BlockSize> marks;
        for (; at + BlockSize <= startCount; at += BlockSize) {
            if (!MarkCandidates<variants>(firsts + at, lasts + at, m_first, m_last, &marks))
                continue;
            for (qsizetype i = 0; i < BlockSize; ++i)
                if (marks[size_t(i)] != 0)
                    take(at + i);
        }
    };
    if (isOne(m_first) && isOne(m_last))
        takeBlocks(std::integral_constant<size_t, 1>());
    else
        takeBlocks(std::integral_constant<size_t, 4>());
    for (; at < startCount; ++at)
        take(at);
}
