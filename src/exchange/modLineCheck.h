// SPDX-FileCopyrightText: 2026 The Kotoban developers
// SPDX-License-Identifier: MIT

// What is wrong with a line of a text that is to be a study file, judged line by line while it is typed. A text whose
// lines have no problem that RefusesFile is accepted by ReadStudyText as far as lines are concerned; what only the
// whole file shows (its detected encoding) is known when it is saved. A window checks a few lines at a time, between
// events, and keeps the problems with their lines.
#pragma once

#include <QString>
#include <QStringView>

#include <functional>
#include <vector>

/// In the order in which a line's problems are listed.
enum class LineFault
{
    NotInCodePage,     ///< a run of characters that code page 932 lacks, or that are no text
    TooLong,           ///< more than MaxLineBytes bytes
    BracketCount,      ///< "[" and "]" are not equally many
    BracketOrder,      ///< "[" and "]" do not alternate
    FullWidthBrackets, ///< brackets that were perhaps meant for a blank; see FullWidthBracketsOf
    PictureBrackets,   ///< "｢" and "｣" do not match
    PictureName,       ///< a picture name that no file may have
    PictureMissing,    ///< there is no such picture
};

struct LineProblem
{
    LineFault fault;
    int column = 1; ///< 1-based, of the first character at fault
    int length = 0; ///< number of UTF-16 units at fault
    QString what;   ///< for the user, one sentence without a line number
    QString offer;  ///< what mending would do about it, for the user; empty if it can do nothing

    bool operator==(const LineProblem &) const = default;
};

/// Whether a fault keeps the file from being studied (or, NotInCodePage, from being saved). The others are hints.
bool RefusesFile(LineFault fault);

/// Whether there is a picture of a name; see PictureFolder.
using HasPicture = std::function<bool(const QString &name)>;

/// The problems of a line by fault and then by column, of each fault the first MaxProblemsOfFault. Pictures are checked
/// as the study window does: references that overlap a blank are left out. They are checked once the line is neither
/// too long nor has wrong brackets, and of a line of more than MaxCheckedLength characters only that it is too long is
/// said, so that no text makes a check take long.
/// @param line  without its line end
std::vector<LineProblem> ProblemsOfLine(QStringView line, const HasPicture &hasPicture);

/// Brackets with a full-width one among them, from the first to the last character. With a length of 1, one without a
/// partner.
struct FullWidthBrackets
{
    qsizetype start;
    qsizetype length;
};

/// The full-width brackets of a line, which hide nothing. An opening one of any width and the closing one after it,
/// with no bracket between, are a pair; "[" with its "]" is a blank, and full-width brackets in it are its text.
std::vector<FullWidthBrackets> FullWidthBracketsOf(QStringView line);

/// Number of these pairs.
qsizetype FullWidthPairs(QStringView line);

/// A line with these pairs made half-width, so that they are blanks.
QString WithHalfWidthPairs(QStringView line);

/// The same for all lines of a text.
QString WithHalfWidthBrackets(const QString &text);

constexpr int MaxProblemsOfFault = 5;
constexpr qsizetype MaxCheckedLength = 16384;

/// The counter of a line, "83 / 100", with tabs counted as when the file is read.
QString ByteCounter(QStringView line);

/// A problem as an entry of the list: "3行目：…", with the offer in brackets.
QString ProblemEntry(int line, const LineProblem &problem);

/// What the list is headed with and a screen reader is told. @param problems  number of problems; 0 for none
QString ProblemCountText(qsizetype problems);
