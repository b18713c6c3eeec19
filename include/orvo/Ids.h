#pragma once

#include <cstdint>

namespace orvo {

/// The unsigned id or index that names nothing.
inline constexpr std::uint32_t kNoId = 4294967295;

/// The signed id or index that names nothing.
inline constexpr std::int32_t kNone = -1;

}  // namespace orvo
