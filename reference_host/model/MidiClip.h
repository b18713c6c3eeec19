#pragma once

#include <iosfwd>
#include <string>
#include <vector>

#include "platform/kelcore/Types.h"

namespace refhost::model {

/// A stretch of MIDI events on an instrument track.
struct MidiClip {
    kelcore::uint32 id = 0;
    kelcore::int64 sourceInPoint = 0;
    kelcore::int64 duration = 0;
    kelcore::int64 startPoint = 0;
    double hue = 0;  ///< the host's number
    std::u16string name{};
    bool selected = false;
    bool lockedInTime = false;
    std::vector<kelcore::byte> events{};  ///< in the host's own layout

    friend bool operator==(const MidiClip&, const MidiClip&) = default;
};

/// Prints the JSON form.
std::ostream& operator<<(std::ostream& out, const MidiClip& clip);

}  // namespace refhost::model
