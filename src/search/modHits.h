// The places of one search in the open text. They are counted bit by bit, stretch of lines by stretch, so that whoever
// waits for them can do something else in between; the places themselves are found again when they are asked for.
#pragma once

#include "search/modFindText.h"

#include <QDeadlineTimer>

#include <memory>
#include <optional>

/// A step to another place.
struct HitStep
{
    TextSpan span;          ///< nowhere when there are no places
    bool isWrapped = false; ///< whether it led past the end of the text, or backwards past its start
};

class Hits
{
  public:
    /// @param text         outlives this; nullptr has no places
    /// @param startLine    where the learner is: this stretch is counted first, then those behind it, round the text
    /// @param stretchLines lines of a stretch
    Hits(const DisplayText *text, std::unique_ptr<TextFinder> finder, int startLine, int stretchLines = 1024);

    /// Counts until a moment, but one stretch at least.
    /// @return whether all is counted
    bool CountOn(const QDeadlineTimer &until);

    bool IsComplete() const
    {
        return m_counted == m_counts.size();
    }

    /// The number of places, as far as they are counted.
    int Count() const
    {
        return m_total;
    }

    /// The number of a place in file order, from 1. Once all is counted.
    int NumberOf(const TextSpan &hit) const;

    /// Goes to the first place behind a given one in file order, and from the end on again from the start; backwards to
    /// the last one before it. Counts for that until a moment, but one stretch at least.
    /// @return nothing when the moment has come first: called again it goes on from there
    std::optional<HitStep> Next(const TextSpan &from, bool backwards, const QDeadlineTimer &until);

  private:
    void AddSpans(size_t stretch, std::vector<TextSpan> *spans) const;
    std::vector<TextSpan> SpansOf(size_t stretch) const;
    void CountStretch(size_t stretch);

    size_t StretchOf(int line) const
    {
        return size_t((line - 1) / m_stretchLines);
    }

    const DisplayText *m_text;
    std::unique_ptr<TextFinder> m_finder;
    int m_stretchLines;
    std::vector<int> m_counts;     // of each stretch, NotCounted at first
    size_t m_counted = 0;          // stretches
    size_t m_next = 0;             // stretch to count
    int m_total = 0;               // places
    std::vector<TextSpan> m_spans; // of the stretch that is being counted
};

/// The order of places in a file.
bool IsBefore(const TextSpan &first, const TextSpan &second);

/// The first place behind a given one in file order, and from the end on again from the start; backwards the last place
/// before it. @param spans  in file order
/// @return nowhere when there are no places
TextSpan NextSpan(const std::vector<TextSpan> &spans, const TextSpan &from, bool backwards);

/// What is said of the number of places: 「6か所」, or 「6か所…」 while they are counted.
QString CountText(int count, bool isComplete);

/// What is said of a place that was gone to: 「2 / 6」 once all is counted.
QString StepText(const Hits &hits, const HitStep &step);

/// What is said of a step that led past an end of the text, 「先頭に戻りました」 or backwards 「末尾に戻りました」;
/// empty for any other.
QString WrapText(const HitStep &step, bool backwards);
