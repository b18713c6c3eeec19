#pragma once

#include "host/VideoTracks.h"
#include "plugin/xml/SessionXMLWriter.h"

namespace tses {

/// Writes one video track with its clips.
bool WriteVideoTrack(SessionXMLWriter& writer, IQueryVideoTrack& track);

}  // namespace tses
