#pragma once

#include <orvo/Model.h>

namespace test {

/// What of a session a file keeps: what a reference host holds after the session was written and
/// read back. Everything else comes back as it was.
orvo::Session Stored(orvo::Session session, bool instrumentTracks);

}  // namespace test
