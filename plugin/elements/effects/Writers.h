#pragma once

// The functions that write the elements of this folder. Each is defined in the file of its element,
// next to the functions that read it.

#include <string_view>

#include "host/Automation.h"
#include "host/Effects.h"
#include "plugin/serializer/HostReference.h"
#include "plugin/xml/SessionXMLWriter.h"

namespace tses {

/// Writes the "effectsRack" of a track or clip, if it has a rack: three components and the slots.
bool WriteEffectsRack(SessionXMLWriter& writer, HostReference<IQueryEffectsRack> rack);

/// Writes one "parameter", with its lane, for every index of the component that has a value.
bool WriteParameters(SessionXMLWriter& writer, IQueryComponent& component);

/// Writes a lane and its keyframes under the given names. A lane without keyframes is not written,
/// whatever its flags.
bool WriteParameterKeyframes(SessionXMLWriter& writer, std::u16string_view laneName,
                             std::u16string_view keyframeName, IQueryAutomationLane& lane);

/// Writes the opaque state of an effect's preset, if it has any.
bool WritePresetChunkData(SessionXMLWriter& writer, IQueryComponent& component);

/// Writes "slot" with its effect, or an empty "slot" if it has no effect. If the host has no slot
/// there, writes nothing and succeeds.
bool WriteSlot(SessionXMLWriter& writer, IQueryEffectsRack& rack, kelcore::uint32 position);

/// Writes a slot's bus configuration and its two channel maps, each only if there is one.
bool WriteSlotRouting(SessionXMLWriter& writer, IQueryEffectsSlot& slot);

}  // namespace tses
