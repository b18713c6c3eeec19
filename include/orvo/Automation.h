#pragma once

#include <cstdint>
#include <iosfwd>
#include <vector>

#include <orvo/Api.h>

namespace orvo {

/// A point of a lane. The value is in the parameter's own unit.
struct Keyframe {
    float value = 0;
    std::int64_t sampleOffset = 0;  ///< on the timeline of the lane's owner
    bool hold = false;              ///< the value stays until the next keyframe
    bool selected = false;

    friend bool operator==(const Keyframe&, const Keyframe&) = default;
};

/// The automation of one parameter.
struct AutomationLane {
    bool enableSplines = false;  ///< curves run smoothly through the keyframes
    bool readOnly = false;
    std::vector<Keyframe>
        keyframes{};  ///< in the order of the file, which need not be that of time

    friend bool operator==(const AutomationLane&, const AutomationLane&) = default;
};

/// Print the JSON form.
ORVO_API std::ostream& operator<<(std::ostream& out, const Keyframe& keyframe);
ORVO_API std::ostream& operator<<(std::ostream& out, const AutomationLane& lane);

}  // namespace orvo
