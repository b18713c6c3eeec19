#pragma once

#include <cstdint>
#include <limits>
#include <optional>

namespace orvo::times {

/// Holds the product of a position with a rate and a scale.
__extension__ typedef __int128 Wide;

// Quotients by divisors above 0.

constexpr Wide Floor(Wide dividend, Wide divisor) {
    return dividend / divisor - (dividend % divisor < 0 ? 1 : 0);
}

constexpr Wide Ceil(Wide dividend, Wide divisor) {
    return -Floor(-dividend, divisor);
}

/// To the nearest number, halves away from 0. The dividend has at most 125 bits.
constexpr Wide Nearest(Wide dividend, Wide divisor) {
    return dividend < 0 ? -Nearest(-dividend, divisor) : (2 * dividend + divisor) / (2 * divisor);
}

/// Nothing for what a position cannot hold.
constexpr std::optional<std::int64_t> AsPosition(Wide samples) {
    using Limits = std::numeric_limits<std::int64_t>;
    return samples >= Limits::min() && samples <= Limits::max()
               ? std::optional(static_cast<std::int64_t>(samples))
               : std::nullopt;
}

/// The position at `count * samples / units` or else the next one: where `count` of equal units
/// begin, of which so many last so many samples. Both are above 0 and have at most 60 bits.
constexpr std::optional<std::int64_t> FirstSampleOf(Wide count, Wide samples, Wide units) {
    const Wide whole = Floor(count, units);
    // A product of more than this many may have more than 128 bits.
    if (!AsPosition(whole)) {
        return std::nullopt;
    }
    return AsPosition(whole * samples + Ceil((count - whole * units) * samples, units));
}

}  // namespace orvo::times
