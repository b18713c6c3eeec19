#pragma once

#include "host/Effects.h"
#include "plugin/xml/SessionXMLWriter.h"

namespace tses {

/// Writes "effectsRack" of a track or clip: its three components and its slots.
bool WriteEffectsRack(SessionXMLWriter& writer, IQueryEffectsRack& rack);

}  // namespace tses
