#pragma once

#include "host/Effects.h"
#include "plugin/xml/SessionXMLWriter.h"

namespace tses {

/// Writes "slot" with its effect; an empty slot without one.
bool WriteSlot(SessionXMLWriter& writer, kelcore::uint32 slotIndex, IQueryEffectsSlot& slot);

}  // namespace tses
