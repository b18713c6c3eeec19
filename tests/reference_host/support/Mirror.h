#pragma once

#include "host/Session.h"

namespace refhost::test {

/// Asks a session for everything through the query interfaces and passes it to another session
/// through the edit interfaces, like a plug-in without a file between the two.
void Mirror(tses::IQuerySession& from, tses::IEditSession& to);

}  // namespace refhost::test
