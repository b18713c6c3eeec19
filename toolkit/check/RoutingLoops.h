#pragma once

#include <cstddef>
#include <vector>

#include <orvo/Model.h>

namespace toolkit {

/// Tracks of which each feeds, directly or through others, itself: their places in the session's
/// list of audio tracks, in its order.
using RoutingLoop = std::vector<std::size_t>;

/// All loops by outputs, sends and side chains, in the order of their first tracks. Loops that
/// share a track are one.
std::vector<RoutingLoop> FindRoutingLoops(const orvo::Session& session);

}  // namespace toolkit
