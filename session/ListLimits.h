#pragma once

#include <optional>

#include <orvo/Session.h>

namespace orvo {

/// Looks for what makes a list of a session file longer than the file has room for: indices count
/// into lists, so a high one makes a long list.
/// @return the place, as in the session's JSON, and what to do; nothing if everything has room
std::optional<Message> FindListBeyondLimits(const Session& session);

}  // namespace orvo
