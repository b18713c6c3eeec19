#include "plugin/elements/state/Writers.h"

#include "format/state/Property.h"
#include "host/Properties.h"
#include "plugin/serializer/HostItems.h"
#include "plugin/serializer/HostText.h"
#include "plugin/serializer/RecordAttributes.h"
#include "plugin/serializer/SerializerImpl.h"
#include "plugin/xml/Text.h"

// Reading trims the white space at both ends of a value.

namespace tses {

void Serializer::Impl::StartSessionProperties(State state, const TagAttributes& /*attributes*/) {
    PushState(state);
    savedState_.properties = Retain(session_->GetProperties());
}

void Serializer::Impl::StartProperty(State state, const TagAttributes& attributes) {
    PushState(state);
    savedState_.property = ReadRecord<PropertyRecord, kPropertyRows>(attributes);
}

void Serializer::Impl::EndProperty() {
    if (savedState_.properties) {
        const std::u16string value(TrimWhitespace(characterBuffer_));
        savedState_.properties->SetProperty(savedState_.property.key.c_str(), value.c_str());
    }
}

namespace {

bool WriteProperty(SessionXMLWriter& writer, IQueryProperties& properties, kelcore::uint32 index) {
    const PropertyRecord record{std::u16string(TextOf(properties.GetKey(index)))};
    const InlineText value = TextOf(properties.GetValue(record.key.c_str()));
    return writer.StartElement(names::property, ToAttributes<kPropertyRows>(record)) &&
           (value.empty() || writer.Text(value)) && writer.EndElement();
}

}  // namespace

bool WriteSessionProperties(SessionXMLWriter& writer, HostReference<IQuerySession> session) {
    const auto properties = Retain(session->GetProperties());
    if (!writer.StartElement(names::properties)) {
        return false;
    }
    const kelcore::uint32 count = properties ? properties->GetCount() : 0;
    return ForEachItem(
               writer, count,
               [&](kelcore::uint32 index) { return WriteProperty(writer, *properties, index); }) &&
           writer.EndElement();
}

}  // namespace tses
