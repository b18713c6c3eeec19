#include "tests/trust/memory/FailingMemory.h"

#include <dlfcn.h>
#include <execinfo.h>

#include <array>
#include <cerrno>
#include <cstdint>

// The system's own allocation functions, which this file replaces.
extern "C" {
void* __libc_malloc(std::size_t size);
void* __libc_calloc(std::size_t count, std::size_t size);
void* __libc_realloc(void* block, std::size_t size);
void* __libc_memalign(std::size_t alignment, std::size_t size);
void __libc_free(void* block);
}

namespace test::memory {
namespace {

constexpr std::size_t kDepth = 24;

struct Place {
    void* block = nullptr;
    int depth = 0;
    std::array<void*, kDepth> callers{};
};

struct State {
    bool counting = false;
    bool remembering = false;
    bool busy = false;  // with its own work
    Failure failure = Failure::None;
    std::size_t at = 0;
    std::size_t allocations = 0;
    std::ptrdiff_t inUse = 0;
    std::array<Place, 1 << 16> places{};  // an open-addressing hash table by address
};

State state;

std::size_t Slot(void* block) {
    return (reinterpret_cast<std::uintptr_t>(block) >> 4) % state.places.size();
}

void Remember(void* block) {
    if (!state.remembering || !state.counting || state.busy) {
        return;
    }
    state.busy = true;
    std::size_t slot = Slot(block);
    for (std::size_t tried = 0; tried < state.places.size(); ++tried) {
        Place& place = state.places[slot];
        if (place.block == nullptr) {
            place.block = block;
            place.depth = ::backtrace(place.callers.data(), kDepth);
            break;
        }
        slot = (slot + 1) % state.places.size();
    }
    state.busy = false;
}

void Forget(void* block) {
    if (!state.remembering) {
        return;
    }
    for (std::size_t slot = Slot(block), tried = 0; tried < 64; ++tried) {
        Place& place = state.places[slot];
        if (place.block == block) {
            place.block = nullptr;
            return;
        }
        slot = (slot + 1) % state.places.size();
    }
}

bool IsToFail() {
    if (!state.counting || state.busy) {
        return false;
    }
    const std::size_t number = state.allocations++;
    return state.failure == Failure::Once      ? number == state.at
           : state.failure == Failure::Onwards ? number >= state.at
                                               : false;
}

template <class Allocate>
void* Allocated(Allocate allocate) {
    if (IsToFail()) {
        errno = ENOMEM;
        return nullptr;
    }
    void* const block = allocate();
    if (block != nullptr) {
        ++state.inUse;
        Remember(block);
    }
    return block;
}

std::string NameOf(void* address) {
    Dl_info info{};
    if (::dladdr(address, &info) == 0 || info.dli_fname == nullptr) {
        return "?";
    }
    const std::string file = info.dli_fname;
    const std::string name = info.dli_sname != nullptr ? info.dli_sname : "";
    return file.substr(file.rfind('/') + 1) + " " + name;
}

}  // namespace

void Begin(Failure failure, std::size_t at) {
    state.failure = failure;
    state.at = at;
    state.allocations = 0;
    state.counting = true;
}

std::size_t End() {
    state.counting = false;
    return state.allocations;
}

std::ptrdiff_t BlocksInUse() {
    return state.inUse;
}

void RememberPlaces() {
    std::array<void*, 2> warmUp{};
    ::backtrace(warmUp.data(), warmUp.size());
    state.places.fill({});
    state.remembering = true;
}

std::vector<std::vector<std::string>> PlacesOfBlocksInUse() {
    state.remembering = false;
    std::vector<std::vector<std::string>> places;
    for (const Place& place : state.places) {
        if (place.block == nullptr) {
            continue;
        }
        std::vector<std::string>& names = places.emplace_back();
        for (int i = 0; i < place.depth; ++i) {
            names.push_back(NameOf(place.callers[static_cast<std::size_t>(i)]));
        }
    }
    return places;
}

}  // namespace test::memory

extern "C" {

void* malloc(std::size_t size) {
    return test::memory::Allocated([&] { return __libc_malloc(size); });
}

void* calloc(std::size_t count, std::size_t size) {
    return test::memory::Allocated([&] { return __libc_calloc(count, size); });
}

void* realloc(void* block, std::size_t size) {
    if (block == nullptr) {
        return malloc(size);
    }
    if (test::memory::IsToFail()) {
        errno = ENOMEM;
        return nullptr;
    }
    test::memory::Forget(block);
    void* const moved = __libc_realloc(block, size);
    if (moved != nullptr) {
        test::memory::Remember(moved);
    }
    return moved;
}

void* memalign(std::size_t alignment, std::size_t size) {
    return test::memory::Allocated([&] { return __libc_memalign(alignment, size); });
}

void* aligned_alloc(std::size_t alignment, std::size_t size) {
    return memalign(alignment, size);
}

int posix_memalign(void** block, std::size_t alignment, std::size_t size) {
    *block = memalign(alignment, size);
    return *block != nullptr ? 0 : ENOMEM;
}

void free(void* block) {
    if (block != nullptr) {
        --test::memory::state.inUse;
        test::memory::Forget(block);
    }
    __libc_free(block);
}

}  // extern "C"
