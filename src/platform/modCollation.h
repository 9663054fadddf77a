// SPDX-FileCopyrightText: 2026 The Kotoban developers
// SPDX-License-Identifier: MIT

// The Japanese collation order.
#pragma once

#include <QStringList>

#include <vector>

/// Sorts texts in the order of the system's Japanese collation; with a Qt without ICU, in that of the user's locale.
/// @return the indices of all texts, from 0, in that order; texts that collate alike keep theirs
std::vector<qsizetype> CollatedOrder(const QStringList &texts);
