#pragma once

#include "host/AudioClips.h"
#include "plugin/xml/SessionXMLWriter.h"

namespace tses {

/// Writes "fadeIn" and "fadeOut", each only if the clip has one.
bool WriteFades(SessionXMLWriter& writer, IQueryAudioClip& clip);

}  // namespace tses
