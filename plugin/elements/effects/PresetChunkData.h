#pragma once

#include "host/Effects.h"
#include "plugin/xml/SessionXMLWriter.h"

namespace tses {

/// Writes the opaque state of an effect's preset, if it has any.
bool WritePresetChunkData(SessionXMLWriter& writer, IQueryComponent& component);

}  // namespace tses
