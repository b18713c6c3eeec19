#pragma once

#include <orvo/Model.h>

namespace test {

/// What a file keeps of a session: what a reference host holds after writing it and reading it
/// back. Everything that a file keeps comes back as it was.
orvo::Session Stored(orvo::Session session, bool instrumentTracks);

}  // namespace test
