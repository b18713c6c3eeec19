#pragma once

#include "host/VideoTracks.h"
#include "plugin/xml/SessionXMLWriter.h"

namespace tses {

/// Writes the clips of a video track.
bool WriteVideoClips(SessionXMLWriter& writer, IQueryVideoTrack& track);

}  // namespace tses
