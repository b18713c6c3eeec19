#pragma once

#include "host/AudioTracks.h"
#include "plugin/xml/SessionXMLWriter.h"

namespace tses {

/// Writes "trackAudioParameters": layout, switches, routing and the four components of a track.
bool WriteTrackAudioParameters(SessionXMLWriter& writer, IQueryAudioTrackPrivate& track);

}  // namespace tses
