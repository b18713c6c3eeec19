#pragma once

#include "host/Session.h"
#include "plugin/xml/SessionXMLWriter.h"

namespace tses {

/// Writes "viewState".
bool WriteViewState(SessionXMLWriter& writer, IQuerySession& session);

}  // namespace tses
