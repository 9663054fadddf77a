// SPDX-FileCopyrightText: 2026 The Kotoban developers
// SPDX-License-Identifier: MIT

// Searches the open text for the keywords of a list, including inflected English forms, and for plain text. All
// keywords are counted in one pass over the text, in slices between other work.
#pragma once

#include "base/modFile.h"
#include "search/modHits.h"
#include "search/modKeywordIndex.h"

#include <QPoint>
#include <QRect>
#include <QStringList>

/// The keyword list file: code page 932 or ASCII, one keyword per line; spaces around a keyword are ignored. A line
/// longer than those of study files is no keyword, because nothing could match it.
struct KeywordList
{
    QStringList words; ///< in lower case, each once, in ascending binary order
    QString fault;     ///< why there are none: the file is missing, too large, unreadable or in another encoding; or
                       ///< why some are left out
};

/// Largest keyword list that is read.
constexpr qint64 MaxKeywordListBytes = 4 * BytesPerMegabyte;

/// Reads the keyword list. A missing file gives an empty list, with a fault that explains how to make one.
KeywordList ReadKeywordList(const QString &path);

/// The keywords and their hits in the open text.
class KeywordSearch
{
  public:
    explicit KeywordSearch(const KeywordList &list);

    /// Sets the text to search, which must outlive this object or the next call. Hits in the previous text must no
    /// longer be used. Nothing is counted yet.
    /// @param text  may be nullptr, which has no hits
    void SetText(const DisplayText *text);

    const KeywordList &List() const
    {
        return m_list;
    }

    /// Counts the keywords until a deadline, but in a few lines at least.
    /// @return whether all are counted
    bool CountOn(const QDeadlineTimer &until);

    bool IsCounted() const;

    /// Number of hits of a keyword of the list counted so far.
    int CountOf(const QString &keyword) const;

    /// Keywords that contain a text, ignoring case; all keywords for an empty one. Once all are counted, keywords with
    /// hits come first, each group in the order of the list.
    QStringList KeywordsWith(const QString &part) const;

    /// The hits of a keyword of the list, or of a plain text, in the open text.
    /// @param startLine  the user's position, from which hits are counted
    std::unique_ptr<Hits> HitsOf(const QString &keyword, int startLine) const;
    std::unique_ptr<Hits> HitsOfText(const QString &wanted, int startLine) const;

  private:
    KeywordList m_list;
    KeywordIndex m_index;
    const DisplayText *m_text = nullptr;
    KeywordCounts m_counts;
    int m_countedLines = 0;
};

/// Where to place a window beside another: to its right, else to its left, else at the right edge of the screen, where
/// it covers little of the other; tops aligned as far as the screen has room.
/// @param beside  the other window, including its frame; @param size  of the window to place, including its frame
/// @param screen  the part not covered by panels
QPoint PositionBeside(const QRect &beside, const QSize &size, const QRect &screen);
