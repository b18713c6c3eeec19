#pragma once

#include <cstddef>
#include <vector>

namespace orvo::diff {

/// Marks the members of a longest increasing subsequence: what keeps its order while the others
/// move. O(n log n).
std::vector<bool> KeepsOrder(const std::vector<std::size_t>& sequence);

}  // namespace orvo::diff
