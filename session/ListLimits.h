#pragma once

#include <optional>

#include <orvo/Session.h>

namespace orvo {

/// Finds what makes a list longer than a session file has room for. An index is a place in a list,
/// so a high one makes a long list.
/// @return the place, as in the session's JSON, and what to do; no value if everything has room
std::optional<Message> FindListBeyondLimits(const Session& session);

}  // namespace orvo
