#include <fmt/format.h>

#include <algorithm>
#include <ostream>

#include "format/state/TimeFormat.h"
#include "session/times/PositionText.h"

namespace orvo {
namespace {

using times::TextReader;
using times::Wide;

constexpr std::uint32_t kDroppingRates = 30;  // and multiples of it

bool IsValid(const FrameRate& rate) {
    return rate.count > 0 && (!rate.dropFrame || rate.count % kDroppingRates == 0);
}

/// The frames that last a whole number of samples.
struct Period {
    Wide frames = 0;
    Wide samples = 0;
};

Period PeriodOf(const FrameRate& rate, std::uint32_t sampleRate) {
    return rate.ntsc ? Period{Wide{rate.count} * 1000, Wide{sampleRate} * 1001}
                     : Period{rate.count, sampleRate};
}

std::uint32_t DroppedIn(const FrameRate& rate) {
    return rate.dropFrame ? rate.count / 15 : 0;
}

/// The number of a frame, counting the skipped numbers.
Wide NumberOf(Wide frames, const FrameRate& rate) {
    const Wide dropped = DroppedIn(rate);
    const Wide minute = Wide{rate.count} * 60 - dropped;
    const Wide tenMinutes = minute * 10 + dropped;
    const Wide inTen = frames % tenMinutes;
    const Wide minutes = inTen < dropped ? 0 : (inTen - dropped) / minute;
    return frames + dropped * (frames / tenMinutes * 9 + minutes);
}

/// Parsed timecode.
struct FrameLabel {
    bool negative = false;
    std::uint64_t hours = 0;
    std::uint64_t minutes = 0;
    std::uint64_t seconds = 0;
    bool semicolon = false;
    std::uint64_t frames = 0;
};

std::optional<FrameLabel> ReadFrameLabel(std::string_view text) {
    TextReader reader(text);
    FrameLabel label{.negative = reader.Take('-')};
    for (std::uint64_t* const part : {&label.hours, &label.minutes, &label.seconds}) {
        const auto number = reader.TakeNumber();
        label.semicolon = number && part == &label.seconds && reader.Take(';');
        if (!number || (!label.semicolon && !reader.Take(':'))) {
            return std::nullopt;
        }
        *part = *number;
    }
    const auto frames = reader.TakeNumber();
    if (!frames || !reader.IsAtEnd() || label.minutes >= 60 || label.seconds >= 60) {
        return std::nullopt;
    }
    label.frames = *frames;
    return label;
}

bool IsDropped(const FrameLabel& label, const FrameRate& rate) {
    return label.minutes % 10 != 0 && label.seconds == 0 && label.frames < DroppedIn(rate);
}

/// The frames between 0 and a label, whatever its sign.
Wide FramesBefore(const FrameLabel& label, const FrameRate& rate) {
    const Wide minutes = Wide{label.hours} * 60 + label.minutes;
    const Wide number = (minutes * 60 + label.seconds) * rate.count + label.frames;
    return number - DroppedIn(rate) * (minutes - minutes / 10);
}

PositionResult PositionOf(const FrameLabel& label, std::uint32_t sampleRate,
                          const FrameRate& rate) {
    const Period period = PeriodOf(rate, sampleRate);
    const Wide frames = FramesBefore(label, rate);
    return times::ResultOf(
        times::FirstSampleOf(label.negative ? -frames : frames, period.samples, period.frames));
}

}  // namespace

std::ostream& operator<<(std::ostream& out, const FrameRate& rate) {
    return out << rate.count << " frames a second" << (rate.ntsc ? ", NTSC" : "")
               << (rate.dropFrame ? ", drop frame" : "");
}

std::optional<FrameRate> FrameRateOf(const TimeFormat& format) {
    for (const tses::NtscTimeCode& code : tses::kNtscTimeCodes) {
        if (TimeDisplay{code.format} == format.format) {
            return FrameRate{.count = static_cast<std::uint32_t>(code.frameRate),
                             .ntsc = true,
                             .dropFrame = code.dropFrame};
        }
    }
    if (format.format != TimeDisplay::Timecode || format.frameRate <= 0) {
        return std::nullopt;
    }
    FrameRate rate{.count = static_cast<std::uint32_t>(format.frameRate), .ntsc = format.ntsc};
    rate.dropFrame = format.dropFrame && rate.ntsc && rate.count % kDroppingRates == 0;
    return rate;
}

std::optional<std::string> FormatTimecode(std::int64_t position, std::uint32_t sampleRate,
                                          const FrameRate& rate) {
    if (sampleRate == 0 || !IsValid(rate)) {
        return std::nullopt;
    }
    const Period period = PeriodOf(rate, sampleRate);
    const Wide frames = times::Nearest(position * period.frames, period.samples);
    const Wide number = NumberOf(frames < 0 ? -frames : frames, rate);
    const auto seconds = static_cast<std::uint64_t>(number / rate.count);
    return fmt::format("{}{:02}:{:02}:{:02}{}{:0{}}", frames < 0 ? "-" : "", seconds / 3600,
                       seconds / 60 % 60, seconds % 60, rate.dropFrame ? ';' : ':',
                       static_cast<std::uint64_t>(number % rate.count),
                       std::max(2, times::DigitsBelow(rate.count)));
}

PositionResult ParseTimecode(std::string_view text, std::uint32_t sampleRate,
                             const FrameRate& rate) {
    if (sampleRate == 0) {
        return times::NoSampleRate();
    }
    if (!IsValid(rate)) {
        return times::Failure(
            "there is no timecode with this frame rate",
            "use 1 frame a second or more, and drop frame only with a multiple of 30");
    }
    const auto label = ReadFrameLabel(text);
    if (!label) {
        return times::Failure("this is not timecode", "write hh:mm:ss:ff, as 01:00:00:00");
    }
    if (label->semicolon && !rate.dropFrame) {
        return times::Failure("a semicolon means drop frame, which this frame rate does not have",
                              "put a colon before the frames");
    }
    if (label->frames >= rate.count) {
        return times::Failure(fmt::format("a second has no frame {}", label->frames),
                              fmt::format("count frames from 0 to {}", rate.count - 1));
    }
    if (IsDropped(*label, rate)) {
        return times::Failure("drop frame skips this frame number",
                              fmt::format("start this minute with frame {}", DroppedIn(rate)));
    }
    return PositionOf(*label, sampleRate, rate);
}

}  // namespace orvo
