// Hints to the system about large pieces of memory.
#pragma once

#include <QtGlobal>

#include <vector>

/// Asks for large pages where memory is about to be filled for the first time, so that the system need not bring it in
/// 4 KiB at a time, which for a file of many megabytes takes as long as decoding it. Only a hint: nothing fails.
/// @param begin, bytes  any memory of ours, of any size
void PreferLargePages(void *begin, qsizetype bytes);

/// Makes room in a vector that will be filled from the front; what is not filled takes no memory but the rest of a
/// page.
template <typename T>
void ReserveLargePages(std::vector<T> *values, size_t room)
{
    values->reserve(room);
    PreferLargePages(values->data(), qsizetype(values->capacity() * sizeof(T)));
}
