#pragma once

#include <string>

#include "host/Session.h"
#include "plugin/serializer/HostReference.h"
#include "plugin/xml/SessionXMLWriter.h"

namespace tses {

/// Writes the media table, even if it is empty, with paths relative to the session file at `path`.
bool WriteFiles(SessionXMLWriter& writer, const HostReference<IQuerySession>& session,
                const std::u16string& path);

}  // namespace tses
