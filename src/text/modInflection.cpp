#include "text/modInflection.h"

#include <QHash>

#include <algorithm>

using namespace Qt::Literals::StringLiterals;

namespace {

bool EndsWithOneOf(const QString &word, std::initializer_list<QStringView> endings)
{
    return std::any_of(endings.begin(), endings.end(), [&word](QStringView ending) { return word.endsWith(ending); });
}

/// Whether the characters at two 1-based positions are the same.
bool AreSame(const QString &word, qsizetype first, qsizetype second)
{
    return word[first - 1] == word[second - 1];
}

} // namespace

QStringList CandidateForms(const QString &word)
{
    const qsizetype n = word.size();
    QStringList forms = {word};
    if (EndsWithOneOf(word, {u"s", u"d", u"r"}))
        forms += word.chopped(1);
    if (EndsWithOneOf(word, {u"es", u"ed", u"'s", u"st", u"s'"}))
        forms += word.chopped(2);
    // Without these two words and those made of them, "career" would come out as "care" and "bother" as "both".
    if (word.endsWith(u"er") && !word.contains(u"career") && !word.contains(u"bother"))
        forms += word.chopped(2);
    if (EndsWithOneOf(word, {u"ing", u"est", u"ers"}))
        forms += word.chopped(3);
    if (n >= 5 && word.endsWith(u"ers'"))
        forms += word.chopped(4);
    if (EndsWithOneOf(word, {u"ies", u"ied", u"ier"}))
        forms += word.chopped(3) + u'y';
    if (word.endsWith(u"ing"))
        forms += word.chopped(3) + u'e';
    if (n >= 5 && EndsWithOneOf(word, {u"ies'", u"iers"}))
        forms += word.chopped(4) + u'y';
    // A doubled consonant: stopped, running.
    if (n >= 6 && word.endsWith(u"ed") && AreSame(word, n - 2, n - 3))
        forms += word.chopped(3);
    if (n >= 7 && word.endsWith(u"ing") && AreSame(word, n - 3, n - 4))
        forms += word.chopped(4);
    // "iers" of seven letters and more was cut above already; the second time does no harm.
    if (n >= 7 && EndsWithOneOf(word, {u"iers", u"iest"}))
        forms += word.chopped(4) + u'y';
    return forms;
}

int FindWithInflections(const QStringList &list, const QString &word)
{
    for (const QString &form : CandidateForms(word)) {
        const auto place = std::lower_bound(list.begin(), list.end(), form);
        if (place != list.end() && *place == form)
            return int(place - list.begin()) + 1;
    }
    return 0;
}

std::vector<int> MatchWords(const QStringList &list, const QStringList &words)
{
    // A text says the same words again and again.
    QHash<QString, int> known;
    std::vector<int> indices;
    indices.reserve(size_t(words.size()));
    for (const QString &word : words) {
        auto entry = known.find(word);
        if (entry == known.end())
            entry = known.insert(word, FindWithInflections(list, word.toLower()));
        indices.push_back(*entry);
    }
    return indices;
}
