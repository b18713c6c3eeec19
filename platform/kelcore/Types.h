#pragma once

#include <cstdint>

/// The scalar types of every interface between host and plug-in.
namespace kelcore {

using char16 = char16_t;  ///< one UTF-16 code unit
using byte = std::uint8_t;
using int32 = std::int32_t;
using uint32 = std::uint32_t;
using int64 = std::int64_t;
using uint64 = std::uint64_t;

}  // namespace kelcore
