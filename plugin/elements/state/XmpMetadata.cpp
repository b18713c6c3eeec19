#include "plugin/elements/state/Writers.h"

#include "plugin/serializer/HostText.h"
#include "plugin/serializer/SerializerImpl.h"
#include "plugin/xml/Text.h"

// The session's XMP packet. Reading trims the white space at both ends and changes nothing else:
//
//     <xmpMetadata><![CDATA[<x:xmpmeta> ... </x:xmpmeta>]]></xmpMetadata>

namespace tses {

void Serializer::Impl::EndXmpMetadata() {
    const std::u16string packet(TrimWhitespace(characterBuffer_));
    session_->SetXmpMetadata(packet.c_str());
    AdvanceProgress();
}

bool WriteXmpMetadata(SessionXMLWriter& writer, HostReference<IQuerySession> session) {
    const InlineText packet = TextOf(session->GetXmpMetadata());
    return packet.empty() || (writer.StartElement(names::xmpMetadata) &&
                              writer.Characters(packet) && writer.EndElement());
}

}  // namespace tses
