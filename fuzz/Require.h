// SPDX-License-Identifier: MIT
#pragma once

#include <cstdio>
#include <cstdlib>

/*! Ends the process with \a promise when it is not kept, as a fault that the fuzzer records. */
inline void require(bool isKept, const char *promise)
{
    if (isKept)
        return;
    std::fprintf(stderr, "not kept: %s\n", promise);
    std::abort();
}
