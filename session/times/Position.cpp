#include <string>

#include "session/times/PositionText.h"

namespace orvo {
namespace {

/// In the session's time format. No value if it cannot show positions.
std::optional<std::string> FormatAsStated(const Session& session, std::int64_t position) {
    switch (session.timeFormat.format) {
        case TimeDisplay::Samples:
            return std::to_string(position);
        case TimeDisplay::BarsAndBeats:
            return FormatBarsAndBeats(position, session.sampleRate, session.musicalTime);
        default:
            break;
    }
    const auto rate = FrameRateOf(session.timeFormat);
    return rate ? FormatTimecode(position, session.sampleRate, *rate) : std::nullopt;
}

PositionResult ParseSamples(std::string_view text) {
    times::TextReader reader(text);
    const bool negative = reader.Take('-');
    const auto samples = reader.TakeNumber();
    if (!samples || !reader.IsAtEnd()) {
        return times::Failure("this is not a number of samples", "write a whole number");
    }
    const times::Wide count = *samples;
    return times::ResultOf(times::AsPosition(negative ? -count : count));
}

}  // namespace

std::string FormatPosition(const Session& session, std::int64_t position) {
    if (const auto text = FormatAsStated(session, position)) {
        return *text;
    }
    const auto time = FormatTime(position, session.sampleRate);
    return time ? *time : std::to_string(position);
}

PositionResult ParsePosition(const Session& session, std::string_view text) {
    const std::uint32_t rate = session.sampleRate;
    if (rate == 0 || session.timeFormat.format == TimeDisplay::Samples) {
        return ParseSamples(text);
    }
    if (!FormatAsStated(session, 0)) {
        return ParseTime(text, rate);
    }
    const auto frames = FrameRateOf(session.timeFormat);
    return frames ? ParseTimecode(text, rate, *frames)
                  : ParseBarsAndBeats(text, rate, session.musicalTime);
}

}  // namespace orvo
