#pragma once

#include "host/Session.h"
#include "plugin/xml/SessionXMLWriter.h"

namespace tses {

/// Writes "selectionState".
bool WriteSelectionState(SessionXMLWriter& writer, IQuerySession& session);

}  // namespace tses
