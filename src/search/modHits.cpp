// SPDX-FileCopyrightText: 2026 The Kotoban developers
// SPDX-License-Identifier: MIT

#include "search/modHits.h"

#include <algorithm>
#include <numeric>

using namespace Qt::Literals::StringLiterals;

namespace {

constexpr int NotCounted = -1;

} // namespace

QString CountText(int count, bool isComplete)
{
    return QString::number(count) + (isComplete ? u"か所"_s : u"か所…"_s);
}

QString StepText(const Hits &hits, const TextSpan &found)
{
    if (found.line == 0)
        return u"見つかりません"_s;
    return hits.IsComplete() ? QString(QString::number(hits.NumberOf(found)) + u" / " + QString::number(hits.Count()))
                             : CountText(hits.Count(), false);
}

QString WrapText(const HitStep &step, bool backwards)
{
    if (!step.isWrapped)
        return QString();
    return backwards ? u"末尾に戻りました"_s : u"先頭に戻りました"_s;
}

Hits::Hits(const DisplayText *text, std::unique_ptr<TextFinder> finder, int startLine, int chunkLines)
    : m_text(text), m_finder(std::move(finder)), m_chunkLines(chunkLines),
      m_counts(size_t(text ? (text->LineCount() + chunkLines - 1) / chunkLines : 0), NotCounted)
{
    if (!m_counts.empty())
        m_next = std::min(ChunkOf(std::max(startLine, 1)), m_counts.size() - 1);
}

std::vector<TextSpan> Hits::SpansOf(size_t chunk) const
{
    std::vector<TextSpan> spans;
    const int first = int(chunk) * m_chunkLines + 1;
    m_finder->AddSpans(*m_text, first, std::min(first + m_chunkLines - 1, m_text->LineCount()), &spans);
    return spans;
}

void Hits::CountChunk(size_t chunk)
{
    m_counts[chunk] = int(SpansOf(chunk).size());
    m_total += m_counts[chunk];
    ++m_counted;
}

bool Hits::CountOn(const QDeadlineTimer &until)
{
    while (!IsComplete()) {
        while (m_counts[m_next] != NotCounted)
            m_next = (m_next + 1) % m_counts.size();
        CountChunk(m_next);
        if (until.hasExpired())
            break;
    }
    return IsComplete();
}

int Hits::NumberOf(const TextSpan &hit) const
{
    const size_t chunk = ChunkOf(hit.line);
    const std::vector<TextSpan> spans = SpansOf(chunk);
    return std::accumulate(m_counts.begin(), m_counts.begin() + std::ptrdiff_t(chunk), 0) +
           int(std::upper_bound(spans.begin(), spans.end(), hit, IsBefore) - spans.begin());
}

std::optional<HitStep> Hits::Next(const TextSpan &from, bool backwards, const QDeadlineTimer &until)
{
    if (m_counts.empty())
        return HitStep();
    const size_t count = m_counts.size();
    const size_t start = std::min(ChunkOf(std::max(from.line, 1)), count - 1);
    bool hasCounted = false;
    // All chunks starting with the one of the position, and finally that one again for its other part.
    for (size_t i = 0; i <= count; ++i) {
        const size_t chunk = (start + (backwards ? count - i % count : i)) % count;
        if (m_counts[chunk] == NotCounted) {
            if (hasCounted && until.hasExpired())
                return std::nullopt;
            CountChunk(chunk);
            hasCounted = true;
        }
        if (m_counts[chunk] == 0)
            continue;
        const std::vector<TextSpan> spans = SpansOf(chunk);
        const TextSpan span = i == 0 ? NextSpan(spans, from, backwards) : backwards ? spans.back() : spans.front();
        const bool isWrapped = backwards ? !IsBefore(span, from) : !IsBefore(from, span);
        if (i > 0 || !isWrapped)
            return HitStep{span, isWrapped};
    }
    return HitStep();
}
