// SPDX-FileCopyrightText: 2026 The Kotoban developers
// SPDX-License-Identifier: MIT

// The pen: turns words of a line into blanks and back, and completes brackets as they are typed. Everything works on
// one line, without its line end; a selection over several lines is one stroke on each. All text but "[" and "]" stays.
// Positions are 0-based character indexes in the line.
#pragma once

#include <QString>
#include <QStringView>

#include <vector>

/// A change of one line. The changes of a stroke are in ascending order, do not overlap and have their positions in the
/// old line, so that they are applied from the last to the first. Together they are one undo step.
struct LineEdit
{
    qsizetype at;      ///< where the change begins
    qsizetype removed; ///< number of characters removed there
    QString inserted;  ///< what replaces them

    bool operator==(const LineEdit &) const = default;
};

/// A line after some changes.
QString WithEdits(QStringView line, const std::vector<LineEdit> &edits);

/// A range of characters of a line.
struct LineRange
{
    qsizetype start;
    qsizetype length;

    bool operator==(const LineRange &) const = default;
};

/// What the pen takes when nothing is selected: the word, as WordsOf has it, that the cursor is in or touches, the one
/// after it first. Without a word, an empty range at the cursor.
/// @param cursor  0..length of the line
LineRange WordAtCursor(QStringView line, qsizetype cursor);

/// Draws the pen over a range:
///
/// - White space at both ends is left out.
/// - A range within a single blank, brackets included, removes the blank. An empty range between the brackets does too.
/// - Any other range becomes one blank together with all blanks that it overlaps.
///
/// A line on which "[" and "]" alternate remains one. On any other line, brackets without a partner are removed where
/// the stroke meets them.
/// @param range  within the line
/// @return the changes; none if the range has no text to take
std::vector<LineEdit> Stroke(QStringView line, const LineRange &range);

/// What typing does to a line.
struct TypedBracket
{
    QString inserted; ///< at the cursor
    qsizetype cursor; ///< afterwards
};

/// Text typed or committed by an input method, where nothing is selected:
///
/// - "［" and "］" are "[" and "]".
/// - A single "[" brings its "]", unless the next bracket on the line is already a "]".
/// - A single "]" directly before the "]" of the blank that the cursor is in inserts nothing and steps over it.
///
/// @param cursor  where it is typed, 0..length of the line
TypedBracket TypeIntoLine(QStringView line, qsizetype cursor, const QString &typed);
