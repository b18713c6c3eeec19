#pragma once

#include "host/Properties.h"
#include "plugin/serializer/HostReference.h"
#include "plugin/xml/SessionXMLWriter.h"

namespace tses {

/// Writes a clip's "properties"; nothing if it has none or they are empty.
bool WriteClipProperties(SessionXMLWriter& writer, HostReference<IQueryClipProperties> properties);

}  // namespace tses
