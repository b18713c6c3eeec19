#include <fmt/format.h>

#include <algorithm>
#include <cmath>

#include "session/times/PositionText.h"

namespace orvo {
namespace {

using times::TextReader;
using times::Wide;

// These keep the products of a position within 125 bits.
constexpr std::int32_t kMost = 1000000;
constexpr std::int32_t kTempoScale = 1000000;

/// The grid in whole numbers.
struct Grid {
    Wide beatsPerBar = 1;
    Wide subdivisions = 1;
    // `units` subdivisions last `samples` samples.
    Wide units = 1;
    Wide samples = 1;
};

std::optional<Grid> GridOf(std::uint32_t sampleRate, const MusicalTime& time) {
    const double tempo = time.beatsPerMinute * kTempoScale;
    const bool isValid = sampleRate != 0 && tempo >= 0.5 && time.beatsPerMinute <= kMost &&
                         time.beatsPerBar > 0 && time.beatsPerBar <= kMost &&
                         time.subdivisions <= kMost;
    if (!isValid) {
        return std::nullopt;
    }
    Grid grid{.beatsPerBar = time.beatsPerBar, .subdivisions = std::max(1, time.subdivisions)};
    grid.units = Wide{std::llround(tempo)} * grid.subdivisions;
    grid.samples = Wide{sampleRate} * 60 * kTempoScale;
    return grid;
}

/// Parsed bars and beats.
struct BeatLabel {
    bool negative = false;
    std::uint64_t bar = 0;
    std::uint64_t beat = 0;
    std::uint64_t subdivision = 0;
};

std::optional<BeatLabel> ReadBeatLabel(std::string_view text) {
    TextReader reader(text);
    BeatLabel label{.negative = reader.Take('-')};
    const auto bar = reader.TakeNumber();
    const auto beat = bar && reader.Take(':') ? reader.TakeNumber() : std::nullopt;
    if (!beat) {
        return std::nullopt;
    }
    label.bar = *bar;
    label.beat = *beat;
    if (reader.Take('.')) {
        const auto subdivision = reader.TakeNumber();
        if (!subdivision) {
            return std::nullopt;
        }
        label.subdivision = *subdivision;
    }
    return reader.IsAtEnd() ? std::optional(label) : std::nullopt;
}

PositionResult PositionOf(const BeatLabel& label, const Grid& grid) {
    const Wide bar = label.negative ? -Wide{label.bar} : Wide{label.bar};
    const Wide beats = (bar - 1) * grid.beatsPerBar + label.beat - 1;
    return times::ResultOf(times::FirstSampleOf(beats * grid.subdivisions + label.subdivision,
                                                grid.samples, grid.units));
}

}  // namespace

std::optional<std::string> FormatBarsAndBeats(std::int64_t position, std::uint32_t sampleRate,
                                              const MusicalTime& time) {
    const auto grid = GridOf(sampleRate, time);
    if (!grid) {
        return std::nullopt;
    }
    const Wide units = times::Nearest(position * grid->units, grid->samples);
    const Wide beats = times::Floor(units, grid->subdivisions);
    const Wide bars = times::Floor(beats, grid->beatsPerBar);
    std::string text = fmt::format("{}:{}", bars + 1, beats - bars * grid->beatsPerBar + 1);
    if (grid->subdivisions > 1) {
        text +=
            fmt::format(".{:0{}}", static_cast<std::uint32_t>(units - beats * grid->subdivisions),
                        times::DigitsBelow(static_cast<std::uint32_t>(grid->subdivisions)));
    }
    return text;
}

PositionResult ParseBarsAndBeats(std::string_view text, std::uint32_t sampleRate,
                                 const MusicalTime& time) {
    if (sampleRate == 0) {
        return times::NoSampleRate();
    }
    const auto grid = GridOf(sampleRate, time);
    if (!grid) {
        return times::Failure(
            "bars and beats need a tempo",
            "set a tempo and the beats of a bar, each above 0 and at most 1000000");
    }
    const auto label = ReadBeatLabel(text);
    if (!label) {
        return times::Failure("this is not a position in bars and beats",
                              "write bar:beat.subdivision, as 3:2.05, or bar:beat");
    }
    if (label->beat < 1 || label->beat > grid->beatsPerBar) {
        return times::Failure(fmt::format("a bar has no beat {}", label->beat),
                              fmt::format("count beats from 1 to {}", grid->beatsPerBar));
    }
    if (label->subdivision >= grid->subdivisions) {
        return times::Failure(
            fmt::format("a beat has no subdivision {}", label->subdivision),
            fmt::format("count subdivisions from 0 to {}", grid->subdivisions - 1));
    }
    return PositionOf(*label, *grid);
}

}  // namespace orvo
