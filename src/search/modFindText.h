// SPDX-FileCopyrightText: 2026 The Kotoban developers
// SPDX-License-Identifier: MIT

// Finds a text in the lines of the open file, ignoring case. Lines and columns are numbered from 1.
#pragma once

#include "text/modDisplayText.h"

#include <array>
#include <vector>

/// Finds the hits of one search.
class TextFinder
{
  public:
    virtual ~TextFinder() = default;

    /// Appends the hits on lines first..last, 1 <= first <= last <= number of lines, in file order.
    virtual void AddSpans(const DisplayText &text, int first, int last, std::vector<TextSpan> *spans) const = 0;
};

/// Folds characters for comparison as Qt::CaseInsensitive does. Text in code page 932 has no surrogates, so UTF-16
/// units can be folded one by one.
class CaseFolding
{
  public:
    CaseFolding();

    char16_t operator()(QChar character) const
    {
        return m_folded[character.unicode()];
    }

    QString Folded(const QString &text) const;

    /// All characters that fold to a folded one, itself included, padded with duplicates. There are never more than
    /// four in the Basic Multilingual Plane.
    using VariantList = std::array<char16_t, 4>;
    VariantList Variants(char16_t folded) const;

  private:
    const std::vector<char16_t> &m_folded; // of every character
};

/// Whether a view begins with a text, ignoring case. @param folded  the text, already folded
bool BeginsWithFolded(const CaseFolding &fold, QStringView view, QStringView folded);

/// Finds a plain text within lines. Hits do not overlap: the search resumes after each hit.
class PlainFinder : public TextFinder
{
  public:
    /// @param wanted  if empty, there are no hits
    explicit PlainFinder(const QString &wanted);

    void AddSpans(const DisplayText &text, int first, int last, std::vector<TextSpan> *spans) const override;

  private:
    CaseFolding m_fold;
    QString m_wanted; // folded
    CaseFolding::VariantList m_first{};
    CaseFolding::VariantList m_last{};
};
