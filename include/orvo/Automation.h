#pragma once

#include <cstdint>
#include <iosfwd>
#include <vector>

#include <orvo/Api.h>

namespace orvo {

/// How the value goes on from a keyframe to the next one.
enum class KeyframeType : bool {
    Linear = false,  ///< evenly
    Hold = true      ///< it stays until the next one
};

/// A point of a lane. The value is in the parameter's own unit.
struct Keyframe {
    float value = 0;
    std::int64_t sampleOffset = 0;  ///< on the timeline of the lane's owner
    KeyframeType type = KeyframeType::Linear;
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

/// Prints the value's word.
ORVO_API std::ostream& operator<<(std::ostream& out, KeyframeType type);

/// Print the JSON form.
ORVO_API std::ostream& operator<<(std::ostream& out, const Keyframe& keyframe);
ORVO_API std::ostream& operator<<(std::ostream& out, const AutomationLane& lane);

}  // namespace orvo
