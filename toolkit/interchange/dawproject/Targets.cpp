#include "toolkit/interchange/dawproject/Targets.h"

#include <algorithm>
#include <cmath>

#include "toolkit/TrackSummary.h"
#include "toolkit/interchange/Levels.h"

namespace toolkit::interchange::dawproject {
namespace {

constexpr std::string_view kDecibel = "decibel";
constexpr std::string_view kPercent = "percent";

double LevelOf(double value, const ValueScale& scale) {
    if (scale.unit == kDecibel) {
        const double decibels = std::max(value, kSilence);
        return scale.levels == orvo::LevelUnit::Decibels
                   ? decibels
                   : ToAmplitude(decibels, orvo::LevelUnit::Decibels);
    }
    const double amplitude = scale.unit == kPercent ? value / 100 : value;
    return FromAmplitude(std::max(amplitude, 0.0), scale.levels);
}

double PanOf(double value, const ValueScale& scale) {
    const double range = scale.maximum - scale.minimum;
    return range > 0 ? FromNormalizedPan((value - scale.minimum) / range)
                     : FromNormalizedPan(value);
}

}  // namespace

float ValueScale::ValueOf(double value) const {
    switch (kind) {
        case ValueKind::Level:
            return static_cast<float>(LevelOf(value, *this));
        case ValueKind::Pan:
            return static_cast<float>(PanOf(value, *this));
        case ValueKind::Switch:
            return value >= kOnFrom ? 1.0F : 0.0F;
        case ValueKind::Raw:
            break;
    }
    return static_cast<float>(value);
}

ValueScale ScaleOf(const ProjectDocument& document, const pugi::xml_node& parameter,
                   ValueKind kind) {
    ValueScale scale = {.kind = kind,
                        .unit = parameter.attribute("unit").value(),
                        .levels = document.Job().options.conventions.levels};
    const bool isNormalized = scale.unit == "normalized" || scale.unit.empty();
    const auto bound = [&](const char* name, double usual) {
        return NumberOf(parameter.attribute(name).value()).value_or(usual);
    };
    if (kind == ValueKind::Pan && !isNormalized) {
        const double most = scale.unit == kPercent ? 100 : 1;
        scale.minimum = bound("min", -most);
        scale.maximum = bound("max", most);
    }
    const bool isLevel = scale.unit.empty() || scale.unit == "linear" || scale.unit == kDecibel;
    if (kind == ValueKind::Level && !isLevel) {
        document.Report(orvo::Fidelity::Guessed, parameter, "the unit is unusual for a level",
                        scale.unit);
    }
    return scale;
}

}  // namespace toolkit::interchange::dawproject
