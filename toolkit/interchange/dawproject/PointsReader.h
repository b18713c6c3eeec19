#pragma once

#include <cstdint>
#include <functional>
#include <vector>

#include "toolkit/interchange/dawproject/Targets.h"

namespace toolkit::interchange::dawproject {

/// A point as the document has it, but for its time.
struct ReadPoint {
    std::int64_t offset = 0;  ///< in samples
    double value = 0;
    bool holds = true;
};

/// The points of an element "Points" in order of time. Points without a value are reported.
/// @param samplesOf  where a time of the element lies
std::vector<ReadPoint> ReadPoints(
    const ProjectDocument& document, const pugi::xml_node& points,
    const std::function<std::int64_t(const pugi::xml_node&, double)>& samplesOf);

/// The same as a lane of a session. A straight line of factors becomes several of dB, which stay
/// near it.
orvo::AutomationLane AutomationOf(const std::vector<ReadPoint>& points, const ValueScale& scale);

/// The points from 0 to `duration`. A point of its own stands at each end beyond which there were
/// some.
std::vector<ReadPoint> Within(const std::vector<ReadPoint>& points, std::int64_t duration);

}  // namespace toolkit::interchange::dawproject
