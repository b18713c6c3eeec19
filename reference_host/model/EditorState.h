#pragma once

#include <iosfwd>
#include <string>

#include "platform/kelcore/Types.h"

namespace refhost::model {

/// The selected time range.
struct Selection {
    kelcore::int64 start = 0;
    kelcore::int64 duration = 0;

    friend bool operator==(const Selection&, const Selection&) = default;
};

/// What of the timeline is in sight.
struct ViewState {
    kelcore::int64 horizontalViewStart = 0;
    kelcore::int64 horizontalViewDuration = 0;
    kelcore::int32 trackControlsWidth = 0;    ///< the host's number
    kelcore::int32 verticalScrollOffset = 0;  ///< the host's number

    friend bool operator==(const ViewState&, const ViewState&) = default;
};

/// How times are shown.
struct TimeFormat {
    /// 0 decimal, 1 samples, 2 timecode, 3 and 4 NTSC 30 non-drop and drop frame, 6 bars and beats,
    /// 12 and 13 NTSC 60 non-drop and drop frame, 14 NTSC 24; others are the host's own.
    kelcore::int32 format = 0;
    kelcore::int32 frameRate = 0;  ///< frames per second
    bool ntsc = false;
    bool dropFrame = false;
    kelcore::int32 customFrameRate = 0;
    bool linkedToDefaults = true;  ///< follows the application's preferences

    friend bool operator==(const TimeFormat&, const TimeFormat&) = default;
};

/// The grid of bars and beats.
struct MusicalTime {
    double beatsPerMinute = 0;
    kelcore::int32 beatsPerBar = 0;
    kelcore::int32 noteLength = 0;  ///< the beat's note, the host's number
    kelcore::int32 subdivisions = 0;

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
    std::u16string key{};
    std::u16string value{};

    friend bool operator==(const Property&, const Property&) = default;
};

/// Print the JSON form.
std::ostream& operator<<(std::ostream& out, const Selection& selection);
std::ostream& operator<<(std::ostream& out, const ViewState& view);
std::ostream& operator<<(std::ostream& out, const TimeFormat& format);
std::ostream& operator<<(std::ostream& out, const MusicalTime& time);
std::ostream& operator<<(std::ostream& out, const MixingOptions& options);
std::ostream& operator<<(std::ostream& out, const Property& property);

}  // namespace refhost::model
