#pragma once

#include "host/AudioClips.h"
#include "plugin/xml/SessionXMLWriter.h"

namespace tses {

/// Writes one "take" for each take of the clip.
bool WriteTakes(SessionXMLWriter& writer, IQueryAudioClip& clip);

}  // namespace tses
