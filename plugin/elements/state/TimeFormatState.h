#pragma once

#include "host/Session.h"
#include "plugin/xml/SessionXMLWriter.h"

namespace tses {

/// Writes "timeFormatState".
bool WriteTimeFormatState(SessionXMLWriter& writer, IQuerySession& session);

}  // namespace tses
