#pragma once

#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>

/// What a fuzzer calls with each input; 0 unless the input shall not join the corpus.
extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size);

/// Aborts in every kind of build when a promise is broken.
inline void require(bool isKept, const char *file = __builtin_FILE(), int line = __builtin_LINE()) {
    if (!isKept) {
        std::fprintf(stderr, "%s:%d: a promise is broken\n", file, line);
        std::abort();
    }
}
