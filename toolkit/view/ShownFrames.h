#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

#include <orvo/Layout.h>

namespace toolkit {

/// Frames of a media file from one up to another.
struct FrameRange {
    std::uint64_t begin = 0;
    std::uint64_t end = 0;

    friend bool operator==(const FrameRange&, const FrameRange&) = default;
};

/// What a picture shows of a media file.
struct ShownFrames {
    std::vector<FrameRange> ranges{};  ///< in order, each beginning and ending with a peak, apart
    std::uint32_t framesPerPeak = 1;   ///< a power of two
};

/// The last peak may stand for fewer frames.
std::uint64_t CountPeaks(const FrameRange& range, std::uint32_t framesPerPeak);

/// @param media  in `Layout::media`
/// @param width  of the layout's range in pixels
ShownFrames ShownFramesOf(const orvo::Layout& layout, std::size_t media, std::uint32_t sampleRate,
                          std::uint64_t frames, double width);

}  // namespace toolkit
