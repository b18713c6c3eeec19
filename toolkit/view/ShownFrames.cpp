#include "toolkit/view/ShownFrames.h"

#include <algorithm>
#include <bit>
#include <cmath>
#include <cstddef>

#include "toolkit/view/MediaPlace.h"

namespace toolkit {
namespace {

using orvo::Layout;
using orvo::LayoutBox;

/// The frames that a clip shows, from 0 to the number of the file's frames.
class Ranges {
public:
    explicit Ranges(std::uint64_t frames) : frames_(static_cast<double>(frames)) {}

    void Add(const Layout& layout, const LayoutBox& box, const MediaPlace& place) {
        const auto frameAt = [&](std::int64_t position) {
            const double samples = static_cast<double>(position) - static_cast<double>(box.start);
            return place.first + samples * place.framesPerSample;
        };
        const double begin = frameAt(std::max(box.start, layout.from));
        const double end = frameAt(std::min(box.end, layout.to));
        if (box.looped) {
            AddLoop(begin, end);
        } else {
            Add(begin, end);
        }
    }

    /// Each range widened to whole peaks, and those that then touch joined.
    std::vector<FrameRange> Joined(std::uint64_t framesPerPeak) {
        const auto frames = static_cast<std::uint64_t>(frames_);
        std::ranges::sort(ranges_, {}, &FrameRange::begin);
        std::vector<FrameRange> joined;
        for (const FrameRange& range : ranges_) {
            const std::uint64_t begin = range.begin / framesPerPeak * framesPerPeak;
            const std::uint64_t peaks = (range.end + framesPerPeak - 1) / framesPerPeak;
            const std::uint64_t end = std::min(peaks * framesPerPeak, frames);
            if (!joined.empty() && begin <= joined.back().end) {
                joined.back().end = std::max(joined.back().end, end);
            } else {
                joined.push_back({begin, end});
            }
        }
        return joined;
    }

private:
    void Add(double begin, double end) {
        // The last column of a clip reaches a little beyond it.
        const double first = std::clamp(std::floor(begin), 0.0, frames_);
        const double last = std::clamp(std::ceil(end) + 1, 0.0, frames_);
        if (first < last) {
            ranges_.push_back(
                {static_cast<std::uint64_t>(first), static_cast<std::uint64_t>(last)});
        }
    }

    void AddLoop(double begin, double end) {
        if (end - begin >= frames_) {
            Add(0, frames_);
            return;
        }
        const double first = begin - std::floor(begin / frames_) * frames_;
        Add(first, first + (end - begin));
        Add(0, first + (end - begin) - frames_);
    }

    double frames_;
    std::vector<FrameRange> ranges_;
};

std::uint64_t CountAll(const ShownFrames& shown) {
    std::uint64_t count = 0;
    for (const FrameRange& range : shown.ranges) {
        count += CountPeaks(range, shown.framesPerPeak);
    }
    return count;
}

}  // namespace

std::uint64_t CountPeaks(const FrameRange& range, std::uint32_t framesPerPeak) {
    return (range.end - range.begin + framesPerPeak - 1) / framesPerPeak;
}

ShownFrames ShownFramesOf(const Layout& layout, std::size_t media, std::uint32_t sampleRate,
                          std::uint64_t frames, double width) {
    constexpr double kPeaksPerPixel = 2;
    constexpr std::uint32_t kMostFramesPerPeak = 1 << 30;
    constexpr std::uint64_t kMostPeaks = 1 << 18;
    const double samplesPerPixel =
        (static_cast<double>(layout.to) - static_cast<double>(layout.from)) / width;
    double framesPerPeak = kMostFramesPerPeak;
    Ranges ranges(frames);
    for (const orvo::LayoutRow& row : layout.rows) {
        for (const LayoutBox& box : row.boxes) {
            if (box.kind == orvo::BoxKind::Audio && box.media == media) {
                const MediaPlace place(layout, box, sampleRate);
                framesPerPeak = std::min(framesPerPeak,
                                         samplesPerPixel * place.framesPerSample / kPeaksPerPixel);
                ranges.Add(layout, box, place);
            }
        }
    }
    ShownFrames shown{.framesPerPeak =
                          std::bit_floor(static_cast<std::uint32_t>(std::max(framesPerPeak, 1.0)))};
    shown.ranges = ranges.Joined(shown.framesPerPeak);
    while (CountAll(shown) > kMostPeaks && shown.framesPerPeak < kMostFramesPerPeak) {
        shown.framesPerPeak *= 2;
        shown.ranges = ranges.Joined(shown.framesPerPeak);
    }
    return shown;
}

}  // namespace toolkit
