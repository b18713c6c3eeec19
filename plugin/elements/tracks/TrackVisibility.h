#pragma once

#include "host/Session.h"
#include "plugin/serializer/HostReference.h"
#include "plugin/xml/SessionXMLWriter.h"

namespace tses {

/// Writes "trackVisibilityPresets" if the session has presets.
bool WriteTrackVisibilityPresets(SessionXMLWriter& writer, HostReference<IQuerySession> session);

}  // namespace tses
