#pragma once

#include "host/Effects.h"
#include "plugin/serializer/HostReference.h"
#include "plugin/xml/SessionXMLWriter.h"

namespace tses {

/// Writes "effectsRack" of a track or clip: its three components and its slots. Nothing for one
/// without a rack.
bool WriteEffectsRack(SessionXMLWriter& writer, HostReference<IQueryEffectsRack> rack);

}  // namespace tses
