// Searching the open text: for the keywords of a list, an inflected English form counting for its base form, and for
// plain text. All keywords are counted in one pass over the text, bit by bit between other work.
#pragma once

#include "search/modHits.h"
#include "search/modKeywordIndex.h"

#include <QPoint>
#include <QRect>
#include <QStringList>

/// The keyword list file: code page 932 or ASCII, one keyword a line; blanks around a keyword do not count.
struct KeywordList
{
    QStringList words; ///< in lower case, each once, in ascending binary order
    QString fault;     ///< why there are none: the file is missing, cannot be read or is in another character code
};

/// Reads the keyword list. A missing file is no error to anybody but the reader of fault, which says how to make one.
KeywordList ReadKeywordList(const QString &path);

/// The keywords and where the open text has them.
class KeywordSearch
{
  public:
    explicit KeywordSearch(const KeywordList &list);

    /// Takes another text, which must outlive this or the next call. What was found in the one before must no longer be
    /// used. Nothing is counted yet.
    /// @param text  nullptr is one in which nothing is found
    void SetText(const DisplayText *text);

    const KeywordList &List() const
    {
        return m_list;
    }

    /// Counts the keywords until a moment, but some lines at least.
    /// @return whether all are counted
    bool CountOn(const QDeadlineTimer &until);

    bool IsCounted() const;

    /// The number of places of a keyword of the list, as far as they are counted.
    int CountOf(const QString &keyword) const;

    /// Keywords that contain a text, case ignored; all for an empty one. Once they are counted, those that the text has
    /// come first, each group in the order of the list.
    QStringList KeywordsWith(const QString &part) const;

    /// Where the open text has a keyword of the list, or a plain text.
    /// @param startLine  where the learner is, and what is counted first
    std::unique_ptr<Hits> HitsOf(const QString &keyword, int startLine) const;
    std::unique_ptr<Hits> HitsOfText(const QString &wanted, int startLine) const;

  private:
    KeywordList m_list;
    KeywordIndex m_index;
    const DisplayText *m_text = nullptr;
    KeywordCounts m_counts;
    int m_countedLines = 0;
};

/// Where a window stands beside another: to the right of it, else to the left, else at the right edge of the
/// screen, where it covers little of the other; its top at the same height as far as the screen has room.
/// @param beside   the other window, frame included; @param size  of the window to place, frame included
/// @param screen   the part that no panel covers
QPoint PlaceBeside(const QRect &beside, const QSize &size, const QRect &screen);
