#pragma once

#include "host/AudioClips.h"
#include "plugin/xml/SessionXMLWriter.h"

namespace tses {

/// Writes a clip's "channelMap", with an entry for every channel, if the clip has channels.
bool WriteClipChannelMap(SessionXMLWriter& writer, IQueryAudioClip& clip);

}  // namespace tses
