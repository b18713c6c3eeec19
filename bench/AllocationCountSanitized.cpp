#include "bench/AllocationCount.h"

#include <cstddef>

// The sanitizers have replaced the memory functions and report each block that they allocate. Not
// every compiler ships the header that declares this function.
extern "C" int __sanitizer_install_malloc_and_free_hooks(
    void (*allocated)(const volatile void* block, std::size_t size),
    void (*freed)(const volatile void* block));

namespace bench {
namespace {

std::uint64_t allocations = 0;

void CountBlock(const volatile void*, std::size_t) {
    ++allocations;
}

void IgnoreBlock(const volatile void*) {}

const bool kInstalled = __sanitizer_install_malloc_and_free_hooks(CountBlock, IgnoreBlock) != 0;

}  // namespace

std::uint64_t AllocationCount() {
    return kInstalled ? allocations : 0;
}

}  // namespace bench
