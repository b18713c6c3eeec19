#pragma once

#include "host/AudioTracks.h"
#include "plugin/xml/SessionXMLWriter.h"

namespace tses {

/// Writes the audio clips of a track.
bool WriteAudioClips(SessionXMLWriter& writer, IQueryAudioTrack& track);

}  // namespace tses
