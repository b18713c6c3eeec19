#include "plugin/elements/effects/EffectsRack.h"

#include "plugin/elements/effects/Component.h"
#include "plugin/elements/effects/Slot.h"
#include "plugin/serializer/HostItems.h"
#include "plugin/serializer/SerializerImpl.h"
#include "plugin/serializer/ValueEncoding.h"

// The effects of a track or clip:
//
//     <effectsRack preFader="true">
//       <component id="rackMix"/> <component id="rackInput"/> <component id="rackOutput"/>
//       <slot/> ...
//     </effectsRack>
//
// A rack that does not say so is pre-fader, on purpose; the writer always says.

namespace tses {
namespace {

constexpr std::u16string_view kMix = u"rackMix";
constexpr std::u16string_view kInput = u"rackInput";
constexpr std::u16string_view kOutput = u"rackOutput";

struct ComponentRow {
    std::u16string_view keyword;
    IEditComponent* (IEditEffectsRack::*get)();
};
constexpr ComponentRow kComponents[] = {
    {kMix, &IEditEffectsRack::GetMixComponent},
    {kInput, &IEditEffectsRack::GetInputComponent},
    {kOutput, &IEditEffectsRack::GetOutputComponent},
};

}  // namespace

void Serializer::Impl::StartTrackEffectsRack(State state, const TagAttributes& attributes) {
    PushState(state);
    effects_.rack =
        tracks_.track ? Retain(tracks_.track->GetEffectsRack()) : HostReference<IEditEffectsRack>();
    ApplyRackAttributes(attributes);
}

void Serializer::Impl::StartClipEffectsRack(State state, const TagAttributes& attributes) {
    PushState(state);
    effects_.rack = clips_.audioClip ? Retain(clips_.audioClip->GetEffectsRack())
                                     : HostReference<IEditEffectsRack>();
    ApplyRackAttributes(attributes);
}

void Serializer::Impl::ApplyRackAttributes(const TagAttributes& attributes) {
    if (effects_.rack) {
        const auto preFader = attributes.Find(names::preFader);
        effects_.rack->SetPreFader(!preFader || ParseBoolStrict(*preFader));
    }
}

void Serializer::Impl::StartRackComponent(State state, const TagAttributes& attributes) {
    PushState(state);
    const auto id = attributes.Find(names::id);
    for (const ComponentRow& row : kComponents) {
        if (id && *id == row.keyword) {
            effects_.component = effects_.rack ? Retain(((*effects_.rack).*row.get)())
                                               : HostReference<IEditComponent>();
        }
    }
    ApplyComponentAttributes(attributes);
}

// Writing

namespace {

bool WriteSlots(SessionXMLWriter& writer, IQueryEffectsRack& rack) {
    return ForEachItem(writer, rack.GetSlotCount(),
                       [&](kelcore::uint32 position) { return WriteSlot(writer, rack, position); });
}

}  // namespace

bool WriteEffectsRack(SessionXMLWriter& writer, IQueryEffectsRack& rack) {
    return writer.StartElement(names::effectsRack,
                               {{names::preFader, FormatBool(rack.IsPreFader())}}) &&
           WriteKeywordComponent(writer, kMix, Retain(rack.GetMixComponent())) &&
           WriteKeywordComponent(writer, kInput, Retain(rack.GetInputComponent())) &&
           WriteKeywordComponent(writer, kOutput, Retain(rack.GetOutputComponent())) &&
           WriteSlots(writer, rack) && writer.EndElement();
}

}  // namespace tses
