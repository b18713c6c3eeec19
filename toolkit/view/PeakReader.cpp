#include "toolkit/view/PeakReader.h"

#include <sndfile.h>

#include <algorithm>
#include <cmath>
#include <memory>
#include <utility>

namespace toolkit {
namespace {

using orvo::Peak;
using orvo::PeakRun;

constexpr std::uint64_t kBlockFrames = 1 << 14;

/// Files of real numbers hold any number.
float Bounded(float level) {
    return std::isnan(level) ? 0 : std::clamp(level, -1.0F, 1.0F);
}

Peak Both(const Peak& left, const Peak& right) {
    return {std::min(left.lowest, right.lowest), std::max(left.highest, right.highest)};
}

/// Takes sound, block by block.
class PeakCounter {
public:
    PeakCounter(std::uint32_t framesPerPeak, std::size_t channels)
        : framesPerPeak_(framesPerPeak), channels_(channels) {}

    void Take(const float* samples, std::size_t frames) {
        while (frames > 0) {
            const std::size_t taken = std::min<std::size_t>(frames, framesPerPeak_ - taken_);
            const auto [lowest, highest] =
                std::minmax_element(samples, samples + taken * channels_);
            Take({Bounded(*lowest), Bounded(*highest)}, static_cast<std::uint32_t>(taken));
            samples += taken * channels_;
            frames -= taken;
        }
    }

    std::vector<Peak> Peaks() {
        if (taken_ != 0) {
            peaks_.push_back(current_);
        }
        return std::move(peaks_);
    }

private:
    void Take(const Peak& peak, std::uint32_t frames) {
        current_ = taken_ == 0 ? peak : Both(current_, peak);
        taken_ += frames;
        if (taken_ == framesPerPeak_) {
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

/// An open sound file.
class Sound {
public:
    explicit Sound(const std::string& path)
        : file_(sf_open(path.c_str(), SFM_READ, &info_), &sf_close) {}

    bool IsGood() const { return file_ && info_.channels > 0; }
    std::size_t Channels() const { return static_cast<std::size_t>(info_.channels); }

    /// Goes to a frame that is not before the present one.
    bool GoTo(std::uint64_t frame) {
        if (frame == place_) {
            return true;
        }
        if (info_.seekable != 0) {
            place_ = frame;
            return sf_seek(file_.get(), static_cast<sf_count_t>(frame), SEEK_SET) >= 0;
        }
        std::vector<float> block;
        while (place_ < frame) {
            if (Read(block, std::min(frame - place_, kBlockFrames)) == 0) {
                return false;
            }
        }
        return true;
    }

    /// @return how many frames were read; 0 at the end and if that fails
    std::size_t Read(std::vector<float>& block, std::uint64_t frames) {
        block.resize(frames * Channels());
        const sf_count_t got =
            sf_readf_float(file_.get(), block.data(), static_cast<sf_count_t>(frames));
        const auto count = static_cast<std::size_t>(std::max<sf_count_t>(got, 0));
        place_ += count;
        return count;
    }

private:
    SF_INFO info_{};
    std::unique_ptr<SNDFILE, decltype(&sf_close)> file_;
    std::uint64_t place_ = 0;
};

}  // namespace

std::optional<std::vector<PeakRun>> ReadPeaks(const std::string& path, const ShownFrames& wanted,
                                              const std::function<bool()>& isStopped) {
    Sound sound(path);
    if (!sound.IsGood()) {
        return std::nullopt;
    }
    std::vector<PeakRun> runs;
    std::vector<float> block;
    for (const FrameRange& range : wanted.ranges) {
        if (!sound.GoTo(range.begin)) {
            break;
        }
        PeakCounter counter(wanted.framesPerPeak, sound.Channels());
        for (std::uint64_t left = range.end - range.begin; left > 0;) {
            const std::size_t got = sound.Read(block, std::min(left, kBlockFrames));
            if (got == 0) {
                break;
            }
            if (isStopped && isStopped()) {
                return std::nullopt;
            }
            counter.Take(block.data(), got);
            left -= got;
        }
        runs.push_back({range.begin / wanted.framesPerPeak, counter.Peaks()});
        // A damaged file may end early; what is not there is silent.
        runs.back().peaks.resize(CountPeaks(range, wanted.framesPerPeak));
    }
    return runs;
}

std::vector<Peak> Coarser(const std::vector<Peak>& peaks, std::size_t factor) {
    std::vector<Peak> coarser;
    for (std::size_t i = 0; i < peaks.size(); ++i) {
        if (i % factor == 0) {
            coarser.push_back(peaks[i]);
        } else {
            coarser.back() = Both(coarser.back(), peaks[i]);
        }
    }
    return coarser;
}

}  // namespace toolkit
