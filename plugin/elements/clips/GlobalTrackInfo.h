#pragma once

#include "host/GlobalTrackInfo.h"
#include "plugin/xml/SessionXMLWriter.h"

namespace tses {

/// Writes "globalTrackInfo" with those of its three blocks that the host has.
bool WriteGlobalTrackInfo(SessionXMLWriter& writer, IQueryGlobalTrackInfo& info);

}  // namespace tses
