#include "plugin/elements/tracks/Sends.h"

#include "plugin/elements/effects/Component.h"
#include "plugin/serializer/HostItems.h"
#include "plugin/serializer/SerializerImpl.h"
#include "plugin/serializer/ValueEncoding.h"

// Where a track also goes:
//
//     <sendList>
//       <sendSlot destCompIndex="1" preFader="false" sendOutputID="4" slotIndex="0">
//         <component id="sendComponent"/> <component id="sendPan"/>
//       </sendSlot>
//     </sendList>
//
// A slot without "slotIndex" makes no slot, and what stands in it goes to the slot before.

namespace tses {
namespace {

constexpr std::u16string_view kLevel = u"sendComponent";
constexpr std::u16string_view kPan = u"sendPan";

// Reading: each attribute that is there is applied at once, each that is not causes no call.

void Apply(const TagAttributes& attributes, IEditSendSlot& slot) {
    if (const auto text = attributes.Find(names::sendOutputID)) {
        kelcore::int32 outputId = 0;
        ParseSigned(*text, outputId);
        slot.SetSendOutputId(outputId);
    }
    if (const auto text = attributes.Find(names::preFader)) {
        slot.SetPreFader(ParseBoolStrict(*text));
    }
    if (const auto text = attributes.Find(names::destCompIndex)) {
        kelcore::int32 index = 0;
        ParseSigned(*text, index);
        slot.SetDestCompIndex(index);
    }
}

}  // namespace

void Serializer::Impl::StartSendList(State state, const TagAttributes& /*attributes*/) {
    PushState(state);
    tracks_.sendList =
        tracks_.track ? Retain(tracks_.track->GetSendList()) : HostReference<IEditSendList>();
}

void Serializer::Impl::StartSendSlot(State state, const TagAttributes& attributes) {
    PushState(state);
    const auto slotIndex = attributes.Find(names::slotIndex);
    if (!slotIndex) {
        return;
    }
    if (!tracks_.sendList) {
        tracks_.sendSlot.Reset();
        return;
    }
    tracks_.sendSlot = Retain(tracks_.sendList->AddSlot());
    if (!tracks_.sendSlot) {
        return;
    }
    kelcore::uint32 index = 0;
    ParseUnsigned(*slotIndex, index);
    tracks_.sendSlot->SetSlotIndex(index);
    Apply(attributes, *tracks_.sendSlot);
}

void Serializer::Impl::StartSendComponent(State state, const TagAttributes& attributes) {
    PushState(state);
    const auto id = attributes.Find(names::id);
    if (id && tracks_.sendSlot) {
        if (*id == kLevel) {
            effects_.component = Retain(tracks_.sendSlot->GetSendComponent(id->data()));
        } else if (*id == kPan) {
            effects_.component = Retain(tracks_.sendSlot->GetPanComponent(id->data()));
        }
    }
    ApplyComponentAttributes(attributes);
}

// Writing

namespace {

AttributeMap QueryAttributes(IQuerySendSlot& slot) {
    AttributeMap attributes;
    attributes.Set(names::slotIndex, FormatUnsigned(slot.GetSlotIndex()));
    attributes.Set(names::sendOutputID, FormatSigned(slot.GetSendOutputId()));
    const kelcore::int32 destCompIndex = slot.GetDestCompIndex();
    if (destCompIndex >= 0) {
        attributes.Set(names::destCompIndex, FormatSigned(destCompIndex));
    }
    attributes.Set(names::preFader, FormatBool(slot.IsPreFader()));
    return attributes;
}

bool WriteSendSlot(SessionXMLWriter& writer, IQuerySendSlot& slot) {
    return writer.StartElement(names::sendSlot, QueryAttributes(slot)) &&
           WriteKeywordComponent(writer, kLevel, Retain(slot.GetSendComponent())) &&
           WriteKeywordComponent(writer, kPan, Retain(slot.GetPanComponent())) &&
           writer.EndElement();
}

}  // namespace

bool WriteSendList(SessionXMLWriter& writer, IQuerySendList& sends) {
    const kelcore::uint32 count = sends.GetSlotCount();
    if (count == 0) {
        return true;
    }
    const auto writeSlot = [&](kelcore::uint32 position) {
        const auto slot = Retain(sends.GetSlot(position));
        return !slot || WriteSendSlot(writer, *slot);
    };
    return writer.StartElement(names::sendList) && ForEachItem(writer, count, writeSlot) &&
           writer.EndElement();
}

}  // namespace tses
