#pragma once

// The functions that write the elements of this folder. Each is defined in the file of its element,
// next to the functions that read it.

#include "host/AudioClips.h"
#include "host/AudioTracks.h"
#include "host/ClipStretch.h"
#include "host/GlobalTrackInfo.h"
#include "host/Properties.h"
#include "host/Session.h"
#include "host/VideoClips.h"
#include "host/VideoTracks.h"
#include "plugin/serializer/HostReference.h"
#include "plugin/xml/SessionXMLWriter.h"

namespace tses {

/// Writes the audio clips of a track.
bool WriteAudioClips(SessionXMLWriter& writer, IQueryAudioTrack& track);

/// Writes a clip's "channelMap", with an entry for every channel, if the clip has channels.
bool WriteClipChannelMap(SessionXMLWriter& writer, IQueryAudioClip& clip);

/// Writes "clipGroups", even if there are no groups.
bool WriteClipGroups(SessionXMLWriter& writer, HostReference<IQuerySession> session);

/// Writes a clip's "properties" if it has any.
bool WriteClipProperties(SessionXMLWriter& writer, HostReference<IQueryClipProperties> properties);

/// Writes "clipStretch" if the clip has one.
bool WriteClipStretch(SessionXMLWriter& writer, HostReference<IQueryClipStretch> stretch);

/// Writes "fadeIn" and "fadeOut", each only if the clip has one.
bool WriteFades(SessionXMLWriter& writer, IQueryAudioClip& clip);

/// Writes "globalTrackInfo" with those of its three blocks that the host has.
bool WriteGlobalTrackInfo(SessionXMLWriter& writer, IQueryGlobalTrackInfo& info);

/// Writes the MIDI clips of an instrument track.
bool WriteMidiClips(SessionXMLWriter& writer, IQueryAudioTrack& track);

/// Writes one "take" for each take of the clip.
bool WriteTakes(SessionXMLWriter& writer, IQueryAudioClip& clip);

/// Writes the clips of a video track.
bool WriteVideoClips(SessionXMLWriter& writer, IQueryVideoTrack& track);

/// Writes "videoFormat" if the clip has one.
bool WriteVideoFormat(SessionXMLWriter& writer, HostReference<IQueryVideoFormat> format);

}  // namespace tses
