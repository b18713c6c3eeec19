#pragma once

#include <optional>

#include <orvo/Layout.h>
#include "toolkit/view/Colours.h"

namespace toolkit {

/// "added", "removed" and so on; empty for what stayed the same.
const char* WordOf(orvo::LayoutChange change);

/// How a change is marked; nothing for what stayed the same.
std::optional<Colour> ColourOf(const ThemeColours& theme, orvo::LayoutChange change);

}  // namespace toolkit
