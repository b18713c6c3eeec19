#pragma once

#include "host/VideoClips.h"
#include "plugin/serializer/HostReference.h"
#include "plugin/xml/SessionXMLWriter.h"

namespace tses {

/// Writes "videoFormat" if the clip has one.
bool WriteVideoFormat(SessionXMLWriter& writer, HostReference<IQueryVideoFormat> format);

}  // namespace tses
