// What the fuzz targets share: promises that end the program where they are not held, and what a piece of work took,
// counted and never timed. Each target is a file of its own with one LLVMFuzzerTestOneInput.
#pragma once

#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <string_view>

#include "tests/support/Allocations.h"

namespace fuzz {

// Ends the program, with the place, where bHeld is false.
inline void Promise(bool bHeld, const char* sFile = __builtin_FILE(), int iLine = __builtin_LINE()) {
    if (bHeld) return;
    std::fprintf(stderr, "%s:%d: a promise is not held\n", sFile, iLine);
    std::abort();
}

inline std::string_view Text(const std::uint8_t* pData, std::size_t iSize) {
    return {reinterpret_cast<const char*>(pData), iSize};
}

// Blocks of code that this thread has entered so far. Counted in the build of the preset fuzz, 0 in the others.
extern "C" std::uint64_t FuzzSteps();

struct Cost {
    std::uint64_t lSteps = 0;
    std::int64_t lAllocations = 0;
};

template <class Do>
Cost CostOf(const Do& tDo) {
    const std::uint64_t lBefore = FuzzSteps();
    const std::int64_t lAllocations = support::Allocations(tDo);
    return {FuzzSteps() - lBefore, lAllocations};
}

// No more than tFixed, and tByte for each of so many bytes.
inline void PromiseLinear(const Cost& t, std::size_t iBytes, const Cost& tFixed, const Cost& tByte,
                          const char* sFile = __builtin_FILE(), int iLine = __builtin_LINE()) {
    const bool bSteps = t.lSteps <= tFixed.lSteps + tByte.lSteps * iBytes;
    const bool bAllocations =
        t.lAllocations <= tFixed.lAllocations + tByte.lAllocations * static_cast<std::int64_t>(iBytes);
    if (bSteps && bAllocations) return;
    std::fprintf(stderr, "%zu bytes took %llu steps and %lld allocations\n", iBytes,
                 static_cast<unsigned long long>(t.lSteps), static_cast<long long>(t.lAllocations));
    Promise(false, sFile, iLine);
}

}  // namespace fuzz

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* pData, std::size_t iSize);
