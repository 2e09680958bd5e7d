// How often memory is asked for: every allocation of a thread is counted, by whomever. A program that links
// Allocations.cpp has the system's allocation functions replaced by counting ones.
#pragma once

#include <cstdint>

namespace support {

void CountAllocations(bool bCount);  // of this thread, from zero; or no longer
std::int64_t CountedAllocations();

// How often memory was asked for meanwhile, on this thread.
template <class Do>
std::int64_t Allocations(const Do& tDo) {
    CountAllocations(true);
    tDo();
    CountAllocations(false);
    return CountedAllocations();
}

}  // namespace support
