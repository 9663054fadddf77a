// SPDX-FileCopyrightText: 2026 The Kotoban developers
// SPDX-License-Identifier: MIT

// Checks a property that must hold for any input. It aborts on failure, which a fuzzer counts as a finding.
#pragma once

#include <cstdio>
#include <cstdlib>

#define Require(condition)                                                                                             \
    do {                                                                                                               \
        if (!(condition)) {                                                                                            \
            std::fprintf(stderr, "%s:%d: requirement failed: %s\n", __FILE__, __LINE__, #condition);                   \
            std::abort();                                                                                              \
        }                                                                                                              \
    } while (false)
