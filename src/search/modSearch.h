// Searching the open text: for the keywords of a list, an inflected English form counting for its base form, and for
// plain text. Lines and columns are numbered from 1.
#pragma once

#include "text/modDisplayText.h"

#include <QHash>
#include <QStringList>

#include <vector>

/// The keyword list file: code page 932 or ASCII, one keyword a line; blanks around a keyword do not count.
struct KeywordList
{
    QStringList words; ///< in lower case, each once, in ascending binary order
    QString fault;     ///< why there are none: the file is missing, cannot be read or is in another character code
};

/// Reads the keyword list. A missing file is no error to anybody but the reader of fault, which says how to make one.
KeywordList ReadKeywordList(const QString &path);

/// Places of a text in the open file, in file order, case ignored. None lies across the end of a line.
std::vector<TextSpan> FindText(const DisplayText &text, const QString &wanted);

/// The first place behind a given one in file order, and from the end on again from the start; backwards the last place
/// before it. @param places  in file order
/// @return nowhere when there are no places
TextSpan NextSpan(const std::vector<TextSpan> &spans, const TextSpan &from, bool backwards);

/// The keywords and where the open text has them.
class KeywordSearch
{
  public:
    explicit KeywordSearch(const KeywordList &list);

    /// Takes another text, which must outlive this or the next call, and matches its words.
    void SetText(const DisplayText *text);

    const KeywordList &List() const
    {
        return m_list;
    }

    /// Keywords that contain a text, case ignored; all for an empty one.
    QStringList KeywordsWith(const QString &part) const;

    /// Where the open text has a keyword, in file order. English words are matched by word and inflection, all else as
    /// plain text. The search for the latter is made when it is first asked for.
    const std::vector<TextSpan> &SpansOf(const QString &keyword);

    /// Where the open text has a plain text.
    std::vector<TextSpan> SpansOfText(const QString &wanted) const;

  private:
    KeywordList m_list;
    const DisplayText *m_text = nullptr;
    QHash<QString, std::vector<TextSpan>> m_spans; // of the keywords that were matched or asked for
};
