#include "toolkit/interchange/dawproject/Controls.h"

#include <fmt/format.h>

#include <algorithm>
#include <cmath>

namespace toolkit::interchange::dawproject {
namespace {

using orvo::Component;
using orvo::Fidelity;

void ReportWindow(const Component& component, Reporter& reporter) {
    reporter.CountLost("names of presets", component.presetName.empty() ? 0 : 1);
    reporter.CountLost("windows of effects", component.editorRect != orvo::EditorRect() ? 1 : 0);
    reporter.CountLost("open windows of effects", component.editorVisible ? 1 : 0);
}

/// Values that are no numbers are left out.
void ReportNoNumbers(const orvo::Parameter& parameter, const ModelPath& place, Reporter& reporter) {
    const auto isNoNumber = [](const orvo::Keyframe& keyframe) {
        return std::isnan(keyframe.value);
    };
    const bool isInLane =
        parameter.automation && std::ranges::any_of(parameter.automation->keyframes, isNoNumber);
    if (isInLane || std::isnan(parameter.value.value_or(0))) {
        reporter.Add(Fidelity::Lost, place, "a value is no number", "nan");
    }
}

void ReportLane(const orvo::Parameter& parameter, const ModelPath& place, Reporter& reporter) {
    ReportNoNumbers(parameter, place, reporter);
    reporter.CountLost("parameters kept from automation", parameter.safeDuringWrite ? 1 : 0);
    if (!parameter.automation) {
        return;
    }
    reporter.CountLost("read-only lanes", parameter.automation->readOnly ? 1 : 0);
    const auto selected =
        std::ranges::count_if(parameter.automation->keyframes, &orvo::Keyframe::selected);
    reporter.CountLost("selections", static_cast<std::size_t>(selected));
}

}  // namespace

void ReportControl(const std::optional<Component>& control, const ModelPath& place,
                   Reporter& reporter) {
    if (!control) {
        return;
    }
    ReportWindow(*control, reporter);
    reporter.CountLost("GUIDs of controls", control->guid.empty() ? 0 : 1);
    reporter.CountLost("identifiers of controls", control->componentId.empty() ? 0 : 1);
    reporter.CountLost("names of controls", control->name.empty() ? 0 : 1);
    if (!control->presetChunk.empty()) {
        reporter.Add(Fidelity::Lost, place / &Component::presetChunk,
                     "a control has no place for its state");
    }
    if (!control->powered) {
        reporter.Add(Fidelity::Lost, place / &Component::powered,
                     "that the control is off has no place");
    }
    for (const auto& [number, parameter] : control->parameters) {
        if (number == 0) {
            ReportLane(parameter, place / &Component::parameters / number, reporter);
            reporter.CountLost("names of values of controls", parameter.name.empty() ? 0 : 1);
        } else {
            reporter.Add(Fidelity::Lost, place / &Component::parameters / number,
                         "a control has no place for more than one value",
                         fmt::format("{}", parameter.value.value_or(0)));
        }
    }
}

void ReportEffect(const Component& effect, const ModelPath& place, Reporter& reporter) {
    ReportWindow(effect, reporter);
    if (!effect.guid.empty() && !effect.componentId.empty()) {
        reporter.Add(Fidelity::Lost, place / &Component::componentId,
                     "an effect has one identifier, which is its GUID", effect.componentId);
    }
    for (const auto& [number, parameter] : effect.parameters) {
        ReportLane(parameter, place / &Component::parameters / number, reporter);
    }
}

void ReportSwitch(const ParameterLane& lane, const ModelPath& place, Reporter& reporter) {
    const auto isBetween = [](double value) { return value != 0 && value != 1; };
    if (isBetween(lane.value)) {
        reporter.Add(Fidelity::Approximated, place, "it is on or off, with nothing between",
                     fmt::format("{}", lane.value));
    }
    const auto count = std::ranges::count_if(lane.points, isBetween, &LanePoint::value);
    if (count > 0) {
        reporter.Add(Fidelity::Approximated, place, "its lane is on or off, with nothing between",
                     fmt::format("{} points", count));
    }
}

}  // namespace toolkit::interchange::dawproject
