// SPDX-FileCopyrightText: 2026 The Kotoban developers
// SPDX-License-Identifier: MIT

// What the place for notices below the page shows: one notice at a time, the most important one, and as much of it as
// there is room for.
#pragma once

#include <QString>

#include <map>
#include <optional>
#include <vector>

/// What a notice is about, the most important first.
enum class NoticeTopic
{
    FileChange,
    Done, ///< what a command has just done
    Search,
    HardElsewhere, ///< no hard answer is hidden in view, but others are
    Offer,         ///< the line where the user stopped the last time
    NoBlanks,
    FirstKeys,
};

enum class NoticeAction
{
    ReadAgain,
    Mend,
    Undo,
    FindPrevious,
    FindNext,
    EndSearch,
    GoOn, ///< what Enter does
    GoToOffered,
    Resume,
    Write,
    KeepPlaces, ///< a sign where pasting left out a character
};

struct Notice
{
    /// Something that the user can do about it.
    struct Offer
    {
        QString text;
        QString key; ///< that does the same; may be empty
        NoticeAction action;
        bool hasKeyInTip = false; ///< the key stands in the tooltip alone

        bool operator==(const Offer &) const = default;
    };

    QString text;
    std::vector<Offer> offers{}; ///< at most MaxOffers

    bool operator==(const Notice &) const = default;
};

constexpr size_t MaxOffers = 3;

class Notices
{
  public:
    /// Adds the notice about a topic in place of an earlier one. @return whether Current() changed
    bool Put(NoticeTopic topic, const Notice &notice);

    /// Forgets the notice about a topic. @return whether Current() changed
    bool Remove(NoticeTopic topic);

    /// The notice to show, with its topic.
    std::optional<std::pair<NoticeTopic, Notice>> Current() const;

  private:
    std::map<NoticeTopic, Notice> m_notices;
};

/// Widths of the parts of a notice, in pixels.
struct NoticeWidths
{
    struct Offer
    {
        int withKeyPx = 0;
        int withoutKeyPx = 0;
    };

    int textPx = 0;
    int leastTextPx = 0; ///< of a text that is cut; a shorter one is never cut
    int gapPx = 0;       ///< before each offer
    std::vector<Offer> offers{};
};

/// What is shown of a notice.
struct NoticeFit
{
    int textPx = 0;
    int offers = 0; ///< how many of them, from the first on
    bool hasKeys = false;

    bool operator==(const NoticeFit &) const = default;
};

/// Chooses what fits: everything, else offers without their keys, else a shorter text, else fewer offers.
NoticeFit FitNotice(const NoticeWidths &widths, int availablePx);
