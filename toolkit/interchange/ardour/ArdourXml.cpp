#include "toolkit/interchange/ardour/ArdourXml.h"

#include <fmt/format.h>

#include <algorithm>
#include <iterator>
#include <limits>
#include <utility>

#include "session/times/Arithmetic.h"

namespace toolkit::interchange {

ArdourXml::ArdourXml(XmlWriter::Sink sink, std::uint32_t sampleRate)
    : xml_(std::move(sink)), sampleRate_(std::max(sampleRate, 1U)) {}

std::string ArdourXml::TimeOf(std::int64_t samples) const {
    using orvo::times::Wide;
    constexpr std::int64_t kTicksPerSecond = 282'240'000;
    constexpr Wide kMost = std::numeric_limits<std::int64_t>::max();
    const Wide ticks = orvo::times::Ceil(Wide{samples} * kTicksPerSecond, sampleRate_);
    return fmt::format("a{}", static_cast<std::int64_t>(std::clamp(ticks, -kMost, kMost)));
}

void ArdourXml::Control(std::string_view name, std::string_view flags, double value) {
    xml_.Open("Controllable")
        .Attribute("name", name)
        .Attribute("id", NewId())
        .Attribute("flags", flags)
        .Attribute("value", value);
    xml_.Close();
}

void ArdourXml::List(std::string_view name, std::string_view style,
                     const std::vector<LanePoint>& points) {
    xml_.Open("AutomationList")
        .Attribute("automation-id", name)
        .Attribute("id", NewId())
        .Attribute("interpolation-style", style)
        .Attribute("time-domain", "AudioTime")
        .Attribute("state", points.empty() ? "Off" : "Play");
    if (!points.empty()) {
        std::string events;
        for (const LanePoint& point : points) {
            fmt::format_to(std::back_inserter(events), "{} {}\n", TimeOf(point.offset),
                           point.value);
        }
        xml_.Open("events").Text(events);
        xml_.Close();
    }
    xml_.Close();
}

}  // namespace toolkit::interchange
