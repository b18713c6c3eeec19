#pragma once

#include <cstdint>
#include <iosfwd>
#include <string>
#include <vector>

#include <orvo/Api.h>

namespace orvo {

/// A visible track of a preset.
struct TrackVisibility {
    std::uint32_t trackId = 0;
    float height = 0;  ///< the host's number
    bool minimized = false;

    friend bool operator==(const TrackVisibility&, const TrackVisibility&) = default;
};

/// A named choice of visible tracks.
struct TrackVisibilityPreset {
    std::uint32_t id = 0;
    std::string name{};
    std::vector<TrackVisibility> tracks{};

    friend bool operator==(const TrackVisibilityPreset&, const TrackVisibilityPreset&) = default;
};

/// Print the JSON form.
ORVO_API std::ostream& operator<<(std::ostream& out, const TrackVisibility& visibility);
ORVO_API std::ostream& operator<<(std::ostream& out, const TrackVisibilityPreset& preset);

}  // namespace orvo
