// In place of the system's own: operator new, Qt's strings and lists all come by here.
#include "tests/support/Allocations.h"

#include <cstddef>
#include <cstdlib>

namespace support {

namespace {

thread_local bool bCounting = false;  // other threads allocate as they like
thread_local std::int64_t lAllocations = 0;

}  // namespace

void CountAllocations(bool bCount) {
    if (bCount) lAllocations = 0;
    bCounting = bCount;
}

std::int64_t CountedAllocations() { return lAllocations; }

static void Allocated() {
    if (bCounting) ++lAllocations;
}

}  // namespace support

#ifdef __has_feature  // as clang tells
#if __has_feature(address_sanitizer)
#define __SANITIZE_ADDRESS__
#endif
#endif

#ifdef __SANITIZE_ADDRESS__
extern "C" int __sanitizer_install_malloc_and_free_hooks(void (*tMalloc)(const volatile void*, std::size_t),
                                                         void (*tFree)(const volatile void*));
static void CountAllocation(const volatile void*, std::size_t) { support::Allocated(); }
[[maybe_unused]] static const int iHooked =
    __sanitizer_install_malloc_and_free_hooks(CountAllocation, [](const volatile void*) {});
#else
extern "C" {
void* __libc_malloc(std::size_t lSize);
void* __libc_calloc(std::size_t lCount, std::size_t lSize);
void* __libc_realloc(void* p, std::size_t lSize);
void* __libc_memalign(std::size_t lAlignment, std::size_t lSize);
void* malloc(std::size_t lSize) {
    support::Allocated();
    return __libc_malloc(lSize);
}
void* calloc(std::size_t lCount, std::size_t lSize) {
    support::Allocated();
    return __libc_calloc(lCount, lSize);
}
void* realloc(void* p, std::size_t lSize) {
    support::Allocated();
    return __libc_realloc(p, lSize);
}
void* aligned_alloc(std::size_t lAlignment, std::size_t lSize) {
    support::Allocated();
    return __libc_memalign(lAlignment, lSize);
}
}
#endif
