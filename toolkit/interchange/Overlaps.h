#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

#include <orvo/Model.h>

namespace toolkit::interchange {

/// Two clips of a track that sound at once.
struct Overlap {
    std::size_t first = 0;   ///< the clip that starts first, by its place in the list
    std::size_t second = 0;  ///< the other one
    bool isCrossfade = false;
    std::int64_t start = 0;  ///< of the overlap, on the timeline
    std::int64_t end = 0;

    friend bool operator==(const Overlap&, const Overlap&) = default;
};

/// The overlaps of a track in order of time: each clip with the one that started last before it and
/// still sounds, or with the one to which it is linked. Two clips are a crossfade if they are
/// linked, or if both fade automatically, and if neither contains the other.
std::vector<Overlap> OverlapsOf(const std::vector<orvo::AudioClip>& clips);

}  // namespace toolkit::interchange
