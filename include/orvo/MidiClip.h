#pragma once

#include <cstdint>
#include <iosfwd>
#include <string>
#include <vector>

#include <orvo/Api.h>

namespace orvo {

/// A stretch of MIDI events on an instrument track.
struct MidiClip {
    std::uint32_t id = 0;
    std::int64_t sourceInPoint = 0;
    std::int64_t duration = 0;
    std::int64_t startPoint = 0;
    double hue = 0;  ///< the host's number
    std::string name{};
    bool selected = false;
    bool lockedInTime = false;
    std::vector<std::uint8_t> events{};  ///< in the host's own layout

    friend bool operator==(const MidiClip&, const MidiClip&) = default;
};

/// Prints the JSON form.
ORVO_API std::ostream& operator<<(std::ostream& out, const MidiClip& clip);

}  // namespace orvo
