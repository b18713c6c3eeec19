#pragma once

#include "host/ClipStretch.h"
#include "plugin/serializer/HostReference.h"
#include "plugin/xml/SessionXMLWriter.h"

namespace tses {

/// Writes "clipStretch"; nothing for a clip without it.
bool WriteClipStretch(SessionXMLWriter& writer, HostReference<IQueryClipStretch> stretch);

}  // namespace tses
