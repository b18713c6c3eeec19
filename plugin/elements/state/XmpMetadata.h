#pragma once

#include "host/Session.h"
#include "plugin/serializer/HostReference.h"
#include "plugin/xml/SessionXMLWriter.h"

namespace tses {

/// Writes "xmpMetadata" if the session has any.
bool WriteXmpMetadata(SessionXMLWriter& writer, HostReference<IQuerySession> session);

}  // namespace tses
