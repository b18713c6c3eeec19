#pragma once

#include "reference_host/model/Session.h"

namespace test {

/// What of a session a file keeps: what a reference host holds after the session was written and
/// read back. Everything else comes back as it was.
refhost::model::Session Stored(refhost::model::Session session, bool instrumentTracks);

}  // namespace test
