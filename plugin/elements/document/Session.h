#pragma once

#include "host/Session.h"
#include "plugin/serializer/HostReference.h"
#include "plugin/xml/SessionXMLWriter.h"

namespace tses {

/// Writes "session" and everything in it.
bool WriteSession(SessionXMLWriter& writer, const HostReference<IQuerySession>& session);

}  // namespace tses
