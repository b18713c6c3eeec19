#pragma once

#include "host/AudioClips.h"
#include "plugin/xml/SessionXMLWriter.h"

namespace tses {

/// Writes a clip's "channelMap", dense from channel 0; nothing for a clip without channels.
bool WriteClipChannelMap(SessionXMLWriter& writer, IQueryAudioClip& clip);

}  // namespace tses
