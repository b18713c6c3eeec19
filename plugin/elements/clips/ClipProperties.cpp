#include "plugin/elements/clips/ClipProperties.h"

#include "plugin/serializer/HostText.h"
#include "plugin/serializer/SerializerImpl.h"

// A text that the host keeps with a clip. Element and attribute have the same name:
//
//     <properties properties="..."/>

namespace tses {

void Serializer::Impl::StartClipProperties(State state, const TagAttributes& attributes) {
    PushState(state);
    const auto text = attributes.Find(names::properties);
    if (!text || !clips_.audioClip) {
        return;
    }
    if (const auto properties = Retain(clips_.audioClip->GetProperties())) {
        properties->SetProperties(text->data());
    }
}

bool WriteClipProperties(SessionXMLWriter& writer, HostReference<IQueryClipProperties> properties) {
    if (!properties || properties->IsEmpty()) {
        return true;
    }
    const AttributeMap attributes = {{names::properties, TextOf(properties->GetPropertiesText())}};
    return writer.StartElement(names::properties, attributes) && writer.EndElement();
}

}  // namespace tses
