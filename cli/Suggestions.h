#pragma once

#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace cli {

/// The candidates that `text` may be a slip for, the nearest first, at most `limit`. Case does not
/// count; candidates that share little with it are left out.
std::vector<std::string> NearMatches(std::string_view text, std::span<const std::string> candidates,
                                     std::size_t limit = 3);

}  // namespace cli
