// The counts come from the C library, or from the sanitizer where that stands in its place.
#include "tests/simulation/Meter.h"

#include <malloc.h>

#include <filesystem>
#include <system_error>

#include "tests/support/Allocations.h"

#ifdef __SANITIZE_ADDRESS__
extern "C" std::size_t __sanitizer_get_current_allocated_bytes();
#endif

namespace simulation {

std::int64_t Meter::Count(const std::function<void()>& Do) { return support::Allocations(Do); }

void Meter::Sentences(std::int64_t lCount, std::int64_t lAllocations) {
    m_lSentences += lCount;
    m_lForSentences += lAllocations;
}

void Meter::Tick(std::int64_t lAllocations) {
    ++m_lTicks;
    m_lForTicks += lAllocations;
}

std::int64_t MemoryInUse() {
#ifdef __SANITIZE_ADDRESS__
    return static_cast<std::int64_t>(__sanitizer_get_current_allocated_bytes());
#else
    const struct mallinfo2 t = ::mallinfo2();
    return static_cast<std::int64_t>(t.uordblks + t.hblkhd);
#endif
}

int OpenDescriptors(std::string_view sLeftOut) {
    int iCount = -1;  // less the folder's own
    for (const auto& tEntry : std::filesystem::directory_iterator("/proc/self/fd")) {
        std::error_code tFault;
        const auto tFile = std::filesystem::read_symlink(tEntry.path(), tFault);
        if (tFile.filename() != sLeftOut) ++iCount;
    }
    return iCount;
}

}  // namespace simulation
