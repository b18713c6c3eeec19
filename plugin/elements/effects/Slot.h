#pragma once

#include "host/Effects.h"
#include "plugin/xml/SessionXMLWriter.h"

namespace tses {

/// Writes "slot" with its effect; an empty slot without one. None is written where the host has no
/// slot, and that is success.
bool WriteSlot(SessionXMLWriter& writer, IQueryEffectsRack& rack, kelcore::uint32 position);

}  // namespace tses
