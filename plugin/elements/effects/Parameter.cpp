#include "plugin/elements/effects/Parameter.h"

#include "plugin/elements/effects/ParameterKeyframes.h"
#include "plugin/serializer/AttributeBinding.h"
#include "plugin/serializer/HostItems.h"
#include "plugin/serializer/HostText.h"
#include "plugin/serializer/SerializerImpl.h"

// One value of a component:
//
//     <parameter index="3" name="Threshold" parameterValue="-18.5" safeDuringWrite="true">
//       <parameterKeyframes/>
//     </parameter>
//
// An index without a value is not written, so that indices may have gaps.

namespace tses {
namespace {

struct ParameterRecord {
    kelcore::uint32 index = 0;
    float value = 0;
    std::u16string_view name = u"";  // a start tag's own text or a string's: it ends in a zero
    bool safeDuringWrite = false;
};

constexpr Binding<ParameterRecord> kBindings[] = {
    {names::index, read::Number<&ParameterRecord::index>},
    {names::name, read::Text<&ParameterRecord::name>},
    {names::parameterValue, read::LenientFloat<&ParameterRecord::value>},
    {names::safeDuringWrite, read::StrictBool<&ParameterRecord::safeDuringWrite>},
};

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
    ParameterRecord record;
    ReadAttributes<kBindings>(attributes, record);
    effects_.parameterIndex = record.index;
    effects_.parameterValue = record.value;
    if (effects_.component) {
        Apply(record, *effects_.component);
    }
    effects_.parameterIndices.push_back(record.index);
}

// Writing

namespace {

AttributeMap ToAttributes(const ParameterRecord& record) {
    AttributeMap attributes = {{names::index, FormatUnsigned(record.index)},
                               {names::parameterValue, FormatFloat(record.value)}};
    attributes.SetUnlessEmpty(names::name, record.name);
    if (record.safeDuringWrite) {
        attributes.Set(names::safeDuringWrite, FormatBool(true));
    }
    return attributes;
}

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
    const std::u16string name = TextOf(component.GetParameterName(index));
    record.name = name;
    record.safeDuringWrite = component.IsParameterSafeDuringWrite(index);
    return writer.StartElement(names::parameter, ToAttributes(record)) &&
           WriteLane(writer, component, index) && writer.EndElement();
}

}  // namespace

bool WriteParameters(SessionXMLWriter& writer, IQueryComponent& component) {
    return ForEachItem(writer, component.GetParameterCount(), [&](kelcore::uint32 index) {
        return WriteParameter(writer, component, index);
    });
}

}  // namespace tses
