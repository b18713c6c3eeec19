#include "toolkit/diff/ClipRanges.h"

#include "toolkit/diff/Times.h"

namespace orvo::diff {

std::int64_t EndOf(const ClipRange& clip) {
    return Sum(clip.startPoint, clip.duration);
}

bool IsAligned(const ClipRange& one, const ClipRange& other) {
    return static_cast<std::uint64_t>(one.startPoint) -
               static_cast<std::uint64_t>(one.sourceInPoint) ==
           static_cast<std::uint64_t>(other.startPoint) -
               static_cast<std::uint64_t>(other.sourceInPoint);
}

bool AreParts(const ClipRange& first, const ClipRange& second, const ClipRange& whole) {
    return IsAligned(first, whole) && IsAligned(second, whole) &&
           first.startPoint == whole.startPoint && EndOf(first) == second.startPoint &&
           EndOf(second) == EndOf(whole) && first.duration > 0 && second.duration > 0;
}

bool TrimsStart(const ClipRange& one, const ClipRange& other) {
    return one.sourceInPoint != other.sourceInPoint &&
           Sum(one.sourceInPoint, one.duration) == Sum(other.sourceInPoint, other.duration);
}

}  // namespace orvo::diff
