#pragma once

#include <algorithm>
#include <cstdint>
#include <optional>

namespace toolkit::interchange::otio {

/// What transitions at its two ends take of an item's length.
struct Edges {
    std::int64_t head = 0;
    std::int64_t tail = 0;
};

/// Fades have the room that crossfades leave; that at the end has what the one at the start leaves.
/// @param headCrossfade  what a crossfade takes at the start; none: a fade may stand there
inline Edges EdgesOf(std::int64_t length, std::optional<std::int64_t> headCrossfade,
                     std::optional<std::int64_t> tailCrossfade, std::int64_t fadeIn,
                     std::int64_t fadeOut) {
    const std::int64_t room = std::max<std::int64_t>(length - tailCrossfade.value_or(0), 0);
    const std::int64_t head = headCrossfade.value_or(std::min(fadeIn, room));
    const std::int64_t rest = std::max<std::int64_t>(length - head, 0);
    return {.head = head, .tail = tailCrossfade.value_or(std::min(fadeOut, rest))};
}

}  // namespace toolkit::interchange::otio
