#pragma once

#include <optional>

#include <orvo/Layout.h>
#include "toolkit/view/Colours.h"

namespace toolkit {

/// "added", "removed" and so on; empty for what stayed the same.
const char* WordOf(orvo::LayoutChange change);

/// The hue that marks a change, in degrees; nothing for what stayed the same.
std::optional<double> HueOf(orvo::LayoutChange change);

/// The colour of that hue.
std::optional<Colour> ColourOf(const ThemeColours& theme, orvo::LayoutChange change);

}  // namespace toolkit
