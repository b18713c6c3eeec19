#pragma once

#include "platform/kelcore/Types.h"

namespace kelmediatypes {

/// The width of a pixel divided by its height.
struct PixelAspectRatio {
    kelcore::uint32 numerator;
    kelcore::uint32 denominator;

    friend bool operator==(const PixelAspectRatio&, const PixelAspectRatio&) = default;
};

/// For media that state no ratio. The denominator is 1, so that dividing by it is safe.
inline constexpr PixelAspectRatio kPixelAspectRatio_Unknown{0, 1};

}  // namespace kelmediatypes
