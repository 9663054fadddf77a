// What must hold for any input. A fuzzer takes the end of the process for a finding.
#pragma once

#include <cstdio>
#include <cstdlib>

#define Require(condition)                                                                                             \
    do {                                                                                                               \
        if (!(condition)) {                                                                                            \
            std::fprintf(stderr, "%s:%d: does not hold: %s\n", __FILE__, __LINE__, #condition);                        \
            std::abort();                                                                                              \
        }                                                                                                              \
    } while (false)
