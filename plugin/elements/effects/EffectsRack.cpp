#include "plugin/elements/effects/Writers.h"

#include "format/effects/EffectsRack.h"
#include "plugin/elements/effects/Component.h"
#include "plugin/serializer/HostItems.h"
#include "plugin/serializer/SerializerImpl.h"

namespace tses {
namespace {

struct ComponentRow {
    std::u16string_view keyword;
    IEditComponent* (IEditEffectsRack::*get)();
};
constexpr ComponentRow kComponents[] = {
    {kRackMix, &IEditEffectsRack::GetMixComponent},
    {kRackInput, &IEditEffectsRack::GetInputComponent},
    {kRackOutput, &IEditEffectsRack::GetOutputComponent},
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
        effects_.rack->SetPreFader(ReadRecord<RackRecord, kRackRows>(attributes).preFader);
    }
}

void Serializer::Impl::StartRackComponent(State state, const TagAttributes& attributes) {
    PushState(state);
    const auto record = ReadControl<kRackComponents>(attributes);
    for (const ComponentRow& row : kComponents) {
        if (record.keyword == row.keyword) {
            effects_.component = effects_.rack ? Retain(((*effects_.rack).*row.get)())
                                               : HostReference<IEditComponent>();
        }
    }
    ApplyComponent(record);
}

// Writing

namespace {

bool WriteSlots(SessionXMLWriter& writer, IQueryEffectsRack& rack) {
    return ForEachItem(writer, rack.GetSlotCount(),
                       [&](kelcore::uint32 position) { return WriteSlot(writer, rack, position); });
}

}  // namespace

bool WriteEffectsRack(SessionXMLWriter& writer, HostReference<IQueryEffectsRack> rack) {
    if (!rack) {
        return true;
    }
    const RackRecord record{rack->IsPreFader()};
    return writer.StartElement(names::effectsRack, ToAttributes<kRackRows>(record)) &&
           WriteKeywordComponent(writer, kRackMix, Retain(rack->GetMixComponent())) &&
           WriteKeywordComponent(writer, kRackInput, Retain(rack->GetInputComponent())) &&
           WriteKeywordComponent(writer, kRackOutput, Retain(rack->GetOutputComponent())) &&
           WriteSlots(writer, *rack) && writer.EndElement();
}

}  // namespace tses
