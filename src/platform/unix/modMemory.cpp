// SPDX-FileCopyrightText: 2026 The Kotoban developers
// SPDX-License-Identifier: MIT

#include "platform/modMemory.h"

#include <cstdint>
#include <sys/mman.h>

void PreferLargePages([[maybe_unused]] void *begin, [[maybe_unused]] qsizetype bytes)
{
#ifdef MADV_HUGEPAGE
    // Only whole large pages: the memory beside them belongs to others.
    constexpr std::uintptr_t largePage = std::uintptr_t(2) << 20;
    const auto address = reinterpret_cast<std::uintptr_t>(begin);
    const std::uintptr_t first = (address + largePage - 1) & ~(largePage - 1);
    const std::uintptr_t end = (address + std::uintptr_t(bytes)) & ~(largePage - 1);
    if (first < end)
        madvise(reinterpret_cast<void *>(first), end - first, MADV_HUGEPAGE);
#endif
}
