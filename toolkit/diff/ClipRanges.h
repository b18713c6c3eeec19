#pragma once

#include <cstdint>

/// The ranges that clips take on the timeline and in their media.
namespace orvo::diff {

struct ClipRange {
    std::int64_t startPoint = 0;
    std::int64_t duration = 0;
    std::int64_t sourceInPoint = 0;
};

template <class Clip>
ClipRange RangeOf(const Clip& clip) {
    return {clip.startPoint, clip.duration, clip.sourceInPoint};
}

/// The end of a clip on the timeline.
std::int64_t EndOf(const ClipRange& clip);

/// Whether the media lies on the timeline as before.
bool IsAligned(const ClipRange& one, const ClipRange& other);

/// Whether two clips without a gap are a third one.
bool AreParts(const ClipRange& first, const ClipRange& second, const ClipRange& whole);

/// Whether the clip lost or gained as much at the start of its media as in length.
bool TrimsStart(const ClipRange& one, const ClipRange& other);

}  // namespace orvo::diff
