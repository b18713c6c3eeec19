#pragma once

#include <string>

#include "toolkit/view/Shapes.h"

namespace toolkit {

/// About how wide a text is in pixels. The font that will show it is not known here.
double TextWidth(const std::string& text, const TextStyle& style);

/// The text, or as much of it as fits the width with "…" at its end; without it where it would
/// leave room for less than three letters.
std::string FittedText(const std::string& text, const TextStyle& style, double width);

}  // namespace toolkit
