#include "toolkit/interchange/ControlRest.h"

#include <fmt/format.h>

#include <algorithm>

namespace toolkit::interchange {
namespace {

using orvo::Component;
using orvo::Parameter;

void CountIf(bool isThere, std::string_view what, Reporter& reporter) {
    if (isThere) {
        reporter.CountLost(what);
    }
}

void CountDetailsOfLane(const orvo::AutomationLane& lane, Reporter& reporter) {
    CountIf(lane.readOnly, "locks of automation", reporter);
    CountIf(std::ranges::any_of(lane.keyframes, &orvo::Keyframe::selected), "selections", reporter);
}

}  // namespace

void ReportRestOf(const std::optional<Component>& control, const ModelPath& place,
                  Reporter& reporter) {
    if (!control) {
        return;
    }
    for (const auto& [number, parameter] : control->parameters) {
        if (number != 0) {
            reporter.Add(orvo::Fidelity::Lost, place / &Component::parameters / number,
                         "only parameter 0 has a place",
                         fmt::format("{}", parameter.value.value_or(0)));
        }
        CountIf(!parameter.name.empty(), "names of controls", reporter);
        CountIf(parameter.safeDuringWrite, "automation modes", reporter);
        if (parameter.automation) {
            CountDetailsOfLane(*parameter.automation, reporter);
        }
    }
    if (!control->presetChunk.empty()) {
        reporter.Add(orvo::Fidelity::Lost, place / &Component::presetChunk,
                     "the saved state of the control has no place",
                     fmt::format("{} bytes", control->presetChunk.size()));
    }
    CountIf(!control->powered, "powers of controls", reporter);
    for (const std::string& name : {control->guid, control->componentId, control->name}) {
        CountIf(!name.empty(), "names of controls", reporter);
    }
    CountIf(!control->presetName.empty(), "preset names", reporter);
    CountIf(control->editorVisible, "windows", reporter);
    CountIf(control->editorRect != orvo::EditorRect(), "windows", reporter);
}

void ReportLostLane(const std::optional<Component>& control, const ModelPath& place,
                    Reporter& reporter) {
    if (!control) {
        return;
    }
    const auto parameter = control->parameters.find(0);
    if (parameter != control->parameters.end() && parameter->second.automation) {
        reporter.Add(orvo::Fidelity::Lost,
                     place / &Component::parameters / std::size_t{0} / &Parameter::automation,
                     "the automation has no place",
                     fmt::format("{} keyframes", parameter->second.automation->keyframes.size()));
    }
}

}  // namespace toolkit::interchange
