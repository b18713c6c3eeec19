#include "plugin/elements/clips/Writers.h"

#include "format/clips/ClipParts.h"
#include "plugin/serializer/HostText.h"
#include "plugin/serializer/RecordAttributes.h"
#include "plugin/serializer/SerializerImpl.h"

namespace tses {

void Serializer::Impl::StartClipProperties(State state, const TagAttributes& attributes) {
    PushState(state);
    const auto record = ReadRecord<ClipPropertiesRecord, kClipPropertiesRows>(attributes);
    if (!record.properties || !clips_.audioClip) {
        return;
    }
    if (const auto properties = Retain(clips_.audioClip->GetProperties())) {
        properties->SetProperties(record.properties->data());
    }
}

bool WriteClipProperties(SessionXMLWriter& writer, HostReference<IQueryClipProperties> properties) {
    if (!properties || properties->IsEmpty()) {
        return true;
    }
    const InlineText text = TextOf(properties->GetPropertiesText());
    const ClipPropertiesRecord record{text};
    return writer.StartElement(names::properties, ToAttributes<kClipPropertiesRows>(record)) &&
           writer.EndElement();
}

}  // namespace tses
