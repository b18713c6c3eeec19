#pragma once

#include "platform/kelcore/Types.h"

namespace tses {

/// The id or slot index that names nothing. As a signed number it is -1.
inline constexpr kelcore::uint32 kNoId = 4294967295;

}  // namespace tses
