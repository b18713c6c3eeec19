#include "plugin/elements/effects/Writers.h"

#include "format/effects/Parameter.h"
#include "plugin/serializer/HostItems.h"
#include "plugin/serializer/RecordAttributes.h"
#include "plugin/serializer/SerializerImpl.h"

// Only its place in the document says which parameter a lane belongs to. Keyframes go to the host
// in the document's order; they are neither sorted nor deduplicated.

namespace tses {
/// A lane element without attributes leaves both flags of the lane alone; one attribute sets both.
void Serializer::Impl::StartParameterKeyframes(State state, const TagAttributes& attributes) {
    PushState(state);
    effects_.lane =
        effects_.component
            ? Retain(effects_.component->GetParameterAutomation(effects_.parameterIndex))
            : HostReference<IEditAutomationLane>();
    if (!effects_.lane || attributes.empty()) {
        return;
    }
    const auto record = ReadRecord<LaneRecord, kLaneRows>(attributes);
    effects_.lane->SetEnableSplines(record.enableSplines);
    effects_.lane->SetReadOnly(record.readOnly);
}

void Serializer::Impl::StartParameterKeyframe(State state, const TagAttributes& attributes) {
    PushState(state);
    const auto record = ReadRecord<KeyframeRecord, kKeyframeRows>(attributes);
    if (effects_.lane) {
        effects_.lane->AddKeyframe(record.value, record.sampleOffset, record.hold, record.selected);
    }
}

// Writing

namespace {

KeyframeRecord QueryKeyframe(IQueryAutomationLane& lane, kelcore::uint32 index) {
    KeyframeRecord record;
    lane.GetKeyframe(index, record.value, record.sampleOffset, record.hold, record.selected);
    return record;
}

}  // namespace

bool WriteParameterKeyframes(SessionXMLWriter& writer, std::u16string_view laneName,
                             std::u16string_view keyframeName, IQueryAutomationLane& lane) {
    const kelcore::uint32 count = lane.GetKeyframeCount();
    if (count == 0) {
        return true;
    }
    const auto writeKeyframe = [&](kelcore::uint32 index) {
        return writer.StartElement(keyframeName,
                                   ToAttributes<kKeyframeRows>(QueryKeyframe(lane, index))) &&
               writer.EndElement();
    };
    const LaneRecord record{lane.GetEnableSplines(), lane.IsReadOnly()};
    return writer.StartElement(laneName, ToAttributes<kLaneRows>(record)) &&
           ForEachItem(writer, count, writeKeyframe) && writer.EndElement();
}

}  // namespace tses
