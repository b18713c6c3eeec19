#pragma once

#include <cstdint>

namespace bench {

/// How many blocks of memory the program and all of its libraries have allocated since the start,
/// by any function. Resizing a block counts as an allocation.
std::uint64_t AllocationCount();

}  // namespace bench
