#include "plugin/elements/effects/Slot.h"

#include "plugin/elements/effects/Component.h"
#include "plugin/elements/effects/Parameter.h"
#include "plugin/elements/effects/PresetChunkData.h"
#include "plugin/elements/effects/SlotRouting.h"
#include "plugin/serializer/HostText.h"
#include "plugin/serializer/SerializerImpl.h"
#include "plugin/serializer/ValueEncoding.h"

// One effect in a rack:
//
//     <slot powered="true" sideChainChannels="2" slotIndex="0">
//       <component componentGuid="..." componentID="..." name="...">
//         <busConfig/> <channelMap/> <presetChunkData/> <parameter/> ...
//       </component>
//     </slot>
//
// Only the exact text "true" means powered, but a slot that does not say is.

namespace tses {
namespace {

constexpr kelcore::uint32 kNoIndex = 4294967295;

void Apply(const TagAttributes& attributes, IEditEffectsSlot& slot) {
    kelcore::uint32 slotIndex = kNoIndex;
    if (const auto text = attributes.Find(names::slotIndex)) {
        ParseUnsigned(*text, slotIndex);
    }
    slot.SetSlotIndex(slotIndex);
    const auto powered = attributes.Find(names::powered);
    slot.SetBypassed(powered && !ParseBoolStrict(*powered));
    if (const auto text = attributes.Find(names::sideChainChannels)) {
        kelcore::uint32 channels = 0;
        ParseUnsigned(*text, channels);
        slot.SetSideChainChannels(channels);
    }
}

}  // namespace

void Serializer::Impl::StartSlot(State state, const TagAttributes& attributes) {
    PushState(state);
    effects_.slot =
        effects_.rack ? Retain(effects_.rack->AddSlot()) : HostReference<IEditEffectsSlot>();
    if (effects_.slot) {
        Apply(attributes, *effects_.slot);
    }
}

void Serializer::Impl::StartSlotComponent(State state, const TagAttributes& attributes) {
    PushState(state);
    if (effects_.slot) {
        effects_.component = Retain(effects_.slot->GetComponent());
    }
    ApplyComponentAttributes(attributes);
}

// Writing

namespace {

AttributeMap QuerySlot(kelcore::uint32 slotIndex, IQueryEffectsSlot& slot) {
    AttributeMap attributes = {{names::slotIndex, FormatUnsigned(slotIndex)},
                               {names::powered, FormatBool(!slot.IsBypassed())}};
    const kelcore::uint32 sideChainChannels = slot.GetSideChainChannels();
    if (sideChainChannels != 0) {
        attributes.Set(names::sideChainChannels, FormatUnsigned(sideChainChannels));
    }
    return attributes;
}

/// Unlike a component with a keyword, an effect's always tells what it is, also by an empty text.
AttributeMap QueryComponent(IQueryComponent& component) {
    AttributeMap attributes;
    attributes.Set(names::componentGuid, TextOf(component.GetComponentGuid()));
    attributes.Set(names::componentID, TextOf(component.GetComponentID()));
    attributes.Set(names::name, TextOf(component.GetName()));
    QueryPresetAndVisibility(component, attributes);
    QueryEditorRect(component, attributes);
    return attributes;
}

bool WriteComponent(SessionXMLWriter& writer, IQueryEffectsSlot& slot, IQueryComponent& component) {
    return writer.StartElement(names::component, QueryComponent(component)) &&
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
    return writer.StartElement(names::slot, QuerySlot(rack.GetSlotIndex(position), *slot)) &&
           (!component || WriteComponent(writer, *slot, *component)) && writer.EndElement();
}

}  // namespace tses
