#pragma once

#include "host/Effects.h"
#include "plugin/xml/SessionXMLWriter.h"

namespace tses {

/// Writes "slot" with its effect, or an empty "slot" if it has no effect. If the host has no slot
/// there, writes nothing and succeeds.
bool WriteSlot(SessionXMLWriter& writer, IQueryEffectsRack& rack, kelcore::uint32 position);

}  // namespace tses
