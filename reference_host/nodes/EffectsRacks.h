#pragma once

#include <orvo/Effects.h>
#include "host/Effects.h"
#include "reference_host/Node.h"
#include "reference_host/nodes/Components.h"
#include "reference_host/nodes/KeyIndex.h"

namespace refhost {

class EditSlot final : public Face<tses::IEditEffectsSlot, orvo::EffectsSlot> {
public:
    using Face::Face;

    void SetSlotIndex(kelcore::uint32 slotIndex) override { Value().slotIndex = slotIndex; }
    void SetBypassed(bool bypassed) override { Value().bypassed = bypassed; }
    tses::IEditComponent* GetComponent() override {
        return Made<ComponentNode, &orvo::EffectsSlot::component>();
    }
    void UnusedSlot6() override {}
    void UnusedSlot7() override {}
    void SetSideChainChannels(kelcore::uint32 channels) override {
        Value().sideChainChannels = channels;
    }
    void AddInputChannel(kelcore::int32 index, kelcore::int32 source) override {
        Value().inputChannels.push_back({index, source});
    }
    void AddOutputChannel(kelcore::int32 index, kelcore::int32 source) override {
        Value().outputChannels.push_back({index, source});
    }
    void SetBusConfig(const kelcore::char16* configuration) override {
        Value().busConfig = kelcore::UTF16to8(configuration);
    }
};

class QuerySlot final : public Face<tses::IQueryEffectsSlot, orvo::EffectsSlot> {
public:
    using Face::Face;

    bool IsBypassed() override { return Value().bypassed; }
    tses::IQueryComponent* GetComponent() override {
        return Found<ComponentNode, &orvo::EffectsSlot::component>();
    }
    kelcore::uint32 GetSideChainChannels() override { return Value().sideChainChannels; }
    tses::IHostString* GetBusConfig() override { return GiveOut(Value().busConfig); }
    kelcore::uint32 GetInputChannelCount() override { return CountOf(Value().inputChannels); }
    void GetInputChannel(kelcore::uint32 position, kelcore::int32& index,
                         kelcore::int32& source) override {
        Tell(Value().inputChannels.at(position), index, source);
    }
    kelcore::uint32 GetOutputChannelCount() override { return CountOf(Value().outputChannels); }
    void GetOutputChannel(kelcore::uint32 position, kelcore::int32& index,
                          kelcore::int32& source) override {
        Tell(Value().outputChannels.at(position), index, source);
    }

private:
    static void Tell(const orvo::ChannelRoute& route, kelcore::int32& index,
                     kelcore::int32& source) {
        index = route.index;
        source = route.source;
    }
};

using SlotNode = TwoFacedNode<orvo::EffectsSlot, EditSlot, QuerySlot>;

class EditRack final : public Face<tses::IEditEffectsRack, orvo::EffectsRack> {
public:
    using Face::Face;

    tses::IEditComponent* GetMixComponent() override {
        return Made<ComponentNode, &orvo::EffectsRack::mix>();
    }
    tses::IEditComponent* GetInputComponent() override {
        return Made<ComponentNode, &orvo::EffectsRack::input>();
    }
    tses::IEditComponent* GetOutputComponent() override {
        return Made<ComponentNode, &orvo::EffectsRack::output>();
    }
    void SetPreFader(bool preFader) override { Value().preFader = preFader; }
    tses::IEditEffectsSlot* AddSlot() override {
        return Appended<SlotNode, &orvo::EffectsRack::slots>();
    }
};

class QueryRack final : public Face<tses::IQueryEffectsRack, orvo::EffectsRack> {
public:
    using Face::Face;

    tses::IQueryComponent* GetMixComponent() override {
        return Found<ComponentNode, &orvo::EffectsRack::mix>();
    }
    tses::IQueryComponent* GetInputComponent() override {
        return Found<ComponentNode, &orvo::EffectsRack::input>();
    }
    tses::IQueryComponent* GetOutputComponent() override {
        return Found<ComponentNode, &orvo::EffectsRack::output>();
    }
    bool IsPreFader() override { return Value().preFader; }
    kelcore::uint32 GetSlotCount() override { return CountOf(Value().slots); }
    kelcore::uint32 GetSlotIndex(kelcore::uint32 position) override {
        const auto& slot = Value().slots.at(position);
        return slot ? slot->slotIndex : orvo::kNoId;
    }
    tses::IQueryEffectsSlot* GetSlot(kelcore::uint32 position) override {
        return FoundAt<SlotNode, &orvo::EffectsRack::slots>(position);
    }
};

using RackNode = TwoFacedNode<orvo::EffectsRack, EditRack, QueryRack>;

}  // namespace refhost
