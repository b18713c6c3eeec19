#pragma once

#include "host/AudioTracks.h"
#include "host/Session.h"
#include "plugin/serializer/HostReference.h"
#include "plugin/xml/SessionXMLWriter.h"

namespace tses {

/// Writes "tracks": the video tracks, then all others. Returns the result of the last track.
bool WriteTracks(SessionXMLWriter& writer, HostReference<IQuerySession> session);

/// Writes one audio-side track under the name of its kind, with everything in it.
bool WriteTrack(SessionXMLWriter& writer, IQueryAudioTrackPrivate& track);

}  // namespace tses
