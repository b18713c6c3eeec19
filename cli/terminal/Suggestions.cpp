#include "cli/terminal/Suggestions.h"

#include <algorithm>
#include <cctype>
#include <numeric>
#include <utility>

namespace cli {
namespace {

std::string Lower(std::string_view text) {
    std::string lower(text);
    std::transform(lower.begin(), lower.end(), lower.begin(), [](unsigned char character) {
        return static_cast<char>(std::tolower(character));
    });
    return lower;
}

/// The number of characters to insert, remove or replace to turn one text into the other.
std::size_t EditDistance(std::string_view one, std::string_view other) {
    std::vector<std::size_t> row(other.size() + 1);
    std::iota(row.begin(), row.end(), std::size_t{0});
    for (std::size_t i = 0; i < one.size(); ++i) {
        std::size_t diagonal = std::exchange(row[0], i + 1);
        for (std::size_t j = 0; j < other.size(); ++j) {
            const std::size_t replaced = diagonal + (one[i] == other[j] ? 0 : 1);
            diagonal = std::exchange(row[j + 1], std::min({replaced, row[j] + 1, row[j + 1] + 1}));
        }
    }
    return row.back();
}

}  // namespace

std::vector<std::string> NearMatches(std::string_view text, std::span<const std::string> candidates,
                                     std::size_t limit) {
    const std::string sought = Lower(text);
    // For a short text at most half of it, so that suggestions have something in common with it.
    const std::size_t tolerance =
        std::min((sought.size() + 1) / 2, std::max<std::size_t>(3, sought.size() / 3));
    std::vector<std::pair<std::size_t, std::string>> near;
    for (const std::string& candidate : candidates) {
        const std::string lower = Lower(candidate);
        if (lower == sought) {
            return {candidate};
        }
        const bool contained = !sought.empty() && lower.find(sought) != std::string::npos;
        const std::size_t distance = contained ? 1 : EditDistance(sought, lower);
        if (distance <= tolerance) {
            near.emplace_back(distance, candidate);
        }
    }
    std::stable_sort(near.begin(), near.end(),
                     [](const auto& left, const auto& right) { return left.first < right.first; });
    std::vector<std::string> names;
    for (std::size_t i = 0; i < std::min(limit, near.size()); ++i) {
        names.push_back(near[i].second);
    }
    return names;
}

}  // namespace cli
