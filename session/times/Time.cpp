#include <fmt/format.h>

#include <algorithm>

#include "session/times/PositionText.h"

namespace orvo {
namespace {

using times::TextReader;
using times::Wide;

constexpr std::size_t kMostDecimalsRead = 18;

constexpr std::uint64_t PowerOfTen(std::size_t exponent) {
    std::uint64_t power = 1;
    for (; exponent > 0; --exponent) {
        power *= 10;
    }
    return power;
}

/// A position without its sign.
struct Clock {
    bool negative = false;
    std::uint64_t seconds = 0;
    std::string fraction;  ///< ".500"; empty: no digits
};

Clock ClockOf(std::int64_t position, std::uint32_t sampleRate, unsigned decimals) {
    decimals = std::min(decimals, kMostDecimals);
    const std::uint64_t scale = PowerOfTen(decimals);
    const Wide units = times::Nearest(Wide{position} * scale, sampleRate);
    const Wide magnitude = units < 0 ? -units : units;
    return {.negative = units < 0,
            .seconds = static_cast<std::uint64_t>(magnitude / scale),
            .fraction = decimals == 0
                            ? ""
                            : fmt::format(".{:0{}}", static_cast<std::uint64_t>(magnitude % scale),
                                          decimals)};
}

/// A part of a second.
struct Fraction {
    std::uint64_t count = 0;
    std::uint64_t scale = 1;
};

std::optional<Fraction> TakeFraction(TextReader& text) {
    if (!text.Take('.')) {
        return Fraction{};
    }
    const std::size_t before = text.Rest().size();
    const auto count = text.TakeNumber();
    const std::size_t digits = before - text.Rest().size();
    if (!count || digits > kMostDecimalsRead) {
        return std::nullopt;
    }
    return Fraction{*count, PowerOfTen(digits)};
}

/// Whole seconds, optionally after minutes, or after hours and minutes.
std::optional<Wide> TakeSeconds(TextReader& text) {
    constexpr int kMostParts = 3;
    Wide seconds = 0;
    for (int part = 0; part < kMostParts; ++part) {
        const auto number = text.TakeNumber();
        if (!number || (part > 0 && *number >= 60)) {
            return std::nullopt;
        }
        seconds = seconds * 60 + *number;
        if (!text.Take(':')) {
            return seconds;
        }
    }
    return std::nullopt;
}

}  // namespace

std::optional<std::string> FormatTime(std::int64_t position, std::uint32_t sampleRate,
                                      unsigned decimals) {
    if (sampleRate == 0) {
        return std::nullopt;
    }
    const Clock clock = ClockOf(position, sampleRate, decimals);
    return fmt::format("{}{}:{:02}:{:02}{}", clock.negative ? "-" : "", clock.seconds / 3600,
                       clock.seconds / 60 % 60, clock.seconds % 60, clock.fraction);
}

std::optional<std::string> FormatSeconds(std::int64_t position, std::uint32_t sampleRate,
                                         unsigned decimals) {
    if (sampleRate == 0) {
        return std::nullopt;
    }
    const Clock clock = ClockOf(position, sampleRate, decimals);
    return fmt::format("{}{}{}", clock.negative ? "-" : "", clock.seconds, clock.fraction);
}

PositionResult ParseTime(std::string_view text, std::uint32_t sampleRate) {
    if (sampleRate == 0) {
        return times::NoSampleRate();
    }
    TextReader reader(text);
    const bool negative = reader.Take('-');
    const auto seconds = TakeSeconds(reader);
    const auto fraction = seconds ? TakeFraction(reader) : std::nullopt;
    if (!fraction || !reader.IsAtEnd()) {
        return times::Failure("this is not a time",
                              "write h:mm:ss.mmm, as 1:02:03.500, or seconds, as 3723.5");
    }
    const Wide samples =
        *seconds * sampleRate + times::Nearest(Wide{fraction->count} * sampleRate, fraction->scale);
    return times::ResultOf(times::AsPosition(negative ? -samples : samples));
}

}  // namespace orvo
