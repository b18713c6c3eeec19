#include <orvo/Draw.h>

#include <sndfile.h>

#include <algorithm>
#include <atomic>
#include <memory>
#include <thread>
#include <variant>

#include "toolkit/media/MediaProperties.h"

namespace orvo {
namespace {

using SoundFile = std::unique_ptr<SNDFILE, decltype(&sf_close)>;

/// Enough for a picture of any sensible width.
constexpr std::uint64_t kMostPeaks = 1 << 16;

constexpr std::size_t kBlockFrames = 1 << 14;

/// Takes sound, block by block.
class PeakCounter {
public:
    PeakCounter(std::uint32_t framesPerPeak, std::size_t channels)
        : framesPerPeak_(framesPerPeak), channels_(channels) {}

    void Take(const float* samples, std::size_t frames) {
        for (const float* frame = samples; frame != samples + frames * channels_;
             frame += channels_) {
            const auto [lowest, highest] = std::minmax_element(frame, frame + channels_);
            Take({*lowest, *highest});
        }
    }

    std::vector<Peak> Peaks() {
        if (taken_ != 0) {
            peaks_.push_back(current_);
        }
        return std::move(peaks_);
    }

private:
    void Take(const Peak& frame) {
        current_ = taken_ == 0 ? frame
                               : Peak{std::min(current_.lowest, frame.lowest),
                                      std::max(current_.highest, frame.highest)};
        if (++taken_ == framesPerPeak_) {
            peaks_.push_back(current_);
            taken_ = 0;
        }
    }

    std::uint32_t framesPerPeak_;
    std::size_t channels_;
    std::uint32_t taken_ = 0;
    Peak current_;
    std::vector<Peak> peaks_;
};

std::optional<Waveform> ReadWaveform(const std::string& path,
                                     const std::function<bool()>& isStopped) {
    // Tells whether the file system answers, and keeps a pipe from being waited for.
    const toolkit::MediaResult looked = toolkit::ReadMediaProperties(path);
    const auto* const sound = std::get_if<toolkit::MediaProperties>(&looked);
    if (sound == nullptr || sound->frames == 0 || sound->channels == 0) {
        return std::nullopt;
    }
    SF_INFO info{};
    const SoundFile file(sf_open(path.c_str(), SFM_READ, &info), &sf_close);
    if (!file || info.channels <= 0) {
        return std::nullopt;
    }
    Waveform waveform{.sampleRate = sound->sampleRate, .frames = sound->frames};
    waveform.framesPerPeak =
        static_cast<std::uint32_t>((sound->frames + kMostPeaks - 1) / kMostPeaks);
    const auto channels = static_cast<std::size_t>(info.channels);
    PeakCounter counter(waveform.framesPerPeak, channels);
    std::vector<float> block(kBlockFrames * channels);
    while (const sf_count_t got = sf_readf_float(file.get(), block.data(), kBlockFrames)) {
        if (got < 0 || (isStopped && isStopped())) {
            return std::nullopt;
        }
        counter.Take(block.data(), static_cast<std::size_t>(got));
    }
    waveform.peaks = counter.Peaks();
    return waveform;
}

}  // namespace

std::vector<std::optional<Waveform>> ReadWaveforms(const Layout& layout,
                                                   const std::function<bool()>& isStopped) {
    std::vector<std::optional<Waveform>> waveforms(layout.media.size());
    std::atomic<std::size_t> next = 0;
    const auto work = [&] {
        for (std::size_t i = next++; i < layout.media.size(); i = next++) {
            if (layout.media[i].found && !(isStopped && isStopped())) {
                waveforms[i] = ReadWaveform(layout.media[i].path, isStopped);
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
