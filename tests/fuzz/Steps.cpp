// Counts the blocks of code that are entered: the compiler calls this at the beginning of each (trace-pc). The fuzzer's
// library has an operation of that name, which ends the program; the linker (--wrap) puts this one in its place.
#include "tests/fuzz/Harness.h"

#if defined(__clang__)
#define UNCOUNTED __attribute__((no_sanitize("coverage")))
#else
#define UNCOUNTED
#endif

static thread_local std::uint64_t lSteps = 0;

extern "C" UNCOUNTED void __wrap___sanitizer_cov_trace_pc() { ++lSteps; }

extern "C" UNCOUNTED std::uint64_t FuzzSteps() { return lSteps; }
