#pragma once

#include <cstdint>
#include <optional>
#include <string>

#include "bench/Contender.h"

namespace bench {

/// What one run needs of memory.
struct MemoryUse {
    std::uint64_t peakKib = 0;  ///< beyond what was in use before
    std::uint64_t allocations = 0;
    /// Of a read: those between two places in the file, its begin and end left out.
    std::optional<std::uint64_t> steadyAllocations{};
};

/// Measures a second run: the first one warms up. Wants a program that does nothing else.
/// @throws std::runtime_error if the work could not be done
MemoryUse MeasureMemory(const Contender& contender);

/// What a run allocates, of work that may come to nothing.
std::uint64_t CountAllocations(const Contender& contender);

/// The form in which one run of this program tells another of it.
std::string ToText(const MemoryUse& use);
MemoryUse MemoryUseFromText(const std::string& text);

}  // namespace bench
