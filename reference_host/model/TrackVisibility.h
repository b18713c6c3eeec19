#pragma once

#include <iosfwd>
#include <string>
#include <vector>

#include "platform/kelcore/Types.h"

namespace refhost::model {

/// A visible track of a preset.
struct TrackVisibility {
    kelcore::uint32 trackId = 0;
    float height = 0;  ///< the host's number
    bool minimized = false;

    friend bool operator==(const TrackVisibility&, const TrackVisibility&) = default;
};

/// A named choice of visible tracks.
struct TrackVisibilityPreset {
    kelcore::uint32 id = 0;
    std::u16string name{};
    std::vector<TrackVisibility> tracks{};

    friend bool operator==(const TrackVisibilityPreset&, const TrackVisibilityPreset&) = default;
};

/// Print the JSON form.
std::ostream& operator<<(std::ostream& out, const TrackVisibility& visibility);
std::ostream& operator<<(std::ostream& out, const TrackVisibilityPreset& preset);

}  // namespace refhost::model
