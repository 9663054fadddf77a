// SPDX-FileCopyrightText: 2026 The Kotoban developers
// SPDX-License-Identifier: MIT

#include "platform/modCollation.h"

#include <algorithm>
#include <numeric>
#include <windows.h>

namespace {

/// Bytes that compare like the texts they stand for; none for an empty text. QCollatorSortKey is of no use: on Windows
/// it compares pairs of these bytes as little-endian numbers, which is another order.
QByteArray SortKey(const QString &text)
{
    const auto map = [&text](QByteArray *key) {
        return LCMapStringEx(L"ja-JP", LCMAP_SORTKEY, reinterpret_cast<LPCWSTR>(text.utf16()), int(text.size()),
                             reinterpret_cast<LPWSTR>(key ? key->data() : nullptr), key ? int(key->size()) : 0, nullptr,
                             nullptr, 0);
    };
    QByteArray key(map(nullptr), Qt::Uninitialized);
    key.resize(map(&key));
    return key;
}

} // namespace

std::vector<qsizetype> CollatedOrder(const QStringList &texts)
{
    std::vector<QByteArray> keys;
    keys.reserve(size_t(texts.size()));
    std::transform(texts.begin(), texts.end(), std::back_inserter(keys), SortKey);
    std::vector<qsizetype> order(keys.size());
    std::iota(order.begin(), order.end(), 0);
    std::stable_sort(order.begin(), order.end(),
                     [&keys](qsizetype one, qsizetype other) { return keys[size_t(one)] < keys[size_t(other)]; });
    return order;
}
