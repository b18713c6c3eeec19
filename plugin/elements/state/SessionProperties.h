#pragma once

#include "host/Session.h"
#include "plugin/serializer/HostReference.h"
#include "plugin/xml/SessionXMLWriter.h"

namespace tses {

/// Writes the session's "properties".
bool WriteSessionProperties(SessionXMLWriter& writer, HostReference<IQuerySession> session);

}  // namespace tses
