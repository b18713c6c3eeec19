#pragma once

#include <cstdint>
#include <functional>
#include <vector>

#include <orvo/Interchange.h>
#include <orvo/Model.h>
#include "toolkit/ModelPath.h"
#include "toolkit/interchange/Reporter.h"

namespace toolkit::interchange {

/// A point of a lane in order of time. Until the next one the value holds or runs straight there.
struct LanePoint {
    std::int64_t offset = 0;
    double value = 0;
    bool holds = false;

    friend bool operator==(const LanePoint&, const LanePoint&) = default;
};

/// The points of a lane in order of time; of those at one offset the last one counts. Splines
/// become straight lines, which is reported.
/// @param place  of the lane
std::vector<LanePoint> PointsOf(const orvo::AutomationLane& lane, const ModelPath& place,
                                Reporter& reporter);

/// The same as amplitudes: straight lines of dB become short straight pieces, which stay within
/// 0.1 dB of them.
std::vector<LanePoint> AmplitudesOf(std::vector<LanePoint> points, orvo::LevelUnit unit);

/// For formats without a hold: a second point a sample before the next one.
std::vector<LanePoint> WithoutHolds(const std::vector<LanePoint>& points);

/// The value of a component's parameter, and its points.
struct ParameterLane {
    double value = 0;
    std::vector<LanePoint> points{};
};

/// The parameter of a fader, gain, send, pan or mute: number 0.
/// @param absent  the value if there is no component or no parameter
/// @param place   of the component
ParameterLane LaneOf(const std::optional<orvo::Component>& component, double absent,
                     const ModelPath& place, Reporter& reporter);

/// That of a clip, from its start whatever origin the conventions say. Warns of points outside the
/// clip.
ParameterLane ClipLaneOf(const std::optional<orvo::Component>& component, double absent,
                         const orvo::AudioClip& clip, const orvo::Conventions& conventions,
                         const ModelPath& place, Reporter& reporter);

}  // namespace toolkit::interchange
