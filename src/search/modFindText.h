// Finds a text in the lines of the open file, case ignored. Lines and columns are numbered from 1.
#pragma once

#include "text/modDisplayText.h"

#include <array>
#include <vector>

/// Finds the places of one thing that is searched for.
class TextFinder
{
  public:
    virtual ~TextFinder() = default;

    /// Appends the places on lines first..last, 1 <= first <= last <= number of lines, in file order.
    virtual void AddSpans(const DisplayText &text, int first, int last, std::vector<TextSpan> *spans) const = 0;
};

/// A character as it is compared where case is ignored: as Qt::CaseInsensitive has it. A text in code page 932 holds no
/// surrogates, so that each half of one may be folded by itself.
class CaseFolding
{
  public:
    CaseFolding();

    char16_t operator()(QChar character) const
    {
        return m_folded[character.unicode()];
    }

    QString Folded(const QString &text) const;

    /// The characters that are folded to the same one, which is one of them; several places may hold the same. More
    /// than these do not exist in the Basic Multilingual Plane.
    std::array<char16_t, 4> Variants(char16_t folded) const;

  private:
    const std::vector<char16_t> &m_folded; // of every character
};

/// Whether the text of a view begins with a text that is folded.
bool BeginsWithFolded(const CaseFolding &fold, QStringView view, QStringView folded);

/// Finds a plain text within lines. Places do not overlap: the next one is searched for behind the last.
class PlainFinder : public TextFinder
{
  public:
    /// @param wanted  an empty one is found nowhere
    explicit PlainFinder(const QString &wanted);

    void AddSpans(const DisplayText &text, int first, int last, std::vector<TextSpan> *spans) const override;

  private:
    CaseFolding m_fold;
    QString m_wanted; // folded
    std::array<char16_t, 4> m_first{};
    std::array<char16_t, 4> m_last{};
};
