#pragma once

#include "toolkit/interchange/dawproject/Elements.h"
#include "toolkit/interchange/dawproject/MediaPlan.h"
#include "toolkit/interchange/dawproject/Plan.h"

namespace toolkit::interchange::dawproject {

/// Writes the element "Arrangement": clips, automation and markers.
/// @param plan  with the lanes that the structure found
void WriteArrangement(const Writing& writing, Plan& plan, MediaPlan& media);

}  // namespace toolkit::interchange::dawproject
