#include "plugin/elements/effects/ParameterKeyframes.h"

#include "plugin/serializer/AttributeBinding.h"
#include "plugin/serializer/HostItems.h"
#include "plugin/serializer/SerializerImpl.h"

// The automation of one parameter, inside its "parameter":
//
//     <parameterKeyframes enableSplines="false" readOnly="false">
//       <parameterKeyframe sampleOffset="48000" select="false" type="hold" value="0.5"/>
//     </parameterKeyframes>
//
// A lane is known by its place in the document alone. Keyframes go to the host in the document's
// order, neither sorted nor made unique.

namespace tses {
namespace {

constexpr std::u16string_view kHold = u"hold";
constexpr std::u16string_view kLinear = u"linear";

struct LaneRecord {
    bool enableSplines = false;
    bool readOnly = false;
};

struct KeyframeRecord {
    kelcore::int64 sampleOffset = 0;
    float value = 0;
    bool hold = false;
    bool selected = false;
};

// Reading

constexpr Binding<LaneRecord> kLaneBindings[] = {
    {names::enableSplines, read::LenientBool<&LaneRecord::enableSplines>},
    {names::readOnly, read::LenientBool<&LaneRecord::readOnly>},
};

/// Everything but the one keyword is linear.
void ReadType(std::u16string_view text, KeyframeRecord& record) {
    record.hold = text == kHold;
}

constexpr Binding<KeyframeRecord> kKeyframeBindings[] = {
    {names::sampleOffset, read::Number<&KeyframeRecord::sampleOffset>},
    {names::select, read::LenientBool<&KeyframeRecord::selected>},
    {names::type, ReadType},
    {names::value, read::LenientFloat<&KeyframeRecord::value>},
};

}  // namespace

/// A lane element without any attribute leaves both of the lane's flags; one attribute sets both.
void Serializer::Impl::StartParameterKeyframes(State state, const TagAttributes& attributes) {
    PushState(state);
    effects_.lane =
        effects_.component
            ? Retain(effects_.component->GetParameterAutomation(effects_.parameterIndex))
            : HostReference<IEditAutomationLane>();
    if (!effects_.lane || attributes.empty()) {
        return;
    }
    LaneRecord record;
    ReadAttributes<kLaneBindings>(attributes, record);
    effects_.lane->SetEnableSplines(record.enableSplines);
    effects_.lane->SetReadOnly(record.readOnly);
}

void Serializer::Impl::StartParameterKeyframe(State state, const TagAttributes& attributes) {
    PushState(state);
    KeyframeRecord record;
    ReadAttributes<kKeyframeBindings>(attributes, record);
    if (effects_.lane) {
        effects_.lane->AddKeyframe(record.value, record.sampleOffset, record.hold, record.selected);
    }
}

// Writing

namespace {

AttributeMap QueryAttributes(IQueryAutomationLane& lane) {
    return {{names::enableSplines, FormatBool(lane.GetEnableSplines())},
            {names::readOnly, FormatBool(lane.IsReadOnly())}};
}

KeyframeRecord QueryKeyframe(IQueryAutomationLane& lane, kelcore::uint32 index) {
    KeyframeRecord record;
    lane.GetKeyframe(index, record.value, record.sampleOffset, record.hold, record.selected);
    return record;
}

AttributeMap ToAttributes(const KeyframeRecord& record) {
    return {{names::sampleOffset, FormatInt64(record.sampleOffset)},
            {names::type, std::u16string(record.hold ? kHold : kLinear)},
            {names::value, FormatFloat(record.value)},
            {names::select, FormatBool(record.selected)}};
}

}  // namespace

bool WriteParameterKeyframes(SessionXMLWriter& writer, std::u16string_view laneName,
                             std::u16string_view keyframeName, IQueryAutomationLane& lane) {
    const kelcore::uint32 count = lane.GetKeyframeCount();
    if (count == 0) {
        return true;
    }
    const auto writeKeyframe = [&](kelcore::uint32 index) {
        return writer.StartElement(keyframeName, ToAttributes(QueryKeyframe(lane, index))) &&
               writer.EndElement();
    };
    return writer.StartElement(laneName, QueryAttributes(lane)) &&
           ForEachItem(writer, count, writeKeyframe) && writer.EndElement();
}

}  // namespace tses
