#pragma once

#include <map>
#include <string>

#include "toolkit/interchange/dawproject/Elements.h"
#include "toolkit/interchange/dawproject/Plan.h"

namespace toolkit::interchange::dawproject {

/// The states of effects to store beside the document, by their entries.
using States = std::map<std::string, const std::vector<std::uint8_t>*>;

/// Writes the element "Structure": the tracks with their channels, effects and sends.
/// @param plan  gets the lanes of the tracks
States WriteStructure(const Writing& writing, Plan& plan);

}  // namespace toolkit::interchange::dawproject
