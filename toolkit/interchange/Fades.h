#pragma once

#include <cstdint>

#include <orvo/Interchange.h>
#include <orvo/Model.h>
#include "toolkit/ModelPath.h"
#include "toolkit/interchange/Reporter.h"

namespace toolkit::interchange {

/// The lengths of a clip's fades in samples, each at the clip's own edge; 0 without one.
struct FadeLengths {
    std::int64_t in = 0;
    std::int64_t out = 0;
};

/// Fades are at the edges of their clip and no longer than it. Warns if the points fit no known
/// origin or another one than the conventions say. Reports a shape other than 0 as lost.
/// @param place  of the clip
FadeLengths FadesOf(const orvo::AudioClip& clip, const orvo::Conventions& conventions,
                    const ModelPath& place, Reporter& reporter);

/// A fade of this length at the clip's start, or end, as conversions from other formats make it.
orvo::Fade MakeFadeIn(std::int64_t length);
orvo::Fade MakeFadeOut(std::int64_t length, std::int64_t clipDuration);

}  // namespace toolkit::interchange
