#pragma once

#include "host/Sends.h"
#include "plugin/xml/SessionXMLWriter.h"

namespace tses {

/// Writes "sendList" if the list has slots.
bool WriteSendList(SessionXMLWriter& writer, IQuerySendList& sends);

}  // namespace tses
