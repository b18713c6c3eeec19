#pragma once

// The functions that write the elements of this folder. Each is defined in the file of its element,
// next to the functions that read it.

#include "host/AudioTracks.h"
#include "host/Sends.h"
#include "host/Session.h"
#include "host/VideoTracks.h"
#include "plugin/serializer/HostReference.h"
#include "plugin/xml/SessionXMLWriter.h"

namespace tses {

/// Writes the audio device and its ports.
bool WriteAudioDevice(SessionXMLWriter& writer, const HostReference<IQuerySession>& session);

/// Writes "sendList" if the list has slots.
bool WriteSendList(SessionXMLWriter& writer, IQuerySendList& sends);

/// Writes "trackAudioParameters": layout, switches, routing and the four components of a track.
bool WriteTrackAudioParameters(SessionXMLWriter& writer, IQueryAudioTrackPrivate& track);

/// Writes "trackParameters" of a track of either family.
bool WriteTrackParameters(SessionXMLWriter& writer, IQueryAudioTrackPrivate& track);
bool WriteTrackParameters(SessionXMLWriter& writer, IQueryVideoTrack& track);

/// Writes "trackVisibilityPresets" if the session has presets.
bool WriteTrackVisibilityPresets(SessionXMLWriter& writer, HostReference<IQuerySession> session);

/// Writes "tracks": the video tracks, then all others. Returns the result of the last track.
bool WriteTracks(SessionXMLWriter& writer, HostReference<IQuerySession> session);

/// Writes one audio-side track under the name of its kind, with everything in it.
bool WriteTrack(SessionXMLWriter& writer, IQueryAudioTrackPrivate& track);

/// Writes one video track with its clips.
bool WriteVideoTrack(SessionXMLWriter& writer, IQueryVideoTrack& track);

}  // namespace tses
