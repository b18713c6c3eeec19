#pragma once

#include "host/Effects.h"
#include "plugin/serializer/HostReference.h"
#include "plugin/xml/SessionXMLWriter.h"

namespace tses {

/// Writes the "effectsRack" of a track or clip, if it has a rack: three components and the slots.
bool WriteEffectsRack(SessionXMLWriter& writer, HostReference<IQueryEffectsRack> rack);

}  // namespace tses
