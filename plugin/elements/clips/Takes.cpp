#include "plugin/elements/clips/Takes.h"

#include "plugin/serializer/HostItems.h"
#include "plugin/serializer/SerializerImpl.h"
#include "plugin/serializer/ValueEncoding.h"

// One recording pass of a clip, by where it begins in the clip's source:
//
//     <take sourceInPoint="96000"/>

namespace tses {

void Serializer::Impl::StartTake(State state, const TagAttributes& attributes) {
    PushState(state);
    kelcore::int64 sourceInPoint = 0;
    if (const auto text = attributes.Find(names::sourceInPoint)) {
        ParseInt64(*text, sourceInPoint);
    }
    if (clips_.audioClip) {
        clips_.audioClip->AddTake(sourceInPoint);
    }
}

bool WriteTakes(SessionXMLWriter& writer, IQueryAudioClip& clip) {
    return ForEachItem(writer, clip.GetTakeCount(), [&](kelcore::uint32 index) {
        const AttributeMap attributes = {
            {names::sourceInPoint, FormatInt64(clip.GetTakeSourceInPoint(index))}};
        return writer.StartElement(names::take, attributes) && writer.EndElement();
    });
}

}  // namespace tses
