#pragma once

#include "host/Sends.h"
#include "plugin/xml/SessionXMLWriter.h"

namespace tses {

/// Writes "sendList"; nothing for a list without slots.
bool WriteSendList(SessionXMLWriter& writer, IQuerySendList& sends);

}  // namespace tses
