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

/// The measurements of one piece of work, by contender.
struct Report {
    std::string title;               ///< names the work
    std::vector<std::string> names;  ///< of the contenders, in order
    Timings timings;
    std::map<std::string, MemoryUse> memory{};
    std::uint64_t bytes = 0;     ///< of the file or of all files
    std::uint64_t elements = 0;  ///< in the file; 0: not counted
    /// Of a read: elements between the two places where allocations are counted.
    std::uint64_t steadyElements = 0;
    /// Numbers that only this kind of work has, by key.
    std::vector<std::pair<std::string, double>> more{};
    /// Of a write: whether the file equals that of the plug-in with the reference host.
    std::map<std::string, bool> sameBytes{};
};

std::vector<std::string> NamesOf(const Contenders& contenders);

/// A JSON object. The medians in milliseconds are at its top, by the contenders' names.
std::string ShowAsJson(const Report& report);

/// A table for people.
std::string ShowAsText(const Report& report);

}  // namespace bench
