// SPDX-FileCopyrightText: 2026 The Kotoban developers
// SPDX-License-Identifier: MIT

#include "search/modInflection.h"

#include <algorithm>
#include <string_view>

namespace {

bool EndsWithOneOf(std::u16string_view word, std::initializer_list<std::u16string_view> endings)
{
    return std::any_of(endings.begin(), endings.end(),
                       [word](std::u16string_view ending) { return word.ends_with(ending); });
}

/// Whether the characters at two 1-based positions are the same.
bool AreSame(std::u16string_view word, qsizetype first, qsizetype second)
{
    return word[size_t(first) - 1] == word[size_t(second) - 1];
}

} // namespace

QVarLengthArray<BaseForm, 16> BaseForms(QStringView text)
{
    const qsizetype n = text.size();
    QVarLengthArray<BaseForm, 16> forms = {{n}};
    const std::u16string_view word(text.utf16(), size_t(n));
    // Fast path: most words do not end in the last letter of any suffix.
    if (word.empty() || std::u16string_view(u"sdrgt'").find(word.back()) == std::u16string_view::npos)
        return forms;
    const auto add = [&forms, n](qsizetype cut, char16_t added = 0) { forms.push_back({n - cut, added}); };
    if (EndsWithOneOf(word, {u"s", u"d", u"r"}))
        add(1);
    if (EndsWithOneOf(word, {u"es", u"ed", u"'s", u"st", u"s'"}))
        add(2);
    // Words containing these two are excluded; otherwise "career" would yield "care" and "bother" would yield "both".
    if (word.ends_with(u"er") && !text.contains(u"career") && !text.contains(u"bother"))
        add(2);
    if (EndsWithOneOf(word, {u"ing", u"est", u"ers"}))
        add(3);
    if (n >= 5 && word.ends_with(u"ers'"))
        add(4);
    if (EndsWithOneOf(word, {u"ies", u"ied", u"ier"}))
        add(3, u'y');
    if (word.ends_with(u"ing"))
        add(3, u'e');
    if (n >= 5 && EndsWithOneOf(word, {u"ies'", u"iers"}))
        add(4, u'y');
    // A doubled consonant: stopped, running.
    if (n >= 6 && word.ends_with(u"ed") && AreSame(word, n - 2, n - 3))
        add(3);
    if (n >= 7 && word.ends_with(u"ing") && AreSame(word, n - 3, n - 4))
        add(4);
    // "iers" has been handled above; the duplicate candidate is harmless.
    if (n >= 7 && EndsWithOneOf(word, {u"iers", u"iest"}))
        add(4, u'y');
    return forms;
}

QStringList CandidateForms(const QString &word)
{
    QStringList forms;
    for (const BaseForm &form : BaseForms(word))
        forms += word.first(form.kept) + QString(form.added == 0 ? 0 : 1, QChar(form.added));
    return forms;
}

int FindWithInflections(const QStringList &list, const QString &word)
{
    for (const QString &form : CandidateForms(word)) {
        const auto found = std::lower_bound(list.begin(), list.end(), form);
        if (found != list.end() && *found == form)
            return int(found - list.begin()) + 1;
    }
    return 0;
}

std::vector<int> MatchWords(const QStringList &list, const QStringList &words)
{
    std::vector<int> indices(size_t(words.size()));
    std::ranges::transform(words, indices.begin(),
                           [&](const QString &word) { return FindWithInflections(list, word.toLower()); });
    return indices;
}
