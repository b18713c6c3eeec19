#pragma once

#include <iosfwd>
#include <string>
#include <vector>

#include "platform/kelcore/Types.h"

namespace refhost::model {

/// A member of a clip group. Neither need exist.
struct ClipGroupItem {
    kelcore::uint32 trackId = 0;
    kelcore::uint32 clipId = 0;

    friend bool operator==(const ClipGroupItem&, const ClipGroupItem&) = default;
};

/// Clips that are edited as one.
struct ClipGroup {
    kelcore::uint32 id = 0;
    std::u16string name{};
    double hue = 0;  ///< the host's number
    std::vector<ClipGroupItem> items{};

    friend bool operator==(const ClipGroup&, const ClipGroup&) = default;
};

/// Print the JSON form.
std::ostream& operator<<(std::ostream& out, const ClipGroupItem& item);
std::ostream& operator<<(std::ostream& out, const ClipGroup& group);

}  // namespace refhost::model
