#pragma once

#include <cstdint>
#include <limits>

namespace toolkit {

/// The sum, or the end of the range of numbers that it passes.
inline std::int64_t SaturatingSum(std::int64_t left, std::int64_t right) {
    std::int64_t sum = 0;
    if (!__builtin_add_overflow(left, right, &sum)) {
        return sum;
    }
    return right < 0 ? std::numeric_limits<std::int64_t>::min()
                     : std::numeric_limits<std::int64_t>::max();
}

/// The difference, or the end of the range of numbers that it passes.
inline std::int64_t SaturatingDifference(std::int64_t left, std::int64_t right) {
    std::int64_t difference = 0;
    if (!__builtin_sub_overflow(left, right, &difference)) {
        return difference;
    }
    return right < 0 ? std::numeric_limits<std::int64_t>::max()
                     : std::numeric_limits<std::int64_t>::min();
}

}  // namespace toolkit
