// Finds all keywords of a list in one pass over the text. An English keyword, made of letters and apostrophes, is found
// by word, an inflected form counting for its base form; any other is found as plain text. Keywords are numbered
// from 1.
#pragma once

#include "search/modFindText.h"

#include <QHash>
#include <QStringList>

#include <bitset>

/// How often the keywords were found so far.
struct KeywordCounts
{
    std::vector<int> count;         ///< of keyword n at [n - 1]
    std::vector<const QChar *> end; ///< where in the text its last place ended, for plain text
};

class KeywordIndex
{
  public:
    /// @param keywords  in lower case, none of them empty
    explicit KeywordIndex(const QStringList &keywords);

    /// The keyword that an English word is or is a form of, by the rules of inflection; 0 = none.
    int KeywordOfWord(QStringView word) const;

    /// Counts none yet.
    KeywordCounts NoCounts() const
    {
        return {std::vector<int>(m_keywordCount), std::vector<const QChar *>(m_keywordCount)};
    }

    /// Adds the places on lines first..last, which follow those that were counted before.
    void Count(const DisplayText &text, int first, int last, KeywordCounts *counts) const;

    /// Finds the places of one keyword.
    /// @return uses this index, which must outlive it
    std::unique_ptr<TextFinder> Finder(const QString &keyword) const;

  private:
    struct PlainKeyword
    {
        QString folded;
        int keyword;
        int next; // place in m_plain, plus 1, of the next one with the same slot
    };

    void CountPlain(QStringView line, KeywordCounts *counts) const;
    void CountPlainAt(size_t slot, QStringView rest, KeywordCounts *counts) const;

    size_t m_keywordCount;
    QHash<QString, int> m_english;
    std::bitset<0x10000> m_englishHashes; // of its keywords: most words are turned away here
    CaseFolding m_fold;
    std::vector<PlainKeyword> m_plain;
    std::vector<int> m_slots; // by two characters: place in m_plain, plus 1, of the first keyword that begins so
    bool m_hasSingles = false;
};

/// Whether a keyword is found by word and inflection.
bool IsEnglishWord(QStringView keyword);
