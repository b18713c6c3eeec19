#pragma once

#include "host/Session.h"
#include "plugin/serializer/HostReference.h"
#include "plugin/xml/SessionXMLWriter.h"

namespace tses {

/// Writes "xmpMetadata"; nothing for a session without it.
bool WriteXmpMetadata(SessionXMLWriter& writer, HostReference<IQuerySession> session);

}  // namespace tses
