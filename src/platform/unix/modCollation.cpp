// SPDX-FileCopyrightText: 2026 The Kotoban developers
// SPDX-License-Identifier: MIT

#include "platform/modCollation.h"

#include <QCollator>

#include <algorithm>
#include <numeric>

namespace {

QLocale CollationLocale()
{
#ifdef KOTOBAN_STATIC
    return QLocale::system().collation(); // without ICU, Qt knows only the C library's collation
#else
    return QLocale(QLocale::Japanese, QLocale::Japan);
#endif
}

} // namespace

std::vector<qsizetype> CollatedOrder(const QStringList &texts)
{
    const QCollator collator(CollationLocale());
    std::vector<QCollatorSortKey> keys;
    keys.reserve(size_t(texts.size()));
    for (const QString &text : texts)
        keys.push_back(collator.sortKey(text));
    std::vector<qsizetype> order(keys.size());
    std::iota(order.begin(), order.end(), 0);
    std::stable_sort(order.begin(), order.end(), [&keys](qsizetype one, qsizetype other) {
        return keys[size_t(one)].compare(keys[size_t(other)]) < 0;
    });
    return order;
}
