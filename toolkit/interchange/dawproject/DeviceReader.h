#pragma once

#include <functional>
#include <optional>
#include <string>

#include "toolkit/interchange/dawproject/Targets.h"

namespace toolkit::interchange::dawproject {

/// The content of an entry of the archive; no value if there is none.
using EntryReader = std::function<std::optional<std::string>(const std::string& entry)>;

/// Reads the effects of a channel.
/// @param devices  the element "Devices"; may be empty
/// @param targets  gets their parameters, which stay where they are while the rack is moved
std::optional<orvo::EffectsRack> ReadDevices(const ProjectDocument& document,
                                             const pugi::xml_node& devices,
                                             const EntryReader& readEntry, Targets& targets);

}  // namespace toolkit::interchange::dawproject
