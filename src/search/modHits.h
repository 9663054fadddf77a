// SPDX-FileCopyrightText: 2026 The Kotoban developers
// SPDX-License-Identifier: MIT

// The hits of one search in the open text. They are counted incrementally, one chunk of lines at a time, so that the
// caller can do other work in between; only counts are stored, and the hits of a chunk are found again on request.
#pragma once

#include "search/modFindText.h"

#include <QDeadlineTimer>

#include <memory>
#include <optional>

/// A step to another hit.
struct HitStep
{
    TextSpan span;          ///< on line 0 if there are no hits
    bool isWrapped = false; ///< whether it passed the end of the text, or backwards its start
};

class Hits
{
  public:
    /// @param text        must outlive this object; nullptr has no hits
    /// @param startLine   the user's position: its chunk is counted first, then those after it, wrapping around
    /// @param chunkLines  lines per chunk
    Hits(const DisplayText *text, std::unique_ptr<TextFinder> finder, int startLine, int chunkLines = 1024);

    /// Counts until a deadline, but at least one chunk.
    /// @return whether all is counted
    bool CountOn(const QDeadlineTimer &until);

    bool IsComplete() const
    {
        return m_counted == m_counts.size();
    }

    /// Number of hits counted so far.
    int Count() const
    {
        return m_total;
    }

    /// Number of a hit in file order, from 1. Requires IsComplete().
    int NumberOf(const TextSpan &hit) const;

    /// Finds the first hit after a position in file order, wrapping around at the end; backwards the last one before
    /// it. Counts as needed until a deadline, but at least one chunk.
    /// @return nothing if the deadline came first; another call resumes there
    std::optional<HitStep> Next(const TextSpan &from, bool backwards, const QDeadlineTimer &until);

  private:
    std::vector<TextSpan> SpansOf(size_t chunk) const;
    void CountChunk(size_t chunk);

    size_t ChunkOf(int line) const
    {
        return size_t((line - 1) / m_chunkLines);
    }

    const DisplayText *m_text;
    std::unique_ptr<TextFinder> m_finder;
    int m_chunkLines;
    std::vector<int> m_counts; // hits of each chunk, NotCounted at first
    size_t m_counted = 0;      // number of chunks counted
    size_t m_next = 0;         // next chunk to count
    int m_total = 0;           // hits
};

/// Text for the number of hits: 「6か所」, or 「6か所…」 while counting.
QString CountText(int count, bool isComplete);

/// Text for the hit that a step went to: 「2 / 6」 once all is counted, the count until then; 「見つかりません」 if
/// there are no hits.
QString StepText(const Hits &hits, const TextSpan &found);

/// Text for a step that wrapped around: 「先頭に戻りました」, or backwards 「末尾に戻りました」; empty for any other
/// step.
QString WrapText(const HitStep &step, bool backwards);
