#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <vector>

namespace toolkit::interchange::otio {

/// A clip that wants a place on a track, in any unit of time.
struct Span {
    std::int64_t start = 0;
    std::int64_t end = 0;
    std::optional<std::size_t> crossfadesWith{};  ///< the clip before, by its place
};

/// A clip on a lane.
struct LaneClip {
    std::size_t clip = 0;
    bool isCrossfade = false;  ///< with the clip before it on the lane
};

using Lane = std::vector<LaneClip>;

/// Places clips on as few lanes as they need, each on the first one that is free. Clips of a lane
/// overlap only in crossfades, of which no two do. There is always a first lane.
/// @param order  the clips by their start
std::vector<Lane> LanesOf(const std::vector<Span>& spans, const std::vector<std::size_t>& order);

}  // namespace toolkit::interchange::otio
