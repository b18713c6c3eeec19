#include "tests/platform/support/FailingAllocations.h"

#include <cstdlib>
#include <new>

namespace {

constexpr std::size_t kNever = static_cast<std::size_t>(-1);

thread_local std::size_t allocationsUntilFailure = kNever;
thread_local bool failed = false;

void* Allocate(std::size_t size) {
    if (allocationsUntilFailure != kNever && allocationsUntilFailure-- == 0) {
        failed = true;
        throw std::bad_alloc();
    }
    if (void* const memory = std::malloc(size == 0 ? 1 : size)) {
        return memory;
    }
    throw std::bad_alloc();
}

}  // namespace

void* operator new(std::size_t size) {
    return Allocate(size);
}
void* operator new[](std::size_t size) {
    return Allocate(size);
}
void operator delete(void* memory) noexcept {
    std::free(memory);
}
void operator delete[](void* memory) noexcept {
    std::free(memory);
}
void operator delete(void* memory, std::size_t) noexcept {
    std::free(memory);
}
void operator delete[](void* memory, std::size_t) noexcept {
    std::free(memory);
}

namespace test {

FailingAllocation::FailingAllocation(std::size_t number) {
    failed = false;
    allocationsUntilFailure = number;
}

FailingAllocation::~FailingAllocation() {
    allocationsUntilFailure = kNever;
}

bool FailingAllocation::Happened() {
    return failed;
}

}  // namespace test
