#pragma once

#include "host/Properties.h"
#include "plugin/serializer/HostReference.h"
#include "plugin/xml/SessionXMLWriter.h"

namespace tses {

/// Writes a clip's "properties" if it has any.
bool WriteClipProperties(SessionXMLWriter& writer, HostReference<IQueryClipProperties> properties);

}  // namespace tses
