#include "reference_host/nodes/Components.h"

#include <algorithm>

#include "reference_host/nodes/KeyIndex.h"

namespace refhost {
namespace {

LaneNode& LaneOf(DataNode<orvo::Component>& component, kelcore::uint32 index) {
    return component.NodeAt<LaneNode>(&kTagOf<&orvo::Component::parameters>, index,
                                      [index](orvo::Component& value) -> orvo::AutomationLane& {
                                          return *value.parameters.at(index).automation;
                                      });
}

}  // namespace

void EditComponent::SetParameterValue(kelcore::uint32 index, float value) {
    Value().parameters[index].value = value;
}

void EditComponent::SetParameterName(kelcore::uint32 index, const kelcore::char16* name) {
    Value().parameters[index].name = kelcore::UTF16to8(name);
}

void EditComponent::SetParameterSafeDuringWrite(kelcore::uint32 index, bool safe) {
    Value().parameters[index].safeDuringWrite = safe;
}

tses::IEditAutomationLane* EditComponent::GetParameterAutomation(kelcore::uint32 index) {
    Fill(Value().parameters[index].automation);
    return &LaneOf(Owner(), index).Edit();
}

kelcore::uint32 QueryComponent::GetParameterCount() {
    const auto& parameters = Value().parameters;
    // A count that includes the highest index of all would not fit into 32 bits.
    return parameters.empty() ? 0 : std::min(parameters.rbegin()->first, orvo::kNoId - 1) + 1;
}

bool QueryComponent::GetParameterValue(kelcore::uint32 index, float& value) {
    const orvo::Parameter* const parameter = Find(index);
    if (parameter == nullptr || !parameter->value) {
        return false;
    }
    value = *parameter->value;
    return true;
}

tses::IHostString* QueryComponent::GetParameterName(kelcore::uint32 index) {
    const orvo::Parameter* const parameter = Find(index);
    return parameter == nullptr ? nullptr : GiveOut(parameter->name);
}

tses::IQueryAutomationLane* QueryComponent::GetParameterAutomation(kelcore::uint32 index) {
    const orvo::Parameter* const parameter = Find(index);
    return parameter == nullptr || !parameter->automation ? nullptr
                                                          : &LaneOf(Owner(), index).Query();
}

bool QueryComponent::IsParameterSafeDuringWrite(kelcore::uint32 index) {
    const orvo::Parameter* const parameter = Find(index);
    return parameter != nullptr && parameter->safeDuringWrite;
}

const orvo::Parameter* QueryComponent::Find(kelcore::uint32 index) const {
    const auto& parameters = Value().parameters;
    const auto found = parameters.find(index);
    return found == parameters.end() ? nullptr : &found->second;
}

}  // namespace refhost
