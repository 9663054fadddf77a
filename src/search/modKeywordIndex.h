// SPDX-FileCopyrightText: 2026 The Kotoban developers
// SPDX-License-Identifier: MIT

// Finds all keywords of a list in one pass over the text. An English keyword, made of letters and apostrophes, matches
// whole words, including its inflected forms; any other matches as plain text. Keywords are numbered from 1.
#pragma once

#include "search/modFindText.h"

#include <QHash>
#include <QStringList>

#include <vector>

/// How often each keyword has been found so far.
struct KeywordCounts
{
    std::vector<int> count;         ///< by number of the keyword, from [1]
    std::vector<const QChar *> end; ///< end of its last hit in the text, for plain text
};

class KeywordIndex
{
  public:
    /// @param keywords  in lower case, none empty
    explicit KeywordIndex(const QStringList &keywords);

    /// The keyword that an English word equals or is an inflected form of; 0 if there is none.
    int KeywordOfWord(QStringView word) const;

    /// All counts zero.
    KeywordCounts NoCounts() const
    {
        const size_t size = size_t(m_keywords.size()) + 1;
        return {std::vector<int>(size), std::vector<const QChar *>(size)};
    }

    /// Adds the hits on lines first..last, which must follow the lines counted before.
    void Count(const DisplayText &text, int first, int last, KeywordCounts *counts) const;

    /// A finder for one keyword.
    /// @return refers to this index, which must outlive it
    std::unique_ptr<TextFinder> Finder(const QString &keyword) const;

  private:
    struct PlainKeyword
    {
        QString folded;
        int keyword;
        size_t slot; // by its first two characters
    };

    bool HasKeyword(size_t slot) const
    {
        return m_slots[slot] < m_slots[slot + 1];
    }

    void CountPlain(QStringView line, KeywordCounts *counts) const;
    void CountPlainAt(size_t slot, QStringView rest, KeywordCounts *counts) const;

    QStringList m_keywords;
    QHash<QStringView, int> m_english; // by views of m_keywords
    CaseFolding m_fold;
    std::vector<PlainKeyword> m_plain; // by slot, then by text
    // Where each slot begins in m_plain, and the end of the last one. Slots of the first character alone make the row
    // on the hits of 500 keywords in bench/compare.py 1.7 times as large.
    std::vector<int> m_slots;
    bool m_hasSingles = false;
};

/// Whether a keyword matches whole words and their inflected forms.
bool IsEnglishWord(QStringView keyword);
