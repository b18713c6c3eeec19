#pragma once

#include "host/Effects.h"
#include "plugin/xml/SessionXMLWriter.h"

namespace tses {

/// Writes a slot's bus configuration and its two channel maps, each only if there is one.
bool WriteSlotRouting(SessionXMLWriter& writer, IQueryEffectsSlot& slot);

}  // namespace tses
