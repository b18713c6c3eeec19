#include "plugin/elements/effects/Writers.h"

#include "format/effects/EffectsRack.h"
#include "plugin/elements/effects/Component.h"
#include "plugin/serializer/SerializerImpl.h"

namespace tses {
namespace {

void Apply(const SlotRecord& record, IEditEffectsSlot& slot) {
    slot.SetSlotIndex(record.slotIndex);
    slot.SetBypassed(!record.powered);
    if (record.sideChainChannels) {
        slot.SetSideChainChannels(*record.sideChainChannels);
    }
}

}  // namespace

void Serializer::Impl::StartSlot(State state, const TagAttributes& attributes) {
    PushState(state);
    effects_.slot =
        effects_.rack ? Retain(effects_.rack->AddSlot()) : HostReference<IEditEffectsSlot>();
    if (effects_.slot) {
        Apply(ReadRecord<SlotRecord, kSlotRows>(attributes), *effects_.slot);
    }
}

void Serializer::Impl::StartSlotComponent(State state, const TagAttributes& attributes) {
    PushState(state);
    if (effects_.slot) {
        effects_.component = Retain(effects_.slot->GetComponent());
    }
    ApplyComponent(ReadRecord<ComponentRecord, kEffectComponentRows, kEditorRectRows>(attributes));
}

// Writing

namespace {

SlotRecord QuerySlot(kelcore::uint32 slotIndex, IQueryEffectsSlot& slot) {
    SlotRecord record;
    record.slotIndex = slotIndex;
    record.powered = !slot.IsBypassed();
    if (const kelcore::uint32 channels = slot.GetSideChainChannels(); channels != 0) {
        record.sideChainChannels = channels;
    }
    return record;
}

AttributeMap QueryAttributes(IQueryComponent& component) {
    ComponentTexts texts;
    AttributeMap attributes = ToAttributes<kEffectComponentRows>(QueryComponent(component, texts));
    QueryEditorRect(component, attributes);
    return attributes;
}

bool WriteComponent(SessionXMLWriter& writer, IQueryEffectsSlot& slot, IQueryComponent& component) {
    return writer.StartElement(names::component, QueryAttributes(component)) &&
           WriteSlotRouting(writer, slot) && WritePresetChunkData(writer, component) &&
           WriteParameters(writer, component) && writer.EndElement();
}

}  // namespace

bool WriteSlot(SessionXMLWriter& writer, IQueryEffectsRack& rack, kelcore::uint32 position) {
    const auto slot = Retain(rack.GetSlot(position));
    if (!slot) {
        return true;
    }
    const auto component = Retain(slot->GetComponent());
    const SlotRecord record = QuerySlot(rack.GetSlotIndex(position), *slot);
    return writer.StartElement(names::slot, ToAttributes<kSlotRows>(record)) &&
           (!component || WriteComponent(writer, *slot, *component)) && writer.EndElement();
}

}  // namespace tses
