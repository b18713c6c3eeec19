#pragma once

#include <cstddef>
#include <string>
#include <vector>

#include <orvo/Model.h>

namespace refhost {

/// What one session has otherwise than another.
struct Differences {
    /// The first ones, a line each: the place as in the session's JSON, and both values, shortened
    /// ("/audioTracks/0/volume: 1.5 became 1.0").
    std::vector<std::string> lines;
    std::size_t count = 0;
};

/// Reals are the same if their bits mean the same: a NaN is a NaN. A null in a list is nothing, so
/// that a list without it is the same. A channel that a clip leaves out below the highest is fed by
/// the channel of its own number.
/// @param limit  how many lines are wanted
Differences FindDifferences(const orvo::Session& session, const orvo::Session& other,
                            std::size_t limit);

}  // namespace refhost
