#pragma once

#include <string>

#include "host/Session.h"
#include "plugin/serializer/HostReference.h"
#include "plugin/xml/SessionXMLWriter.h"

namespace tses {

/// The version of the format, as the host reports it.
struct DocumentVersion {
    kelcore::int32 major = 0;
    kelcore::int32 minor = 0;
};

/// Fills the document element from the session, for the file at `path`. Stops writing at the first
/// of the three children that fails, but still reports every step of progress to the host. The flag
/// of each step is 1 if the version was set, and 0 if not.
bool WriteDocument(SessionXMLWriter& writer, const HostReference<IQuerySession>& session,
                   const std::u16string& path);

}  // namespace tses
