#pragma once

#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>

/// Called by the fuzzer with each input. Returns 0, or -1 to keep the input out of the corpus.
extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size);

/// Aborts, in release builds too, if an invariant is violated.
inline void require(bool holds, const char *file = __builtin_FILE(), int line = __builtin_LINE()) {
    if (!holds) {
        std::fprintf(stderr, "%s:%d: invariant violated\n", file, line);
        std::abort();
    }
}
