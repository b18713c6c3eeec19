#pragma once

#include "platform/kelcore/Types.h"

namespace kelmediatypes {

/// How wide a pixel is in relation to its height.
struct PixelAspectRatio {
    kelcore::uint32 numerator;
    kelcore::uint32 denominator;

    friend bool operator==(const PixelAspectRatio&, const PixelAspectRatio&) = default;
};

/// The ratio of media that states none. Its denominator is 1, so that dividing by it is safe.
inline constexpr PixelAspectRatio kPixelAspectRatio_Unknown{0, 1};

}  // namespace kelmediatypes
