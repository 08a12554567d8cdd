// Shared by the fuzz targets: a property that must hold for every input.
// A failed check prints what broke and aborts, which libFuzzer reports as a
// crash and saves the input.
#ifndef ZAR_FUZZ_FUZZCHECK_H
#define ZAR_FUZZ_FUZZCHECK_H

#include <cstdio>
#include <cstdlib>

#define FUZZ_CHECK(cond, what)                                                                \
    do {                                                                                      \
        if (!(cond)) {                                                                        \
            std::fprintf(stderr, "fuzz check failed at %s:%d: %s (%s)\n", __FILE__, __LINE__, \
                         what, #cond);                                                        \
            std::abort();                                                                     \
        }                                                                                     \
    } while (0)

#endif
