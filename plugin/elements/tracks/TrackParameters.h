#pragma once

#include "host/AudioTracks.h"
#include "host/VideoTracks.h"
#include "plugin/xml/SessionXMLWriter.h"

namespace tses {

/// Writes "trackParameters" of a track of either family.
bool WriteTrackParameters(SessionXMLWriter& writer, IQueryAudioTrackPrivate& track);
bool WriteTrackParameters(SessionXMLWriter& writer, IQueryVideoTrack& track);

}  // namespace tses
