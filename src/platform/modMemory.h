// Hints to the system about large pieces of memory.
#pragma once

#include <QtGlobal>

#include <vector>

/// Asks for large pages where memory is about to be filled for the first time. In pages of 4 KiB the system brings in a
/// file of many megabytes as slowly as it is decoded: the first load of a million lines took 1.7 times the processor's
/// time without the hint. Nothing fails where it is not followed.
/// @param begin, bytes  any memory of ours, of any size
void PreferLargePages(void *begin, qsizetype bytes);

/// Reserves capacity in a vector that will be filled from the front. What is not filled takes no memory but the rest of
/// a page.
template <typename T>
void ReserveLargePages(std::vector<T> *values, size_t capacity)
{
    values->reserve(capacity);
    PreferLargePages(values->data(), qsizetype(values->capacity() * sizeof(T)));
}
