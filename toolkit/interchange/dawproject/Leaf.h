#pragma once

#include <cstdint>
#include <limits>
#include <optional>
#include <pugixml.hpp>
#include <string>
#include <vector>

#include "toolkit/interchange/dawproject/PointsReader.h"

namespace toolkit::interchange::dawproject {

enum class LeafKind { Audio, Video, Notes };

/// A value of a clip that may move.
struct Envelope {
    std::vector<ReadPoint> points{};  ///< from the start of the leaf; a single one stands still
    ValueScale scale{};
};

/// What content comes down to: a stretch of media that plays once on a track, or loops whole.
struct Leaf {
    LeafKind kind = LeafKind::Audio;
    pugi::xml_node element{};
    std::int64_t start = 0;  ///< on the timeline, in samples
    std::int64_t end = 0;
    std::int64_t sourceIn = 0;  ///< in the media, not stretched
    double stretch = 1;
    bool loops = false;
    bool isMuted = false;
    bool isCrossfade = false;  ///< with the clip before it
    std::int64_t fadeIn = 0;
    std::int64_t fadeOut = 0;
    std::optional<Envelope> gain{};
    std::optional<Envelope> pan{};
    std::string name{};
    double hue = -1;
};

/// Times of an element, from one to before another one.
struct Window {
    double start = -std::numeric_limits<double>::infinity();
    double end = std::numeric_limits<double>::infinity();

    bool IsEmpty() const { return !(start < end); }
};

}  // namespace toolkit::interchange::dawproject
