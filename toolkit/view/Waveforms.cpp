#include <orvo/Draw.h>

#include <algorithm>
#include <atomic>
#include <bit>
#include <cmath>
#include <cstddef>
#include <iterator>
#include <thread>
#include <variant>

#include "toolkit/FileContent.h"
#include "toolkit/media/MediaProperties.h"
#include "toolkit/view/PeakCache.h"
#include "toolkit/view/PeakReader.h"
#include "toolkit/view/ShownFrames.h"

namespace orvo {
namespace {

using toolkit::MediaProperties;
using toolkit::ShownFrames;

constexpr std::uint64_t kUsualPeaks = 1 << 16;
constexpr std::uint64_t kPeaksPerSecond = 10;
constexpr std::uint64_t kPeaksOfAll = 1 << 22;
constexpr std::uint64_t kMostFrames = std::uint64_t{1} << 48;  // more is a damaged header
constexpr std::uint64_t kFewestPeaks = 1 << 10;
constexpr std::uint64_t kLong = 1 << 18;  // frames; what is shorter is read as quickly as a cache

/// How fine the peaks of a whole file are.
std::uint32_t WholeResolution(const MediaProperties& sound) {
    const std::uint64_t seconds = sound.frames / std::max<std::uint32_t>(sound.sampleRate, 1);
    const std::uint64_t peaks = std::clamp(seconds * kPeaksPerSecond, kUsualPeaks, kPeaksOfAll);
    return static_cast<std::uint32_t>(std::bit_ceil((sound.frames + peaks - 1) / peaks));
}

/// Reads one file after the other; may be used by several threads.
class Reading {
public:
    Reading(const Layout& layout, const WaveformOptions& options)
        : layout_(layout), options_(options), cache_(options.cache) {}

    bool IsStopped() const { return options_.isStopped && options_.isStopped(); }

    std::optional<Waveform> Read(std::size_t media) const {
        // Tells whether the file system answers, and keeps a pipe from being waited for.
        const std::string& path = layout_.media[media].path;
        const toolkit::MediaResult looked = toolkit::ReadMediaProperties(path);
        const auto* const sound = std::get_if<MediaProperties>(&looked);
        if (sound == nullptr || sound->frames == 0 || sound->frames > kMostFrames) {
            return std::nullopt;
        }
        const ShownFrames wanted = WantedOf(media, *sound);
        if (wanted.ranges.empty()) {
            return std::nullopt;
        }
        auto runs = IsKept(*sound, wanted) ? ReadKept(path, *sound, wanted)
                                           : toolkit::ReadPeaks(path, wanted, options_.isStopped);
        if (!runs) {
            return std::nullopt;
        }
        return Waveform{.sampleRate = sound->sampleRate,
                        .frames = sound->frames,
                        .framesPerPeak = wanted.framesPerPeak,
                        .runs = *std::move(runs)};
    }

private:
    ShownFrames WantedOf(std::size_t media, const MediaProperties& sound) const {
        if (options_.width) {
            return toolkit::ShownFramesOf(layout_, media, sound.sampleRate, sound.frames,
                                          *options_.width);
        }
        const std::uint64_t share = std::max(kPeaksOfAll / layout_.media.size(), kFewestPeaks);
        const std::uint64_t fewest = (sound.frames + share - 1) / share;
        return {.ranges = {{0, sound.frames}},
                .framesPerPeak = std::max(WholeResolution(sound),
                                          static_cast<std::uint32_t>(std::bit_ceil(fewest)))};
    }

    /// Whether what is wanted follows from what the cache keeps.
    bool IsKept(const MediaProperties& sound, const ShownFrames& wanted) const {
        return !options_.cache.empty() && sound.frames >= kLong &&
               wanted.framesPerPeak >= WholeResolution(sound);
    }

    std::optional<std::vector<PeakRun>> ReadKept(const std::string& path,
                                                 const MediaProperties& sound,
                                                 const ShownFrames& wanted) const {
        const auto state = toolkit::IdentityOf(path);
        if (!state) {
            return std::nullopt;
        }
        const ShownFrames whole{.ranges = {{0, sound.frames}},
                                .framesPerPeak = WholeResolution(sound)};
        auto peaks = cache_.Find(path, *state, whole.framesPerPeak);
        if (!peaks) {
            auto runs = toolkit::ReadPeaks(path, whole, options_.isStopped);
            if (!runs || runs->empty()) {
                return std::nullopt;
            }
            peaks = std::move(runs->front().peaks);
            if (toolkit::IdentityOf(path) == state) {
                cache_.Keep(path, *state, whole.framesPerPeak, *peaks);
            }
        }
        return Cut(toolkit::Coarser(*peaks, wanted.framesPerPeak / whole.framesPerPeak), wanted);
    }

    static std::vector<PeakRun> Cut(const std::vector<Peak>& peaks, const ShownFrames& wanted) {
        std::vector<PeakRun> runs;
        for (const toolkit::FrameRange& range : wanted.ranges) {
            const std::uint64_t first = range.begin / wanted.framesPerPeak;
            const std::uint64_t beyond = first + toolkit::CountPeaks(range, wanted.framesPerPeak);
            const auto at = [&peaks](std::uint64_t place) {
                return peaks.begin() +
                       static_cast<std::ptrdiff_t>(std::min<std::uint64_t>(place, peaks.size()));
            };
            runs.push_back({first, std::vector<Peak>(at(first), at(beyond))});
        }
        return runs;
    }

    const Layout& layout_;
    const WaveformOptions& options_;
    toolkit::PeakCache cache_;
};

}  // namespace

std::optional<Peak> Waveform::Span(double begin, double end) const {
    const auto count = static_cast<double>(frames);
    if (!(begin >= 0 && begin < count)) {
        return std::nullopt;
    }
    const auto first = static_cast<std::uint64_t>(begin / framesPerPeak);
    const auto next = std::ranges::upper_bound(runs, first, {}, &PeakRun::first);
    if (next == runs.begin()) {
        return std::nullopt;
    }
    const PeakRun& run = *std::prev(next);
    const std::uint64_t place = first - run.first;
    if (place >= run.peaks.size()) {
        return std::nullopt;
    }
    Peak span = run.peaks[place];
    const double beyond = std::ceil(std::min(end, count) / framesPerPeak);
    for (std::uint64_t i = place + 1;
         i < run.peaks.size() && static_cast<double>(run.first + i) < beyond; ++i) {
        span.lowest = std::min(span.lowest, run.peaks[i].lowest);
        span.highest = std::max(span.highest, run.peaks[i].highest);
    }
    return span;
}

const std::vector<Peak>* Waveform::Whole() const {
    const bool isWhole =
        runs.size() == 1 && runs.front().first == 0 &&
        runs.front().peaks.size() >= toolkit::CountPeaks({0, frames}, framesPerPeak);
    return isWhole ? &runs.front().peaks : nullptr;
}

std::vector<std::optional<Waveform>> ReadWaveforms(const Layout& layout,
                                                   const WaveformOptions& options) {
    std::vector<std::optional<Waveform>> waveforms(layout.media.size());
    const Reading reading(layout, options);
    std::atomic<std::size_t> next = 0;
    const auto work = [&] {
        for (std::size_t i = next++; i < layout.media.size(); i = next++) {
            if (layout.media[i].found && !reading.IsStopped()) {
                waveforms[i] = reading.Read(i);
            }
        }
    };
    std::vector<std::jthread> threads;
    for (unsigned count = std::thread::hardware_concurrency(); count > 1; --count) {
        threads.emplace_back(work);
    }
    work();
    threads.clear();
    return waveforms;
}

}  // namespace orvo
