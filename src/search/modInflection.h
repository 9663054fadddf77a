// SPDX-FileCopyrightText: 2026 The Kotoban developers
// SPDX-License-Identifier: MIT

// Looks up inflected English words in a sorted word list: a fixed set of suffix rules generates candidate base forms,
// and the first candidate found in the list wins. Indices are numbered from 1; 0 means none.
#pragma once

#include <QString>
#include <QStringList>
#include <QVarLengthArray>

#include <vector>

/// A candidate base form: a prefix of the word and at most one character appended to it.
struct BaseForm
{
    qsizetype kept;     ///< length of the prefix
    char16_t added = 0; ///< 0 = none
};

/// The candidates for a lower-case word: first the word itself, then the others in the order of the rules. May contain
/// duplicates.
QVarLengthArray<BaseForm, 16> BaseForms(QStringView word);

/// BaseForms as strings.
QStringList CandidateForms(const QString &word);

/// Index of the first candidate for a word that is in a list, or 0.
/// @param list  sorted in ascending binary order
int FindWithInflections(const QStringList &list, const QString &word);

/// Index of each word, converted to lower case first.
std::vector<int> MatchWords(const QStringList &list, const QStringList &words);
