#include "toolkit/interchange/dawproject/Elements.h"

#include <fmt/format.h>

#include <algorithm>
#include <cmath>

#include "toolkit/interchange/HueColour.h"

namespace toolkit::interchange::dawproject {

double Writing::Seconds(std::int64_t samples) const {
    return static_cast<double>(samples) / std::max(job.session.sampleRate, 1U);
}

std::string NumberText(double value) {
    return fmt::format("{}", value);
}

void WriteColour(const Writing& writing, double hue) {
    constexpr double kNoHue = -1;
    if (const auto colour = ColourOf(hue)) {
        writing.xml.Attribute("color", colour->Hex());
        writing.job.reporter.CountLost("fractions of hues", std::trunc(hue) != hue ? 1 : 0);
    } else {
        writing.job.reporter.CountLost("hues without a colour", hue != kNoHue ? 1 : 0);
    }
}

void WriteName(XmlWriter& xml, std::string_view name) {
    if (!name.empty()) {
        xml.Attribute("name", name);
    }
}

}  // namespace toolkit::interchange::dawproject
