#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "toolkit/interchange/Format.h"
#include "toolkit/interchange/XmlWriter.h"

namespace toolkit::interchange::dawproject {

// Units of parameters and of times.
inline constexpr std::string_view kLinear = "linear";
inline constexpr std::string_view kNormalized = "normalized";
inline constexpr std::string_view kSeconds = "seconds";

/// What all parts of the writing work with.
struct Writing {
    const Export& job;
    XmlWriter& xml;

    /// A position or length in samples as seconds.
    double Seconds(std::int64_t samples) const;
};

/// A number as the attributes of parameters and points have it: "inf", "-inf", or in digits.
std::string NumberText(double value);

/// The attribute of a thing's colour, unless it has none. Counts hues that do not come back.
void WriteColour(const Writing& writing, double hue);

/// The attribute of a thing's name, unless it is empty.
void WriteName(XmlWriter& xml, std::string_view name);

}  // namespace toolkit::interchange::dawproject
