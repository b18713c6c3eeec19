#pragma once

#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace cli {

/// Returns at most `limit` candidates that `text` may be a misspelling of, best first. Ignores case
/// and omits candidates that have little in common with the text; one that differs in case only is
/// alone.
std::vector<std::string> NearMatches(std::string_view text, std::span<const std::string> candidates,
                                     std::size_t limit = 3);

}  // namespace cli
