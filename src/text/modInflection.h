// Finds an English word in a sorted word list although it stands in the text in an inflected form: a fixed set of
// suffix rules makes candidate base forms, and the first candidate that the list holds wins. Indices are numbered from
// 1; 0 means none.
#pragma once

#include <QString>
#include <QStringList>
#include <QVarLengthArray>

#include <vector>

/// A candidate base form: the first characters of the word, and perhaps another one behind them.
struct BaseForm
{
    qsizetype kept;
    char16_t added = 0; ///< 0 = none

    QString Of(QStringView word) const;
};

/// The candidates of a word, which stands in lower case. The first is the word itself, the others follow in the order
/// of the rules; the same candidate may stand twice.
QVarLengthArray<BaseForm, 16> BaseForms(QStringView word);

/// The same as texts.
QStringList CandidateForms(const QString &word);

/// Index of the first candidate of a word that a list holds, or 0.
/// @param list  sorted in ascending binary order
int FindWithInflections(const QStringList &list, const QString &word);

/// The index of each word, each put in lower case first.
std::vector<int> MatchWords(const QStringList &list, const QStringList &words);
