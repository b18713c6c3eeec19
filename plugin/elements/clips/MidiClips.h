#pragma once

#include "host/AudioTracks.h"
#include "plugin/xml/SessionXMLWriter.h"

namespace tses {

/// Writes the MIDI clips of an instrument track.
bool WriteMidiClips(SessionXMLWriter& writer, IQueryAudioTrack& track);

}  // namespace tses
