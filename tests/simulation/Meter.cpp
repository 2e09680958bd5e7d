// The counts come from the C library, or from the sanitizer where that stands in its place.
#include "tests/simulation/Meter.h"

#include <malloc.h>

#include <filesystem>
#include <iterator>

#include "tests/support/Allocations.h"

#ifdef __SANITIZE_ADDRESS__
extern "C" std::size_t __sanitizer_get_current_allocated_bytes();
#endif

namespace simulation {

void Meter::Sentences(std::int64_t lCount, const std::function<void()>& Do) {
    m_lSentences += lCount;
    m_lForSentences += support::Allocations(Do);
}

void Meter::Tick(bool bRecording, const std::function<void()>& Do) {
    if (!bRecording) return Do();
    ++m_lTicks;
    m_lForTicks += support::Allocations(Do);
}

std::int64_t MemoryInUse() {
#ifdef __SANITIZE_ADDRESS__
    return static_cast<std::int64_t>(__sanitizer_get_current_allocated_bytes());
#else
    const struct mallinfo2 t = ::mallinfo2();
    return static_cast<std::int64_t>(t.uordblks + t.hblkhd);
#endif
}

int OpenDescriptors() {
    const std::filesystem::directory_iterator it("/proc/self/fd");
    return static_cast<int>(std::distance(begin(it), end(it))) - 1;  // less the folder's own
}

}  // namespace simulation
