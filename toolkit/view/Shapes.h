#pragma once

#include <optional>

#include "toolkit/view/Colours.h"

namespace toolkit {

/// A place in pixels; y grows downwards.
struct Point {
    double x = 0;
    double y = 0;
};

/// A rectangle in pixels.
struct Area {
    double x = 0;
    double y = 0;
    double width = 0;
    double height = 0;

    double Right() const { return x + width; }
    double Bottom() const { return y + height; }
};

/// How a shape is painted; without a colour, not at all.
struct Paint {
    std::optional<Colour> fill{};
    std::optional<Colour> stroke{};
    double strokeWidth = 1;
    double opacity = 1;  ///< of the fill, and of the stroke
    bool dashed = false;
};

enum class Anchor { Start, Middle, End };

struct TextStyle {
    Colour colour{};
    double size = 11;
    bool bold = false;
    Anchor anchor = Anchor::Start;
};

}  // namespace toolkit
