#pragma once

#include <cstdint>
#include <iosfwd>
#include <string>

#include <orvo/Api.h>

namespace orvo {

/// The selected time range.
struct Selection {
    std::int64_t start = 0;
    std::int64_t duration = 0;

    friend bool operator==(const Selection&, const Selection&) = default;
};

/// The visible part of the timeline.
struct ViewState {
    std::int64_t horizontalViewStart = 0;
    std::int64_t horizontalViewDuration = 0;
    std::int32_t trackControlsWidth = 0;    ///< the host's number
    std::int32_t verticalScrollOffset = 0;  ///< the host's number

    friend bool operator==(const ViewState&, const ViewState&) = default;
};

/// The form in which times are shown. Values without a name here are the host's own and are kept.
enum class TimeDisplay : std::int32_t {
    Decimal = 0,
    Samples = 1,
    Timecode = 2,    ///< at the frame rate that is stored beside it
    Ntsc30 = 3,      ///< timecode, non-drop
    Ntsc30Drop = 4,  ///< timecode, drop frame
    BarsAndBeats = 6,
    Ntsc60 = 12,      ///< timecode, non-drop
    Ntsc60Drop = 13,  ///< timecode, drop frame
    Ntsc24 = 14       ///< timecode
};

/// How times are shown.
struct TimeFormat {
    TimeDisplay format = TimeDisplay::Decimal;
    std::int32_t frameRate = 0;  ///< frames per second
    bool ntsc = false;
    bool dropFrame = false;
    std::int32_t customFrameRate = 0;
    bool linkedToDefaults = true;  ///< follows the application's preferences

    friend bool operator==(const TimeFormat&, const TimeFormat&) = default;
};

/// The grid of bars and beats.
struct MusicalTime {
    double beatsPerMinute = 0;
    std::int32_t beatsPerBar = 0;
    std::int32_t noteLength = 0;  ///< the beat's note, the host's number
    std::int32_t subdivisions = 0;

    friend bool operator==(const MusicalTime&, const MusicalTime&) = default;
};

/// The default pan law and how clips mix.
struct MixingOptions {
    bool panLogarithmic = false;
    double panPower = -3;  ///< the host's number
    bool playOverlappingClips = false;

    friend bool operator==(const MixingOptions&, const MixingOptions&) = default;
};

/// A text under a key.
struct Property {
    std::string key{};
    std::string value{};

    friend bool operator==(const Property&, const Property&) = default;
};

/// Prints the value's word, or its number if it has none.
ORVO_API std::ostream& operator<<(std::ostream& out, TimeDisplay display);

/// Print the JSON form.
ORVO_API std::ostream& operator<<(std::ostream& out, const Selection& selection);
ORVO_API std::ostream& operator<<(std::ostream& out, const ViewState& view);
ORVO_API std::ostream& operator<<(std::ostream& out, const TimeFormat& format);
ORVO_API std::ostream& operator<<(std::ostream& out, const MusicalTime& time);
ORVO_API std::ostream& operator<<(std::ostream& out, const MixingOptions& options);
ORVO_API std::ostream& operator<<(std::ostream& out, const Property& property);

}  // namespace orvo
