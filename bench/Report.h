#pragma once

#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "bench/Contender.h"
#include "bench/Memory.h"
#include "bench/Timing.h"

namespace bench {

/// What was measured of one piece of work, by contender.
struct Report {
    std::string title;               ///< what the work was
    std::vector<std::string> names;  ///< the contenders in their order
    Timings timings;
    std::map<std::string, MemoryUse> memory{};
    std::uint64_t bytes = 0;     ///< of the file, or of all files
    std::uint64_t elements = 0;  ///< in it; 0: not counted
    /// Between the two places of a read where the allocations are counted.
    std::uint64_t steadyElements = 0;
    /// Facts of one kind of work alone, as numbers under their keys.
    std::vector<std::pair<std::string, double>> more{};
    /// Of a write: whether the file is the one of the plug-in with the reference host.
    std::map<std::string, bool> sameBytes{};
};

std::vector<std::string> NamesOf(const Contenders& contenders);

/// One object for programs; the medians in milliseconds stand at its top by the contenders' names.
std::string ShowAsJson(const Report& report);

/// A table for people.
std::string ShowAsText(const Report& report);

}  // namespace bench
