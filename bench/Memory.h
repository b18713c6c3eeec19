#pragma once

#include <cstdint>
#include <optional>
#include <string>

#include "bench/Contender.h"

namespace bench {

/// The memory that one run uses.
struct MemoryUse {
    std::uint64_t peakKib = 0;  ///< above what was in use before
    std::uint64_t allocations = 0;
    /// Of a read: allocations between two places in the file, away from its start and end.
    std::optional<std::uint64_t> steadyAllocations{};
};

/// Measures the second of two runs. The process must do nothing else.
/// @throws std::runtime_error if the work failed
MemoryUse MeasureMemory(const Contender& contender);

/// How often one run allocates, even if the work fails.
std::uint64_t CountAllocations(const Contender& contender);

/// The form in which one process of this program reports to another.
std::string ToText(const MemoryUse& use);
MemoryUse MemoryUseFromText(const std::string& text);

}  // namespace bench
