#pragma once

// The functions that write the elements of this folder. Each is defined in the file of its element,
// next to the functions that read it.

#include <string>

#include "host/Session.h"
#include "plugin/serializer/HostReference.h"
#include "plugin/xml/SessionXMLWriter.h"

namespace tses {

/// Fills the document element from the session, for the file at `path`. Stops writing at the first
/// of the three children that fails, but still reports every step of progress to the host. The flag
/// of each step is 1 if the version was set, and 0 if not.
bool WriteDocument(SessionXMLWriter& writer, const HostReference<IQuerySession>& session,
                   const std::u16string& path);

/// Writes the media table, even if it is empty, with paths relative to the session file at `path`.
bool WriteFiles(SessionXMLWriter& writer, const HostReference<IQuerySession>& session,
                const std::u16string& path);

/// Writes "session" and everything in it.
bool WriteSession(SessionXMLWriter& writer, const HostReference<IQuerySession>& session);

}  // namespace tses
