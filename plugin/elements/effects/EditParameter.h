#pragma once

#include "platform/kelcore/Types.h"
#include "plugin/xml/SessionXMLWriter.h"

namespace tses {

/// Writes one "editParameter" of a track or clip.
bool WriteEditParameter(SessionXMLWriter& writer, kelcore::uint32 slotIndex,
                        kelcore::uint32 parameterIndex);

}  // namespace tses
