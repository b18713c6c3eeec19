#pragma once

#include <cstdint>
#include <iosfwd>
#include <string>
#include <vector>

#include <orvo/Api.h>

namespace orvo {

/// A member of a clip group. The track and the clip need not exist.
struct ClipGroupItem {
    std::uint32_t trackId = 0;
    std::uint32_t clipId = 0;

    friend bool operator==(const ClipGroupItem&, const ClipGroupItem&) = default;
};

/// Clips that are edited as one.
struct ClipGroup {
    std::uint32_t id = 0;
    std::string name{};
    double hue = 0;  ///< the host's number
    std::vector<ClipGroupItem> items{};

    friend bool operator==(const ClipGroup&, const ClipGroup&) = default;
};

/// Print the JSON form.
ORVO_API std::ostream& operator<<(std::ostream& out, const ClipGroupItem& item);
ORVO_API std::ostream& operator<<(std::ostream& out, const ClipGroup& group);

}  // namespace orvo
