#include "toolkit/interchange/edl/FrameClock.h"

#include <fmt/format.h>

#include <algorithm>
#include <cmath>
#include <limits>
#include <optional>

#include "session/times/Arithmetic.h"
#include "toolkit/interchange/Failure.h"

namespace toolkit::interchange {
namespace {

using orvo::FrameRate;
using orvo::times::Wide;

constexpr std::uint32_t kHighestCount = 100;  // its frame numbers have two digits
constexpr std::uint32_t kNtsc = 1001;
constexpr std::uint32_t kThousand = 1000;

/// The frames and the samples of the shortest time in which both are whole numbers.
struct Ratio {
    Wide frames;
    Wide samples;
};

Ratio RatioOf(const FrameRate& rate, std::uint32_t sampleRate) {
    return {.frames = Wide{rate.count} * (rate.ntsc ? kThousand : 1),
            .samples = Wide{sampleRate} * (rate.ntsc ? kNtsc : 1)};
}

/// 29.97 means 30000/1001.
std::optional<FrameRate> RateNamed(double name) {
    constexpr double kTolerance = 2e-3;
    if (!(name >= 1) || name > kHighestCount) {
        return std::nullopt;
    }
    const auto count = static_cast<std::uint32_t>(std::lround(name));
    if (name == count) {
        return FrameRate{.count = count};
    }
    const double slower = static_cast<double>(count) * kThousand / kNtsc;
    return std::abs(name - slower) <= kTolerance
               ? std::optional(FrameRate{.count = count, .ntsc = true})
               : std::nullopt;
}

}  // namespace

orvo::FrameRate FrameRateOfList(const orvo::Session& session, const orvo::ExportOptions& options) {
    std::optional<FrameRate> rate = options.frameRate
                                        ? RateNamed(*options.frameRate)
                                        : FrameRateOf(session.timeFormat).value_or(FrameRate());
    if (!rate || rate->count > kHighestCount) {
        throw Failure(
            {.what = options.frameRate
                         ? fmt::format("{} frames a second are no timecode", *options.frameRate)
                         : "the session's timecode has more than 100 frames a second",
             .advice = "choose a rate such as 24, 25, 29.97 or 30"});
    }
    rate->dropFrame |= options.dropFrame;
    if (rate->dropFrame && !(rate->ntsc && (rate->count == 30 || rate->count == 60))) {
        throw Failure({.what = "only 29.97 and 59.94 frames a second can skip frame numbers",
                       .advice = "choose one of these rates, or no drop frame"});
    }
    return *rate;
}

double FrameClock::FramesPerSecond() const {
    return rate_.ntsc ? static_cast<double>(rate_.count) * kThousand / kNtsc : rate_.count;
}

std::int64_t FrameClock::FramesOf(std::int64_t samples) const {
    const Ratio ratio = RatioOf(rate_, sampleRate_);
    constexpr Wide kMost = std::numeric_limits<std::int64_t>::max();
    const Wide frames = orvo::times::Nearest(Wide{samples} * ratio.frames, ratio.samples);
    return static_cast<std::int64_t>(std::clamp(frames, -kMost, kMost));
}

bool FrameClock::IsOnFrame(std::int64_t samples) const {
    const Ratio ratio = RatioOf(rate_, sampleRate_);
    return Wide{samples} * ratio.frames % ratio.samples == 0;
}

std::int64_t FrameClock::EndOfDay() const {
    constexpr std::int64_t kMinutes = 24 * 60;
    const std::int64_t numbers = std::int64_t{60} * kMinutes * rate_.count;
    const std::int64_t skipped = rate_.count / 15 * (kMinutes - kMinutes / 10);
    return rate_.dropFrame ? numbers - skipped : numbers;
}

std::string FrameClock::TimecodeOf(std::int64_t frame) const {
    // With as many samples a second as frames, a position is a frame.
    const FrameRate counted = {.count = rate_.count, .dropFrame = rate_.dropFrame};
    return orvo::FormatTimecode(frame, rate_.count, counted).value_or("");
}

}  // namespace toolkit::interchange
