#pragma once

#include "host/Session.h"
#include "plugin/serializer/HostReference.h"
#include "plugin/xml/SessionXMLWriter.h"

namespace tses {

/// Writes "metronome" with its track and the musical timeline.
bool WriteMetronome(SessionXMLWriter& writer, HostReference<IQuerySession> session);

}  // namespace tses
