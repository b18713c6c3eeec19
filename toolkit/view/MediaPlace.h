#pragma once

#include <cstdint>

#include <orvo/Layout.h>

namespace toolkit {

/// Which part of its media a clip plays, in frames of the media.
struct MediaPlace {
    MediaPlace(const orvo::Layout& layout, const orvo::LayoutBox& box, std::uint32_t mediaRate) {
        const double rate = layout.sampleRate != 0 && mediaRate != 0
                                ? static_cast<double>(mediaRate) / layout.sampleRate
                                : 1;
        first = static_cast<double>(box.sourceStart) * rate;
        framesPerSample = rate * box.speed;
    }

    double first = 0;            ///< the frame at the start of the clip
    double framesPerSample = 1;  ///< of the timeline
};

}  // namespace toolkit
