#pragma once

#include "platform/kelcore/Types.h"

namespace tses {

/// The id, or index of a slot, that names nothing. Reads as -1 where the number is signed.
inline constexpr kelcore::uint32 kNoId = 4294967295;

}  // namespace tses
