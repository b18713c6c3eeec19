#pragma once

#include "toolkit/interchange/Format.h"
#include "toolkit/interchange/ardour/ArdourXml.h"
#include "toolkit/interchange/ardour/Regions.h"

namespace toolkit::interchange {

/// Writes a region with its fades and gain. Reports what the gain, pan and mute of its clip lose.
/// @param place        of the clip
/// @param firstSource  the id of the first source
void WriteArdourRegion(const ArdourRegion& region, const ModelPath& place,
                       std::uint64_t firstSource, ArdourXml& out, const Export& job);

}  // namespace toolkit::interchange
