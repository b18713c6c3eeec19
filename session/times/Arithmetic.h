#pragma once

#include <cstdint>
#include <limits>
#include <optional>

#include <boost/config.hpp>

namespace orvo::times {

/// Holds the product of a position with a rate and a scale.
using Wide = boost::int128_type;

// Divisors are above 0.

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

/// No value if a position cannot hold the samples.
constexpr std::optional<std::int64_t> AsPosition(Wide samples) {
    using Limits = std::numeric_limits<std::int64_t>;
    return samples >= Limits::min() && samples <= Limits::max()
               ? std::optional(static_cast<std::int64_t>(samples))
               : std::nullopt;
}

/// The first position that is not before the end of `count` units, where `units` units last
/// `samples` samples. Both are above 0 and have at most 60 bits.
constexpr std::optional<std::int64_t> FirstSampleOf(Wide count, Wide samples, Wide units) {
    const Wide whole = Floor(count, units);
    // Keeps the product below within 128 bits; the result would exceed 64 bits anyway.
    if (!AsPosition(whole)) {
        return std::nullopt;
    }
    return AsPosition(whole * samples + Ceil((count - whole * units) * samples, units));
}

}  // namespace orvo::times
