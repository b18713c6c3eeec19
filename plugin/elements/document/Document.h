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

/// Fills the document element from the session, for the file at `path`. The three children are
/// written until one fails; the host's progress goes on to the end all the same, each step telling,
/// as 1 or 0, whether the version could be set.
bool WriteDocument(SessionXMLWriter& writer, const HostReference<IQuerySession>& session,
                   const std::u16string& path);

}  // namespace tses
