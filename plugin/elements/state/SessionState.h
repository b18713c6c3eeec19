#pragma once

#include "host/Session.h"
#include "plugin/serializer/HostReference.h"
#include "plugin/xml/SessionXMLWriter.h"

namespace tses {

/// Writes "sessionState" and its four children.
bool WriteSessionState(SessionXMLWriter& writer, HostReference<IQuerySession> session);

}  // namespace tses
