#include "plugin/elements/tracks/Writers.h"

#include "format/tracks/Sends.h"
#include "plugin/elements/effects/Component.h"
#include "plugin/serializer/HostItems.h"
#include "plugin/serializer/SerializerImpl.h"

namespace tses {
namespace {

// Applies each attribute that is present at once; a missing one causes no call.
void Apply(const SendSlotRecord& record, IEditSendSlot& slot) {
    slot.SetSlotIndex(*record.slotIndex);
    if (record.sendOutputId) {
        slot.SetSendOutputId(*record.sendOutputId);
    }
    if (record.preFader) {
        slot.SetPreFader(*record.preFader);
    }
    if (record.destCompIndex) {
        slot.SetDestCompIndex(*record.destCompIndex);
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
    const auto record = ReadRecord<SendSlotRecord, kSendSlotRows>(attributes);
    if (!record.slotIndex) {
        return;
    }
    tracks_.sendSlot =
        tracks_.sendList ? Retain(tracks_.sendList->AddSlot()) : HostReference<IEditSendSlot>();
    if (tracks_.sendSlot) {
        Apply(record, *tracks_.sendSlot);
    }
}

void Serializer::Impl::StartSendComponent(State state, const TagAttributes& attributes) {
    PushState(state);
    const auto record = ReadControl<kSendComponents>(attributes);
    if (tracks_.sendSlot) {
        if (record.keyword == kSendLevel) {
            effects_.component = Retain(tracks_.sendSlot->GetSendComponent(kSendLevel.data()));
        } else if (record.keyword == kSendPan) {
            effects_.component = Retain(tracks_.sendSlot->GetPanComponent(kSendPan.data()));
        }
    }
    ApplyComponent(record);
}

// Writing

namespace {

SendSlotRecord QuerySlot(IQuerySendSlot& slot) {
    SendSlotRecord record;
    record.slotIndex = slot.GetSlotIndex();
    record.sendOutputId = slot.GetSendOutputId();
    if (const kelcore::int32 destCompIndex = slot.GetDestCompIndex(); destCompIndex >= 0) {
        record.destCompIndex = destCompIndex;
    }
    record.preFader = slot.IsPreFader();
    return record;
}

bool WriteSendSlot(SessionXMLWriter& writer, IQuerySendSlot& slot) {
    return writer.StartElement(names::sendSlot, ToAttributes<kSendSlotRows>(QuerySlot(slot))) &&
           WriteKeywordComponent(writer, kSendLevel, Retain(slot.GetSendComponent())) &&
           WriteKeywordComponent(writer, kSendPan, Retain(slot.GetPanComponent())) &&
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
