#pragma once

#include "host/Session.h"

namespace refhost::test {

/// Asks a session for everything through the interfaces for querying, and tells all of it to
/// another one through those for editing, as a plug-in would that had no file between.
void Mirror(tses::IQuerySession& from, tses::IEditSession& to);

}  // namespace refhost::test
