#pragma once

#include "host/Session.h"
#include "plugin/xml/SessionXMLWriter.h"

namespace tses {

/// Writes "mixingOptionState".
bool WriteMixingOptionState(SessionXMLWriter& writer, IQuerySession& session);

}  // namespace tses
