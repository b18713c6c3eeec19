#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "toolkit/interchange/Lanes.h"
#include "toolkit/interchange/XmlWriter.h"

namespace toolkit::interchange {

/// Points of automation do not go above this factor.
inline constexpr double kHighestGain = 2;

/// What parts of an Ardour session are written with.
class ArdourXml {
public:
    ArdourXml(XmlWriter::Sink sink, std::uint32_t sampleRate);

    XmlWriter& Xml() { return xml_; }

    /// A number that no other element has.
    std::uint64_t NewId() { return ++lastId_; }
    std::uint64_t LastId() const { return lastId_; }

    /// "a" and the time in ticks, rounded up, because the program rounds down when it reads.
    std::string TimeOf(std::int64_t samples) const;

    /// A control with a fixed value.
    void Control(std::string_view name, std::string_view flags, double value);

    /// A list of points; without points, an empty list that is off.
    /// @param style  "Linear", "Logarithmic", "Exponential" or "Discrete"
    void List(std::string_view name, std::string_view style, const std::vector<LanePoint>& points);

private:
    XmlWriter xml_;
    std::uint32_t sampleRate_;
    std::uint64_t lastId_ = 0;
};

}  // namespace toolkit::interchange
