// SPDX-FileCopyrightText: 2026 The Kotoban developers
// SPDX-License-Identifier: MIT

// Makes text from elsewhere fit for a study file: pasted text, cells of a spreadsheet, lines that a PDF broke, and the
// offers of 直す. All results have lines separated by "\n", without CR, as a text field has them.
#pragma once

#include "exchange/modConvertText.h"

#include <QString>

#include <array>

class QDeadlineTimer;

/// What a paste has become.
struct CleanText
{
    QString text;
    QString notice; ///< counts what was changed, as short as the row below the page is; empty if nothing was
};

/// Converts a text that is pasted: replaces characters by their equivalents, removes accents and treats characters
/// without an equivalent (emoji) as wanted. Invisible characters without an equivalent are removed silently.
/// @param rest  WithoutEquivalent::Remove (なくす) or WithoutEquivalent::Geta (〓)
CleanText CleanedPaste(const QString &text, WithoutEquivalent rest);

/// The rest of CleanedPaste for a text that was converted in slices, with a TextConversion(text, Accents::Remove,
/// rest).
CleanText CleanTextOf(ConvertedText converted, WithoutEquivalent rest);

/// Whether a text has cells, as copied from a spreadsheet: a tab in its first line that is not blank.
bool HasCells(const QString &text);

/// 表として貼り付け: a line for each row, with the second cell in "[ ]", as TableTextMaking makes it. Not cleaned yet.
/// @param refusal  why there are no lines (too many columns, no rows); one sentence for the user; empty if there are
QString LinesOfCells(const QString &text, QString *refusal);

/// 行をつなぐ: joins the lines of each paragraph and breaks the result again at the limit of a line, where
/// BreakLongLines does. A line goes on in the next one, unless
///
/// - one of them is blank or has a tab,
/// - it ends a sentence: its last character, closing brackets aside, is one of 。．.！!？?：:;；
/// - it is narrower than two thirds of the widest line between two blank ones, as a heading or the end of a paragraph,
/// - the next line begins with white space, a bullet, or a number or letter of a list ("1.", "(a)", "①", "第1章").
///
/// Where two words of Latin letters meet, a space is put between; a hyphen between two lower-case letters is taken as
/// hyphenation and removed. White space at the joint is removed. A paragraph that could not be broken again keeps its
/// lines.
/// @param text  the selected lines
QString JoinedLines(const QString &text);

/// Applies what 直す offers to a whole text, in slices: equivalents, accents, pairs of full-width brackets, and
/// breaks in long lines. Characters without an equivalent stay.
class Mending
{
  public:
    explicit Mending(const QString &text);

    /// Goes on until the deadline. @return whether there is more to do
    bool GoOn(const QDeadlineTimer &deadline)
    {
        return m_conversion.GoOn(deadline);
    }

    /// How much has been done, from 0 to 1.
    double Done() const
    {
        return m_conversion.Done();
    }

    /// The mended text, once GoOn has nothing more to do.
    QString Take();

  private:
    TextConversion m_conversion;
};

/// Whether a study file would be refused, or has no blanks, for what a Mending can do something about: lines that are
/// too long, or nothing but full-width brackets.
bool NeedsMending(const QString &text);

/// The result of a whole Mending.
QString Mended(const QString &text);

/// An example for an empty file. The text has lines separated by "\n"; the part to select is replaced by typing.
struct Template
{
    QString name; ///< as on its button
    QString text;
    qsizetype selectionStart; ///< 0-based index in text
    qsizetype selectionLength;
};

/// 一問一答, 文章の穴埋め, 年表.
const std::array<Template, 3> &Templates();
