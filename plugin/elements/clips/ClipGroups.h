#pragma once

#include "host/Session.h"
#include "plugin/serializer/HostReference.h"
#include "plugin/xml/SessionXMLWriter.h"

namespace tses {

/// Writes "clipGroups", even if there are no groups.
bool WriteClipGroups(SessionXMLWriter& writer, HostReference<IQuerySession> session);

}  // namespace tses
