#include "plugin/elements/effects/Writers.h"

#include "format/effects/Parameter.h"
#include "plugin/serializer/HostItems.h"
#include "plugin/serializer/HostText.h"
#include "plugin/serializer/RecordAttributes.h"
#include "plugin/serializer/SerializerImpl.h"

// An index without a value is not written, so the written indices may have gaps.

namespace tses {
namespace {

void Apply(const ParameterRecord& record, IEditComponent& component) {
    component.SetParameterValue(record.index, record.value);
    component.SetParameterName(record.index, record.name.data());
    if (record.safeDuringWrite) {
        component.SetParameterSafeDuringWrite(record.index, true);
    }
}

}  // namespace

void Serializer::Impl::StartParameter(State state, const TagAttributes& attributes) {
    PushState(state);
    const auto record = ReadRecord<ParameterRecord, kParameterRows>(attributes);
    effects_.parameterIndex = record.index;
    effects_.parameterValue = record.value;
    if (effects_.component) {
        Apply(record, *effects_.component);
    }
    effects_.parameterIndices.push_back(record.index);
}

// Writing

namespace {

bool WriteLane(SessionXMLWriter& writer, IQueryComponent& component, kelcore::uint32 index) {
    const auto lane = Retain(component.GetParameterAutomation(index));
    return !lane || WriteParameterKeyframes(writer, names::parameterKeyframes,
                                            names::parameterKeyframe, *lane);
}

bool WriteParameter(SessionXMLWriter& writer, IQueryComponent& component, kelcore::uint32 index) {
    ParameterRecord record;
    record.index = index;
    if (!component.GetParameterValue(index, record.value)) {
        return true;
    }
    const InlineText name = TextOf(component.GetParameterName(index));
    record.name = name;
    record.safeDuringWrite = component.IsParameterSafeDuringWrite(index);
    return writer.StartElement(names::parameter, ToAttributes<kParameterRows>(record)) &&
           WriteLane(writer, component, index) && writer.EndElement();
}

}  // namespace

bool WriteParameters(SessionXMLWriter& writer, IQueryComponent& component) {
    return ForEachItem(writer, component.GetParameterCount(), [&](kelcore::uint32 index) {
        return WriteParameter(writer, component, index);
    });
}

}  // namespace tses
