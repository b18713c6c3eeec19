#pragma once

#include <cstdint>
#include <optional>

namespace toolkit::interchange::otio {

/// Counts a second, as a fraction: 23.976 and 59.94 mean n * 1000/1001.
struct Rate {
    long double numerator = 1;
    long double denominator = 1;

    /// No value unless the rate is positive and finite.
    static std::optional<Rate> Of(double rate);

    /// As files have it.
    double Value() const { return static_cast<double>(numerator / denominator); }

    /// A count of this rate in that of another one. Exact wherever the result is a whole number.
    long double To(const Rate& other, long double count) const;

    friend bool operator==(const Rate&, const Rate&) = default;
};

/// The nearest whole number. `value` is finite and below 2^62.
std::int64_t Rounded(long double value);

/// The most that files count exactly, as they hold numbers of double precision.
inline constexpr std::int64_t kMostCounted = std::int64_t{1} << 53;

}  // namespace toolkit::interchange::otio
