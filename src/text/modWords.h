// SPDX-FileCopyrightText: 2026 The Kotoban developers
// SPDX-License-Identifier: MIT

// The words of a line, as clicked on.
#pragma once

#include <QString>

#include <vector>

/// A run of letters, digits, ' and -, or of Japanese characters in one script.
struct Word
{
    qsizetype start;  ///< 0-based index of its first character
    qsizetype length; ///< in characters
};

/// The words of a line in order.
std::vector<Word> WordsOf(QStringView line);

/// The word that a 0-based character of a line belongs to; empty if there is none.
QString WordAround(QStringView line, qsizetype index);
