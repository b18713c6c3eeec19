#include "toolkit/Timecode.h"

#include <fmt/format.h>

#include <limits>

namespace toolkit {
namespace {

using kelcore::uint64;

struct FrameRate {
    uint64 count = 0;   ///< frames that are counted as a second
    bool ntsc = false;  ///< they last 1.001 seconds
    bool drop = false;
};

std::optional<FrameRate> FrameRateOf(const orvo::TimeFormat& format) {
    switch (format.format) {
        case orvo::TimeDisplay::Timecode:
            break;
        case orvo::TimeDisplay::Ntsc30:
            return FrameRate{30, true, false};
        case orvo::TimeDisplay::Ntsc30Drop:
            return FrameRate{30, true, true};
        case orvo::TimeDisplay::Ntsc60:
            return FrameRate{60, true, false};
        case orvo::TimeDisplay::Ntsc60Drop:
            return FrameRate{60, true, true};
        case orvo::TimeDisplay::Ntsc24:
            return FrameRate{24, true, false};
        default:
            return std::nullopt;
    }
    return format.frameRate > 0
               ? std::optional(FrameRate{static_cast<uint64>(format.frameRate), format.ntsc, false})
               : std::nullopt;
}

/// To the nearest frame. Whole periods first: the product with all samples may not fit into 64
/// bits.
std::optional<uint64> FramesIn(uint64 samples, kelcore::uint32 sampleRate, const FrameRate& rate) {
    const uint64 period = uint64{sampleRate} * (rate.ntsc ? 1001 : 1);  // in samples
    const uint64 perPeriod = rate.count * (rate.ntsc ? 1000 : 1);
    const uint64 periods = samples / period;
    if (perPeriod > std::numeric_limits<uint64>::max() / period ||
        periods >= std::numeric_limits<uint64>::max() / perPeriod) {
        return std::nullopt;
    }
    return periods * perPeriod + (samples % period * perPeriod + period / 2) / period;
}

/// Adds the numbers that are left out: the first two, or four at 60, of each minute except every
/// tenth.
uint64 WithDroppedNumbers(uint64 frames, const FrameRate& rate) {
    const uint64 dropped = rate.count / 15;
    const uint64 minute = rate.count * 60 - dropped;
    const uint64 tenMinutes = minute * 10 + dropped;
    const uint64 inTen = frames % tenMinutes;
    const uint64 minutes = inTen < dropped ? 0 : (inTen - dropped) / minute;
    return frames + dropped * (frames / tenMinutes * 9 + minutes);
}

}  // namespace

std::optional<std::string> FormatTimecode(kelcore::int64 samples, kelcore::uint32 sampleRate,
                                          const orvo::TimeFormat& format) {
    const auto rate = FrameRateOf(format);
    if (!rate || sampleRate == 0) {
        return std::nullopt;
    }
    const auto bits = static_cast<uint64>(samples);
    auto frames = FramesIn(samples < 0 ? 0 - bits : bits, sampleRate, *rate);
    if (!frames) {
        return std::nullopt;
    }
    if (rate->drop) {
        frames = WithDroppedNumbers(*frames, *rate);
    }
    const uint64 seconds = *frames / rate->count;
    return fmt::format("{}{:02}:{:02}:{:02}{}{:02}", samples < 0 && *frames != 0 ? "-" : "",
                       seconds / 3600, seconds / 60 % 60, seconds % 60, rate->drop ? ';' : ':',
                       *frames % rate->count);
}

}  // namespace toolkit
