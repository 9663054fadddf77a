// SPDX-FileCopyrightText: 2026 The Kotoban developers
// SPDX-License-Identifier: MIT

// Hints to the system about large memory blocks.
#pragma once

#include <QtGlobal>

#include <vector>

/// Requests large pages for memory that is about to be filled for the first time. With pages of 4 KiB, page faults cost
/// as much as decoding a file of many megabytes: without the hint the first load of a million lines took 1.7 times the
/// CPU time. Harmless where the system ignores it.
/// @param begin, bytes  any memory of this process, of any size
void PreferLargePages(void *begin, qsizetype bytes);

/// Reserves capacity in a vector that will be filled from the front. Unused capacity costs no memory beyond the rest of
/// the page in use.
template <typename T>
void ReserveLargePages(std::vector<T> *values, size_t capacity)
{
    values->reserve(capacity);
    PreferLargePages(values->data(), qsizetype(values->capacity()) * qsizetype(sizeof(T)));
}
