#pragma once

#include "host/ClipStretch.h"
#include "plugin/serializer/HostReference.h"
#include "plugin/xml/SessionXMLWriter.h"

namespace tses {

/// Writes "clipStretch" if the clip has one.
bool WriteClipStretch(SessionXMLWriter& writer, HostReference<IQueryClipStretch> stretch);

}  // namespace tses
