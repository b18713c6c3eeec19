#pragma once

#include "host/Session.h"
#include "plugin/serializer/HostReference.h"
#include "plugin/xml/SessionXMLWriter.h"

namespace tses {

/// Writes the audio device and its ports.
bool WriteAudioDevice(SessionXMLWriter& writer, const HostReference<IQuerySession>& session);

}  // namespace tses
