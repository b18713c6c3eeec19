#pragma once

#include "host/VideoClips.h"
#include "plugin/serializer/HostReference.h"
#include "plugin/xml/SessionXMLWriter.h"

namespace tses {

/// Writes "videoFormat"; nothing for a clip without it.
bool WriteVideoFormat(SessionXMLWriter& writer, HostReference<IQueryVideoFormat> format);

}  // namespace tses
