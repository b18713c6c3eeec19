#pragma once

#include <gtest/gtest.h>
#include <cstdint>
#include <limits>

#include <orvo/Times.h>

namespace orvo::test {

inline constexpr std::uint32_t kRate = 48000;
inline constexpr auto kLast = std::numeric_limits<std::int64_t>::max();
inline constexpr auto kFirst = std::numeric_limits<std::int64_t>::min();

/// The position of a text that means one.
inline std::int64_t PositionIn(const PositionResult& result) {
    EXPECT_TRUE(result.ok) << (result.messages.empty() ? "" : result.messages.front().what);
    EXPECT_TRUE(result.messages.empty());
    return result.position;
}

/// Why a text means no position.
inline Message RefusalIn(const PositionResult& result) {
    EXPECT_FALSE(result.ok);
    EXPECT_EQ(result.position, 0);
    return result.messages.empty() ? Message() : result.messages.front();
}

}  // namespace orvo::test
