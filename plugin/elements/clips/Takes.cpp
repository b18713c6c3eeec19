#include "plugin/elements/clips/Writers.h"

#include "format/clips/ClipParts.h"
#include "plugin/serializer/HostItems.h"
#include "plugin/serializer/RecordAttributes.h"
#include "plugin/serializer/SerializerImpl.h"

namespace tses {

void Serializer::Impl::StartTake(State state, const TagAttributes& attributes) {
    PushState(state);
    const auto record = ReadRecord<TakeRecord, kTakeRows>(attributes);
    if (clips_.audioClip) {
        clips_.audioClip->AddTake(record.sourceInPoint);
    }
}

bool WriteTakes(SessionXMLWriter& writer, IQueryAudioClip& clip) {
    return ForEachItem(writer, clip.GetTakeCount(), [&](kelcore::uint32 index) {
        const TakeRecord record{clip.GetTakeSourceInPoint(index)};
        return writer.StartElement(names::take, ToAttributes<kTakeRows>(record)) &&
               writer.EndElement();
    });
}

}  // namespace tses
