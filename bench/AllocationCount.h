#pragma once

#include <cstdint>

namespace bench {

/// How many blocks of memory the program has asked for since it began, by whatever function, in all
/// of its libraries. A block that is made larger or smaller counts as another one.
std::uint64_t AllocationCount();

}  // namespace bench
